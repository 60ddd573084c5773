#include "store/PrefixCounter.h"

#include "store/Database.h"
#include "store/RankedLibrary.h"
#include "support/Printing.h"
#include "support/RawDatabase.h"

namespace
{
constexpr qint64 kAll = std::numeric_limits<qint64>::max();

/// What the counter answers while a statement is under way.
struct Asked {
    PrefixCounter &counter;
    qint64 enough = kAll;
    std::vector<std::optional<qint64>> counts; ///< of each phrase
};

void askCounter(const Fts5ExtensionApi *api, Fts5Context *hit, sqlite3_context *, int, sqlite3_value **)
{
    auto &asked = **static_cast<Asked **>(api->xUserData(hit));
    for (int phrase = 0; phrase < api->xPhraseCount(hit); ++phrase)
        asked.counts.push_back(asked.counter.count(api, hit, phrase, asked.enough));
}

class CountedPrefixes : public ::testing::Test
{
protected:
    using Counts = std::vector<std::optional<qint64>>;

    CountedPrefixes()
    {
        sqlite3_stmt *statement = nullptr;
        fts5_api *api = nullptr;
        sqlite3_prepare_v2(library.connection, "SELECT fts5(?1)", -1, &statement, nullptr);
        sqlite3_bind_pointer(statement, 1, static_cast<void *>(&api), "fts5_api_ptr", nullptr);
        sqlite3_step(statement);
        sqlite3_finalize(statement);
        api->xCreateFunction(api, "ask_counter", &m_asked, askCounter, nullptr);
    }

    /// `count` pages with the words of `content`.
    void addPages(int count, const QByteArray &content)
    {
        library.run("BEGIN");
        for (; count > 0; --count)
            library.run(RankedLibrary::insertion(1, count, content));
        library.run("COMMIT");
    }

    /// The counts of the expression's phrases, when `expand` was told of `expanded`.
    Counts counts(const QByteArray &expression, const QByteArray &expanded, qint64 enough = kAll,
                  const QByteArray &meanwhile = {})
    {
        Asked asked{.counter = *library.prefixes, .enough = enough, .counts = {}};
        m_asked = &asked;
        library.prefixes->expand(QString::fromUtf8(expanded));
        RawDatabase(library.path()).run(meanwhile.constData());
        library.run("SELECT ask_counter(fts_papers) FROM fts_papers WHERE fts_papers MATCH '" + expression +
                    "' LIMIT 1");
        library.prefixes->forget();
        return asked.counts;
    }
    Counts counts(const QByteArray &expression) { return counts(expression, expression); }

    RankedLibrary library;

private:
    Asked *m_asked = nullptr;
};
} // namespace

TEST_F(CountedPrefixes, CountEachRowOnce)
{
    addPages(3, "transform transport transport");
    addPages(2, "TRANSFER");
    addPages(1, "train");
    EXPECT_EQ(counts("trans*"), Counts{5});
    EXPECT_EQ(counts("tra* AND transf*"), (Counts{6, 5}));
}

TEST_F(CountedPrefixes, CountRowsOfWordsInManyPlaces)
{
    addPages(700, "transform transport");
    addPages(1, "transport transmute");
    addPages(300, "transport zeta");
    EXPECT_EQ(counts("trans*"), Counts{1001});
    EXPECT_EQ(counts("transf*"), Counts{700});
    EXPECT_EQ(counts("z*"), Counts{300}) << "the last word of the index";
    EXPECT_GE(counts("trans*", "trans*", 250).at(0), 250) << "may stop once there are enough";
}

TEST_F(CountedPrefixes, KnowOnlyPrefixesOfOneWord)
{
    addPages(3, "naïve transform of x-rays");
    EXPECT_EQ(counts("transform \"of x\"* \"x-r\"*"), (Counts{{}, {}, {}}));
    EXPECT_EQ(counts("naï* OR trans*"), (Counts{{}, 3})) << "the index holds letters without their marks";
}

TEST_F(CountedPrefixes, AreUnknownForAnotherExpression)
{
    addPages(3, "transform matrix");
    EXPECT_EQ(counts("trans*", ""), Counts{std::nullopt});
    EXPECT_EQ(counts("matrix", "trans* matrix"), Counts{std::nullopt});
    EXPECT_EQ(counts("^trans*"), Counts{std::nullopt});
}

TEST_F(CountedPrefixes, AreUnknownAfterAnotherConnectionsCommit)
{
    addPages(3, "transform");
    const QByteArray insertion = RankedLibrary::insertion(9, 1, "transport");
    EXPECT_EQ(counts("trans*", "trans*", kAll, insertion), Counts{std::nullopt});
    EXPECT_EQ(counts("trans*"), Counts{4});
}

TEST_F(CountedPrefixes, AreUnknownInATransactionThatHasWritten)
{
    addPages(3, "transform");
    EXPECT_EQ(counts("trans*"), Counts{3});
    library.run("BEGIN");
    EXPECT_EQ(counts("trans*"), Counts{3});
    library.run(RankedLibrary::insertion(9, 1, "transport"));
    EXPECT_EQ(counts("trans*"), Counts{std::nullopt});
    library.run("ROLLBACK");
    EXPECT_EQ(counts("trans*"), Counts{3});
}

TEST_F(CountedPrefixes, AreKnownAfterAFirstSearchThatIsRolledBack)
{
    addPages(3, "transform");
    library.run("BEGIN");
    EXPECT_EQ(counts("trans*"), Counts{std::nullopt});
    library.run("ROLLBACK");
    EXPECT_EQ(counts("trans*"), Counts{3});
}

TEST_F(CountedPrefixes, FollowInsertionsAndRemovals)
{
    addPages(250, "transform");
    library.run("DELETE FROM fts_papers WHERE rowid <= 240");
    EXPECT_EQ(counts("trans*"), Counts{10});
    library.run("UPDATE fts_papers SET content = 'zeta' WHERE rowid = 250");
    EXPECT_EQ(counts("trans*"), Counts{9});
}

TEST_F(CountedPrefixes, AreUnknownWithRowIdsOutOfReach)
{
    addPages(3, "transform");
    library.run(
        "INSERT INTO fts_papers (rowid, content) VALUES (-5, 'translate'), (9000000000000000000, 'omega')");
    EXPECT_EQ(counts("trans*"), Counts{std::nullopt});
    EXPECT_EQ(counts("ome*"), Counts{std::nullopt});
    EXPECT_EQ(counts("transf*"), Counts{3});
}

TEST_F(CountedPrefixes, LeaveTheLibraryAsItIs)
{
    addPages(3, "transform");
    const QStringList before = RawDatabase(library.path()).texts("SELECT name FROM sqlite_master");
    EXPECT_EQ(counts("trans*"), Counts{3});
    EXPECT_EQ(RawDatabase(library.path()).texts("SELECT name FROM sqlite_master"), before);
}
