#include "app/LibraryViewModel.h"

#include "support/ViewModelFixture.h"

/// A library that is too long to be filtered on the main thread.
class LongLibrary : public testing::Test, protected ViewModelFixture
{
protected:
    static constexpr int kPapers = 6000;

    void SetUp() override
    {
        library.run(
            QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                           "INSERT INTO papers (id, title, filepath) SELECT 'p' || i, 'Paper ' || i, "
                           "'/papers/' || i || '.pdf' FROM n"),
            {qint64(kPapers)});
        load();
    }
    void type(const QString &text) { vm().queryText = text; }
    QStringList filtered() { return idsOf(vm().filteredPapers); }
    /// Waits for a filter to show so many papers.
    void waitForPapers(qsizetype count)
    {
        waitUntil(vm().filteredPapers,
                  [count](const QList<Paper> &papers) { return papers.size() == count; });
    }
};

TEST_F(LongLibrary, IsFilteredAsAShortOneIs)
{
    type(QStringLiteral("title:599"));
    waitForPapers(16);
    EXPECT_TRUE(filtered().contains(u"p5990"));
}

TEST_F(LongLibrary, ShowsTheFilterThatWasTypedLast)
{
    type(QStringLiteral("title:5"));
    type(QStringLiteral("title:59"));
    type(QStringLiteral("title:599"));
    waitForPapers(16);
    waitFor(vm().loadPapers());
    EXPECT_EQ(filtered().size(), 16) << "no older filter comes after it";
}

TEST_F(LongLibrary, ShowsAllAtOnceWhenTheFilterIsCleared)
{
    type(QStringLiteral("title:599"));
    type({});
    EXPECT_EQ(filtered().size(), kPapers);
    waitFor(vm().loadPapers());
    EXPECT_EQ(filtered().size(), kPapers) << "the filter that still ran is out of date";
}

TEST_F(LongLibrary, IsFilteredAgainWhenItIsLoadedAgain)
{
    type(QStringLiteral("title:599"));
    waitForPapers(16);
    library.run(QStringLiteral("DELETE FROM papers WHERE id = 'p5990'"));
    waitFor(vm().loadPapers());
    waitForPapers(15);
}

TEST_F(LongLibrary, MayGoWhileItIsFiltered)
{
    type(QStringLiteral("title:599"));
    model.reset();
    QCoreApplication::processEvents();
}
