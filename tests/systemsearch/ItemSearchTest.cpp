#include "support/Printing.h"
#include "systemsearch/PublishedItems.h"

class ItemSearchTest : public PublishedItems
{
};

TEST_F(ItemSearchTest, FindsNothingWhereNothingWasPublished)
{
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList());
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(ItemSearchTest, FindsAPaperByEveryVisibleField)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("On Knots"),
                                    .names = {QStringLiteral("A. One"), QStringLiteral("Bea Two")},
                                    .keywords = {QStringLiteral("Low Topology")},
                                    .year = 1987}),
         item(QStringLiteral("b"), {.title = QStringLiteral("Else")})});
    for (const char *query : {"knots", "One", "bea", "topology", "low", "1987"})
        EXPECT_EQ(find(QLatin1String(query)), QStringList(QStringLiteral("a"))) << query;
}

TEST_F(ItemSearchTest, WantsAllTermsWhereverTheyAre)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Sorting"),
                                    .names = {QStringLiteral("Knuth")},
                                    .keywords = {QStringLiteral("Algorithms")},
                                    .year = 1973}),
         item(QStringLiteral("b"),
              {.title = QStringLiteral("Sorting"), .names = {QStringLiteral("Hoare")}})});
    EXPECT_EQ(find(QStringLiteral("sorting knuth 1973 algorithms")), QStringList(QStringLiteral("a")));
    EXPECT_EQ(find(QStringLiteral("sorting knuth 1974")), QStringList());
}

TEST_F(ItemSearchTest, TakesTheBeginningsOfWords)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Transformers")})});
    for (const char *query : {"t", "tr", "tra", "trans", "transformers"})
        EXPECT_EQ(find(QLatin1String(query)), QStringList(QStringLiteral("a"))) << query;
    for (const char *query : {"formers", "transformersx"})
        EXPECT_EQ(find(QLatin1String(query)), QStringList()) << query;
}

TEST_F(ItemSearchTest, IgnoresCaseAndDiacritics)
{
    put({item(QStringLiteral("a"), {.title = QString::fromUtf8("Größe und ÉTALE Maße")})});
    for (const char *query : {"grosse", "GRÖ", "etale", "Étale"}) {
        const bool isFound = !find(QString::fromUtf8(query)).isEmpty();
        // "ß" is a letter of its own and no "ss".
        EXPECT_EQ(isFound, qstrcmp(query, "grosse") != 0) << query;
    }
}

TEST_F(ItemSearchTest, PutsWholeWordsOfTitlesFirstThenTitlesThenNamesThenTheRest)
{
    put({item(QStringLiteral("tag"), {.title = QStringLiteral("D"), .keywords = {QStringLiteral("Graph")}}),
         item(QStringLiteral("name"), {.title = QStringLiteral("C"), .names = {QStringLiteral("Graph")}}),
         item(QStringLiteral("prefix"), {.title = QStringLiteral("Graphs")}),
         item(QStringLiteral("word"), {.title = QStringLiteral("The graph")})});
    EXPECT_EQ(find(QStringLiteral("graph")), (QStringList{QStringLiteral("word"), QStringLiteral("prefix"),
                                                          QStringLiteral("name"), QStringLiteral("tag")}));
}

TEST_F(ItemSearchTest, AnswersAtMostTwentyTheBestAmongThem)
{
    QList<SearchableItem> items;
    for (int i = 0; i < 300; ++i)
        items.append(
            item(QString::number(i), {.title = QStringLiteral("X"), .names = {QStringLiteral("Knot")}}));
    items.append(item(QStringLiteral("best"), {.title = QStringLiteral("Knots")}));
    put(items);
    const QStringList found = find(QStringLiteral("knot"));
    EXPECT_EQ(found.size(), 20);
    EXPECT_EQ(found.value(0), QStringLiteral("best"));
    EXPECT_EQ(QSet<QString>(found.begin(), found.end()).size(), 20);
}

TEST_F(ItemSearchTest, NeverLooksAtReservedTags)
{
    put({item(QStringLiteral("a"),
              {.title = QStringLiteral("Knots"),
               .keywords = {QStringLiteral("_currently_reading"), QStringLiteral("Seen")}})});
    for (const char *query : {"_currently_reading", "currently", "reading"})
        EXPECT_EQ(find(QLatin1String(query)), QStringList()) << query;
    EXPECT_EQ(find(QStringLiteral("seen")), QStringList(QStringLiteral("a")));
}

