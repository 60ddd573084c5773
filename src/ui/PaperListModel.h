#pragma once

#include "store/Paper.h"

#include <QAbstractListModel>
#include <QList>
#include <optional>

/// What a card shows: a paper and, among search results, the passage that was found.
struct PaperCard {
    Paper paper;
    std::optional<QString> passage; ///< the snippet with its "..." marks
    qint64 passagePage = 0;         ///< 1-based; 0 without a passage
    int morePassages = 0;

    friend bool operator==(const PaperCard &, const PaperCard &) = default;
};

/// The cards of a grid, one a row. A new list that differs in few rows keeps what stays: selection, current
/// row and place.
class PaperListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// The papers of the library, without passages. Costs no walk over the list where ids and order stay.
    void setPapers(const QList<Paper> &papers);
    void setCards(const QList<PaperCard> &cards);

    PaperCard card(int row) const;
    /// The row of the paper, or -1.
    int rowOf(const QString &paperId) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
};

/// The dragged papers' ids, one a line, in a drag from a grid.
inline constexpr char kPaperIdsMimeType[] = "application/x-quirevault-paper-ids";
