#include "ui/PaperListModel.h"
#include "support/Printing.h"

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <memory>

namespace
{
Paper paper(const QString &id, const QString &title = {})
{
    Paper made;
    made.id = id;
    made.title = title.isEmpty() ? QString(u"Title of " + id) : title;
    return made;
}

QList<Paper> abc()
{
    return {paper(QStringLiteral("a")), paper(QStringLiteral("b")), paper(QStringLiteral("c"))};
}

class PaperListModelTest : public ::testing::Test
{
protected:
    PaperListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};
    QSignalSpy changes{&model, &QAbstractItemModel::dataChanged};

    QList<std::pair<int, int>> changedRows() const
    {
        QList<std::pair<int, int>> rows;
        for (const QList<QVariant> &change : changes)
            rows.append({change.at(0).toModelIndex().row(), change.at(1).toModelIndex().row()});
        return rows;
    }
};
} // namespace

TEST_F(PaperListModelTest, ListsPapersByTheirTitles)
{
    model.setPapers(abc());
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(1).data().toString(), u"Title of b");
    EXPECT_EQ(model.rowOf(QStringLiteral("c")), 2);
    EXPECT_EQ(model.rowOf(QStringLiteral("d")), -1);
    EXPECT_EQ(model.card(0).paper, abc().at(0));
}

TEST_F(PaperListModelTest, SharesTheList)
{
    const QList<Paper> papers = abc();
    model.setPapers(papers);
    EXPECT_EQ(&model.paper(2), &papers.at(2));
}

TEST_F(PaperListModelTest, AnnouncesOnlyTheRowsThatChanged)
{
    model.setPapers(abc());
    QList<Paper> edited = abc();
    edited[1].title = QStringLiteral("Edited");
    resets.clear();
    model.setPapers(edited);
    EXPECT_EQ(resets.size(), 0);
    EXPECT_EQ(changedRows(), (QList<std::pair<int, int>>{{1, 1}}));
    EXPECT_EQ(model.index(1).data().toString(), u"Edited");
}

TEST_F(PaperListModelTest, AnnouncesChangedRowsInRuns)
{
    QList<Paper> papers = abc();
    papers.append(paper(QStringLiteral("d")));
    model.setPapers(papers);
    papers[0].year = 1990;
    papers[2].year = 1991;
    papers[3].year = 1992;
    model.setPapers(papers);
    EXPECT_EQ(changedRows(), (QList<std::pair<int, int>>{{0, 0}, {2, 3}}));
}

TEST_F(PaperListModelTest, StaysSilentWhenNothingChanged)
{
    const QList<Paper> papers = abc();
    model.setPapers(papers);
    resets.clear();
    model.setPapers(papers);
    model.setPapers(abc());
    EXPECT_EQ(resets.size(), 0);
    EXPECT_EQ(changes.size(), 0);
}

TEST_F(PaperListModelTest, ResetsWhenIdsOrOrderChange)
{
    model.setPapers(abc());
    resets.clear();
    QList<Paper> reversed = abc();
    reversed.swapItemsAt(0, 2);
    model.setPapers(reversed);
    EXPECT_EQ(resets.size(), 1);
    model.setPapers(abc().mid(1));
    EXPECT_EQ(resets.size(), 2);
    EXPECT_EQ(model.rowCount(), 2);
}

TEST_F(PaperListModelTest, HoldsCardsWithTheirPassages)
{
    PaperCard card;
    card.paper = paper(QStringLiteral("a"));
    card.passage = QStringLiteral("...found... it");
    card.passagePage = 3;
    model.setCards({card});
    EXPECT_EQ(model.card(0), card);
    EXPECT_EQ(model.index(0).data(Qt::AccessibleTextRole).toString(), u"Title of a, found it, Page 3");
    card.morePassages = 2;
    resets.clear();
    model.setCards({card});
    EXPECT_EQ(resets.size(), 0);
    EXPECT_EQ(changedRows(), (QList<std::pair<int, int>>{{0, 0}}));
}

TEST_F(PaperListModelTest, ChangesFromCardsToPapers)
{
    PaperCard card;
    card.paper = paper(QStringLiteral("a"));
    card.passage = QStringLiteral("...found... it");
    model.setCards({card});
    model.setPapers(abc());
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_FALSE(model.card(0).passage);
}

TEST_F(PaperListModelTest, PutsTheIdsOfDraggedPapersIntoTheDrag)
{
    model.setPapers(abc());
    EXPECT_TRUE(model.index(0).flags().testFlag(Qt::ItemIsDragEnabled));
    EXPECT_EQ(model.mimeTypes(), QStringList{QStringLiteral("application/x-quirevault-paper-ids")});
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0), model.index(2)}));
    EXPECT_EQ(data->data(QStringLiteral("application/x-quirevault-paper-ids")), QByteArray("a\nc"));
}
