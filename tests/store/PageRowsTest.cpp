#include "store/PageRows.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

namespace
{
const auto kPagesOfPaper = QStringLiteral("SELECT page_num, snippet(fts_papers, 2, '[', ']', '...', 5) AS s "
                                          "FROM fts_papers WHERE paper_id = ? AND fts_papers MATCH ? "
                                          "ORDER BY page_num");

class PageRowsOf : public ::testing::Test
{
protected:
    void run(const QString &sql, const SqlValues &parameters = {})
    {
        ASSERT_TRUE(database.execute(sql, parameters));
    }

    /// Adds a paper and its pages, as importing does, with what `chunk_count` claims.
    void add(const QString &id, int pages, int claimed)
    {
        run(QStringLiteral("INSERT INTO papers (id, title, filepath, chunk_count) VALUES (?, 't', 'f', ?)"),
            {id, qint64(claimed)});
        addPages(id, pages);
    }
    void add(const QString &id, int pages) { add(id, pages, pages); }
    void addPages(const QString &id, int pages)
    {
        QList<Chunk> chunks;
        for (int page = 1; page <= pages; ++page)
            chunks.append({.text = "the word of " + id.toUtf8(), .pageNum = page, .index = page - 1});
        ASSERT_TRUE(database.insertChunks(id, chunks));
    }
    void remove(const QString &id)
    {
        run(QStringLiteral("DELETE FROM papers WHERE id = ?"), {id});
        run(QStringLiteral("DELETE FROM fts_papers WHERE paper_id = ?"), {id});
    }
    void expectSamePages(const QString &id, const QString &expression)
    {
        const auto plain = database.query(kPagesOfPaper, {id, expression});
        const auto narrowed = queryPagesOf(database, id, [&] {
            return database.query(kPagesOfPaper, {id, expression});
        });
        ASSERT_TRUE(plain && narrowed);
        EXPECT_EQ(texts(*narrowed), texts(*plain)) << id.toStdString();
    }
    static QStringList texts(const QList<Row> &rows)
    {
        QStringList found;
        for (const Row &row : rows)
            found.append(QString::number(row.integer(QLatin1String("page_num")).value_or(-1)) + u' ' +
                         row.text(QLatin1String("s")).value_or(QString()));
        return found;
    }

    TemporaryFolder folder;
    Database database{folder.path(QStringLiteral("library.db"))};
};
} // namespace

TEST_F(PageRowsOf, AnyPaperAreFoundWhateverItsIdSortsLike)
{
    qint64 first = 1;
    for (const char *id : {"m", "z", "a", "q", "b"}) {
        add(QLatin1String(id), 3);
        EXPECT_EQ(findPageRows(database, QLatin1String(id)), (PageRows{first, first + 2})) << id;
        first += 3;
    }
    EXPECT_EQ(findPageRows(database, QStringLiteral("m")), (PageRows{1, 3}));
    EXPECT_EQ(findPageRows(database, QStringLiteral("a")), (PageRows{7, 9}));
}

TEST_F(PageRowsOf, PapersAreFoundAcrossGapsAndPapersWithoutPages)
{
    add(QStringLiteral("a"), 4);
    add(QStringLiteral("gone"), 200);
    add(QStringLiteral("b"), 1);
    add(QStringLiteral("blank"), 0);
    add(QStringLiteral("c"), 5);
    remove(QStringLiteral("gone"));
    add(QStringLiteral("gone"), 2);
    EXPECT_EQ(findPageRows(database, QStringLiteral("a")), (PageRows{1, 4}));
    EXPECT_EQ(findPageRows(database, QStringLiteral("b")), (PageRows{205, 205}));
    EXPECT_EQ(findPageRows(database, QStringLiteral("c")), (PageRows{206, 210}));
    EXPECT_EQ(findPageRows(database, QStringLiteral("gone")), (PageRows{211, 212}));
    for (const char *id : {"a", "b", "blank", "c", "gone"})
        expectSamePages(QLatin1String(id), QStringLiteral("word"));
}

TEST_F(PageRowsOf, AreUncertainWhenTheCountDoesNotBearThemOut)
{
    add(QStringLiteral("fewer"), 3, 5);
    add(QStringLiteral("more"), 3, 2);
    add(QStringLiteral("other"), 3);
    addPages(QStringLiteral("other"), 2);
    addPages(QStringLiteral("orphan"), 2);
    run(QStringLiteral("UPDATE papers SET chunk_count = 5 WHERE id = 'other'"));
    EXPECT_EQ(findPageRows(database, QStringLiteral("fewer")), std::nullopt);
    EXPECT_EQ(findPageRows(database, QStringLiteral("more")), std::nullopt);
    EXPECT_EQ(findPageRows(database, QStringLiteral("orphan")), std::nullopt);
    EXPECT_EQ(findPageRows(database, QStringLiteral("unknown")), std::nullopt);
    for (const char *id : {"fewer", "more", "orphan", "unknown"})
        expectSamePages(QLatin1String(id), QStringLiteral("word"));
}

TEST_F(PageRowsOf, AreUncertainWhenPagesStandElsewhereThanTheirPapersDo)
{
    add(QStringLiteral("a"), 0, 4);
    add(QStringLiteral("b"), 2);
    addPages(QStringLiteral("a"), 2);
    add(QStringLiteral("c"), 2);
    addPages(QStringLiteral("a"), 2);
    EXPECT_EQ(findPageRows(database, QStringLiteral("a")), std::nullopt);
    for (const char *id : {"a", "b", "c"})
        expectSamePages(QLatin1String(id), QStringLiteral("word"));
}

TEST_F(PageRowsOf, ServeQueriesOfEveryKindAndLeaveTheTableAsItWas)
{
    for (const char *id : {"a", "b", "c"})
        add(QLatin1String(id), 6);
    for (const char *expression : {"word", "wo*", "\"the word\"", "NEAR(the b, 5)", "word NOT b", "b OR c"})
        expectSamePages(QStringLiteral("b"), QLatin1String(expression));
    const auto rejected = queryPagesOf(database, QStringLiteral("b"), [this] {
        return database.query(kPagesOfPaper, {QStringLiteral("b"), QStringLiteral("AND")});
    });
    EXPECT_FALSE(rejected);
    add(QStringLiteral("d"), 1);
    expectSamePages(QStringLiteral("d"), QStringLiteral("word"));
}

TEST_F(PageRowsOf, OnePaperAreDeletedAndNoOthersCertainOrNot)
{
    add(QStringLiteral("a"), 3);
    add(QStringLiteral("certain"), 4);
    add(QStringLiteral("uncertain"), 4, 9);
    add(QStringLiteral("z"), 2);
    for (const char *id : {"certain", "uncertain"}) {
        const std::optional<PageRows> rows = findPageRows(database, QLatin1String(id));
        EXPECT_EQ(rows.has_value(), qstrcmp(id, "certain") == 0);
        run(QStringLiteral("DELETE FROM papers WHERE id = ?"), {QLatin1String(id)});
        EXPECT_TRUE(deletePagesOf(database, QLatin1String(id), rows));
    }
    const auto left =
        database.query(QStringLiteral("SELECT group_concat(paper_id, '') AS s FROM fts_papers"));
    EXPECT_EQ(left->first().text(QLatin1String("s")), u"aaazz");
}
