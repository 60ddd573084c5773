#pragma once

#include "search/SnippetMarkup.h"

#include <QAbstractListModel>
#include <QList>
#include <QString>

/// A passage as a list in the sidebar shows it.
struct PassageRow {
    QString title; ///< above the text; empty for none
    QList<SnippetSpan> text;
    bool isItalic = false;
    QString place;          ///< beneath the text: "Page 12"
    bool isCurrent = false; ///< marked as the one that is shown

    friend bool operator==(const PassageRow &, const PassageRow &) = default;

    QString plainText() const;
};

/// Rows for `PassageDelegate`. The display text of a row is what a screen reader says of it.
class PassageListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setRows(const QList<PassageRow> &rows);
    /// Marks one row as current; -1 for none.
    void setCurrent(int index);
    const PassageRow &row(const QModelIndex &index) const { return m_rows[index.row()]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QList<PassageRow> m_rows;
};