TEST_F(ItemSearchTest, TakesWhatEveryDescriptionSaysForNoMatchButNotAgainstOne)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots"), .names = {QStringLiteral("One")}})});
    EXPECT_EQ(find(QStringLiteral("research")), QStringList());
    EXPECT_EQ(find(QStringLiteral("paper by")), QStringList());
    EXPECT_EQ(find(QStringLiteral("Paper by one")), QStringList(QStringLiteral("a")));
    EXPECT_EQ(find(QStringLiteral("papers by one")), QStringList());
}

TEST_F(ItemSearchTest, FindsTheWordsOfDescriptionsWhereTheyStandElsewhere)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Methods")}),
         item(QStringLiteral("b"), {.title = QStringLiteral("Research methods")})});
    EXPECT_EQ(find(QStringLiteral("research")), QStringList(QStringLiteral("b")));
    EXPECT_EQ(find(QStringLiteral("research methods")),
              (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
}

TEST_F(ItemSearchTest, TakesATermOfSeveralWordsAsAPhrase)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Graph-theory primer")}),
         item(QStringLiteral("b"), {.title = QStringLiteral("Theory of the graph")})});
    EXPECT_EQ(find(QStringLiteral("graph-theo")), QStringList(QStringLiteral("a")));
    EXPECT_EQ(find(QStringLiteral("\"graph/theory\"")), QStringList(QStringLiteral("a")));
}

TEST_F(ItemSearchTest, TakesNothingOfATermForALanguage)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    for (const char *query :
         {"", "\"", "*", "title:knots", "knots NOT", "{title}", "^", "NEAR(", "' OR 1=1 --"})
        static_cast<void>(find(QLatin1String(query)));
    EXPECT_EQ(find(QStringLiteral("\"knots* ( {")), QStringList(QStringLiteral("a")));
    EXPECT_EQ(find(QStringLiteral("knots OR else")), QStringList());
}

TEST_F(ItemSearchTest, BoundsWhatItIsAsked)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    QStringList many(100'000, QStringLiteral("knots"));
    EXPECT_EQ(m_search.find(many), QStringList(QStringLiteral("a")));
    EXPECT_EQ(m_search.find({QString(1'000'000, u'x')}), QStringList());
}

TEST_F(ItemSearchTest, KnowsWhatToShowOfPapers)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots"),
                                    .names = {QStringLiteral("A. One"), QStringLiteral("B. Two"), QString()},
                                    .keywords = {QStringLiteral("_currently_reading")},
                                    .year = 1987}),
         item(QStringLiteral("b"), {.title = QStringLiteral("Links")})});
    const QList<FoundPaper> papers =
        m_search.papers({QStringLiteral("b"), QStringLiteral("unknown"), QStringLiteral("a")});
    EXPECT_EQ(papers, (QList<FoundPaper>{{.id = QStringLiteral("b"),
                                          .title = QStringLiteral("Links"),
                                          .authorNames = {},
                                          .year = QLatin1String("")},
                                         {.id = QStringLiteral("a"),
                                          .title = QStringLiteral("Knots"),
                                          .authorNames = {QStringLiteral("A. One"), QStringLiteral("B. Two")},
                                          .year = QStringLiteral("1987")}}));
}

TEST_F(ItemSearchTest, SeesWhatIsPublishedLater)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    ASSERT_EQ(find(QStringLiteral("knots")).size(), 1);
    put({item(QStringLiteral("b"), {.title = QStringLiteral("Knots")})});
    EXPECT_EQ(find(QStringLiteral("knots")).size(), 2);
}

TEST_F(ItemSearchTest, SearchesTheFileThatTookTheOldOnesPlace)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    ASSERT_EQ(find(QStringLiteral("knots")).size(), 1);
    QFile::remove(m_path);
    put({item(QStringLiteral("b"), {.title = QStringLiteral("Knots")})});
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("b")));
}

TEST_F(ItemSearchTest, SearchesWhileAPublicationIsUnderWay)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    ASSERT_TRUE(database().execute(QStringLiteral("BEGIN IMMEDIATE")));
    ASSERT_TRUE(database().execute(QStringLiteral("DELETE FROM items")));
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("a")));
    ASSERT_TRUE(database().execute(QStringLiteral("ROLLBACK")));
}
