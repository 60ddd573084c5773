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

/// The cards of a grid, one a row. A new list with the same ids in the same order announces only the rows
/// that changed; any other resets the model.
class PaperListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    /// The papers of the library, without passages. Shares the list and allocates nothing by row; compares
    /// with the former list up to the first id that differs.
    void setPapers(const QList<Paper> &papers);
    void setCards(const QList<PaperCard> &cards);

    PaperCard card(int row) const;
    const Paper &paper(int row) const;
    /// The row of the paper, or -1. Walks the list: ask once an event, not once a row.
    int rowOf(const QString &paperId) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    /// The title as DisplayRole; what a screen reader says as AccessibleTextRole, but for what only a look
    /// at the disk can tell.
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDragActions() const override;

private:
    QList<Paper> m_papers;    ///< what the model holds, unless it holds cards
    QList<PaperCard> m_cards; ///< empty while the model holds papers
};

/// The dragged papers' ids, one a line, in a drag from a grid.
inline constexpr char kPaperIdsMimeType[] = "application/x-quirevault-paper-ids";
