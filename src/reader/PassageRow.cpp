#include "reader/PassageRow.h"

#include <QTextDocument>

QString PassageRow::plainText() const
{
    QString words;
    for (const SnippetSpan &span : text)
        words += span.text;
    return words;
}

void PassageListModel::setRows(const QList<PassageRow> &rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

void PassageListModel::setCurrent(int index)
{
    for (int i = 0; i < m_rows.size(); ++i) {
        const bool isCurrent = i == index;
        if (m_rows[i].isCurrent == isCurrent)
            continue;
        m_rows[i].isCurrent = isCurrent;
        Q_EMIT dataChanged(this->index(i), this->index(i));
    }
}

int PassageListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant PassageListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PassageRow &row = m_rows[index.row()];
    if (role == Qt::ToolTipRole)
        return Qt::convertFromPlainText(row.plainText(), Qt::WhiteSpaceNormal);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    const QString title = row.title.isEmpty() ? QString() : QString(row.title + u". ");
    return QString(row.place + u". " + title + row.plainText());
}
