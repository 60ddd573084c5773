#include "ui/PaperListModel.h"

#include "ui/CardWords.h"

#include <QMimeData>
#include <algorithm>

namespace
{
const QString &idOf(const Paper &paper)
{
    return paper.id;
}
const QString &idOf(const PaperCard &card)
{
    return card.paper.id;
}

template <typename Entry> bool haveSameIds(const QList<Entry> &left, const QList<Entry> &right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const Entry &a, const Entry &b) { return idOf(a) == idOf(b); });
}

/// Calls `announce(first, last)` for every run of rows in which the two lists, equally long, differ.
template <typename Entry, typename Announce>
void forEachChangedRun(const QList<Entry> &before, const QList<Entry> &after, Announce announce)
{
    for (qsizetype row = 0; row < after.size(); ++row) {
        const qsizetype first = row;
        while (row < after.size() && !(before.at(row) == after.at(row)))
            ++row;
        if (row > first)
            announce(int(first), int(row - 1));
    }
}
} // namespace

void PaperListModel::setPapers(const QList<Paper> &papers)
{
    if (m_cards.isEmpty() && m_papers.isSharedWith(papers))
        return;
    if (m_cards.isEmpty() && haveSameIds(m_papers, papers)) {
        const QList<Paper> before = std::exchange(m_papers, papers);
        forEachChangedRun(before, m_papers,
                          [this](int first, int last) { Q_EMIT dataChanged(index(first), index(last)); });
        return;
    }
    beginResetModel();
    m_cards.clear();
    m_papers = papers;
    endResetModel();
}

void PaperListModel::setCards(const QList<PaperCard> &cards)
{
    if (m_papers.isEmpty() && haveSameIds(m_cards, cards)) {
        const QList<PaperCard> before = std::exchange(m_cards, cards);
        forEachChangedRun(before, m_cards,
                          [this](int first, int last) { Q_EMIT dataChanged(index(first), index(last)); });
        return;
    }
    beginResetModel();
    m_papers.clear();
    m_cards = cards;
    endResetModel();
}

PaperCard PaperListModel::card(int row) const
{
    if (!m_cards.isEmpty())
        return m_cards.at(row);
    PaperCard card;
    card.paper = m_papers.at(row);
    return card;
}

const Paper &PaperListModel::paper(int row) const
{
    return m_cards.isEmpty() ? m_papers.at(row) : m_cards.at(row).paper;
}

int PaperListModel::rowOf(const QString &paperId) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (paper(row).id == paperId)
            return row;
    }
    return -1;
}

int PaperListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_cards.isEmpty() ? m_papers.size() : m_cards.size());
}

QVariant PaperListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return paper(index.row()).title;
    case Qt::AccessibleTextRole:
        return spokenCard(card(index.row()));
    default:
        return {};
    }
}

Qt::ItemFlags PaperListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
                           : Qt::NoItemFlags;
}

QStringList PaperListModel::mimeTypes() const
{
    return {QLatin1String(kPaperIdsMimeType)};
}

QMimeData *PaperListModel::mimeData(const QModelIndexList &indexes) const
{
    QStringList ids;
    for (const QModelIndex &index : indexes)
        ids.append(paper(index.row()).id);
    auto data = std::make_unique<QMimeData>();
    data->setData(QLatin1String(kPaperIdsMimeType), ids.join(u'\n').toUtf8());
    return data.release();
}

Qt::DropActions PaperListModel::supportedDragActions() const
{
    return Qt::CopyAction;
}
