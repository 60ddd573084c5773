#include "support/Printing.h"
#include "systemsearch/PublishedItems.h"

class ItemWritingTest : public PublishedItems
{
protected:
    QList<SearchableItem> three() const
    {
        return {item(QStringLiteral("a"), {.title = QStringLiteral("Knots"), .year = 1987}),
                item(QStringLiteral("b"), {.title = QStringLiteral("Links")}),
                item(QStringLiteral("c"), {.title = QStringLiteral("Braids")})};
    }

    qint64 count() { return database().number(QStringLiteral("SELECT count(*) FROM items")).value(); }

    QString text(const QString &column)
    {
        Result<Statement> select = database().prepare(u"SELECT " + column + u" FROM items");
        return select->step() == Statement::Step::Row ? select->text(0).value_or(QStringLiteral("NULL"))
                                                      : QStringLiteral("no row");
    }
};

TEST_F(ItemWritingTest, KeepsEveryFieldOfAnItem)
{
    put({item(QStringLiteral("a"),
              {.title = QStringLiteral("Knots"),
               .names = {QStringLiteral("A. One"), QStringLiteral("B. Two")},
               .keywords = {QStringLiteral("_currently_reading"), QStringLiteral("Topology")},
               .year = 1987})});
    EXPECT_EQ(text(QStringLiteral("id")), QStringLiteral("a"));
    EXPECT_EQ(text(QStringLiteral("domain")), QStringLiteral("org.quirevault.Quirevault.library"));
    EXPECT_EQ(text(QStringLiteral("content_type")), QStringLiteral("application/pdf"));
    EXPECT_EQ(text(QStringLiteral("title")), QStringLiteral("Knots"));
    EXPECT_EQ(text(QStringLiteral("names")), QStringLiteral("A. One\nB. Two"));
    EXPECT_EQ(text(QStringLiteral("keywords")), QStringLiteral("_currently_reading\nTopology"));
    EXPECT_EQ(text(QStringLiteral("tags")), QStringLiteral("Topology"));
    EXPECT_EQ(text(QStringLiteral("description")), QStringLiteral("Research paper by A. One, B. Two"));
    EXPECT_EQ(text(QStringLiteral("created")), QStringLiteral("1987-01-01T00:00:00"));
}

TEST_F(ItemWritingTest, KeepsNoDateOfAnItemWithoutOne)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    EXPECT_EQ(text(QStringLiteral("created")), QStringLiteral("NULL"));
    EXPECT_EQ(text(QStringLiteral("year")), QString());
}

TEST_F(ItemWritingTest, LeavesOneItemAPaperWhenAListIsPublishedTwice)
{
    put(three());
    put(three());
    EXPECT_EQ(count(), 3);
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("a")));
}

TEST_F(ItemWritingTest, WritesNothingThatIsUnchanged)
{
    put(three());
    const qint64 before = changes();
    put(three());
    ASSERT_TRUE(replaceAllItems(database(), three()));
    EXPECT_EQ(changes(), before);
}

TEST_F(ItemWritingTest, WritesAnItemOfWhichAnyFieldChanged)
{
    const SearchableItem original =
        item(QStringLiteral("a"), {.title = QStringLiteral("Knots"), .names = {QStringLiteral("One")}});
    QList<SearchableItem> changed(7, original);
    changed[0].title = QStringLiteral("Links");
    changed[1].authorNames = {QStringLiteral("Two")};
    changed[2].contentDescription = QStringLiteral("Else");
    changed[3].keywords = {QStringLiteral("_currently_reading")};
    changed[4].contentCreationDate = QDate(1987, 1, 1).startOfDay();
    changed[5].domainIdentifier = QStringLiteral("else");
    changed[6].contentType = QStringLiteral("text/plain");
    for (const SearchableItem &one : changed) {
        put({original});
        const qint64 before = changes();
        put({one});
        EXPECT_GT(changes(), before);
    }
}

TEST_F(ItemWritingTest, TellsFieldsApartThatHoldTheSameTextInAll)
{
    SearchableItem one = item(QStringLiteral("a"), {.title = QStringLiteral("Knots")});
    one.authorNames = {QStringLiteral("A"), QStringLiteral("B")};
    SearchableItem other = one;
    other.authorNames = {QStringLiteral("A")};
    other.keywords = {QStringLiteral("B")};
    put({one});
    put({other});
    EXPECT_EQ(text(QStringLiteral("names")), QStringLiteral("A"));
}

TEST_F(ItemWritingTest, ForgetsTheWordsThatAnItemNoLongerHas)
{
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Knots")})});
    put({item(QStringLiteral("a"), {.title = QStringLiteral("Links")})});
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList());
    EXPECT_EQ(find(QStringLiteral("links")), QStringList(QStringLiteral("a")));
}

TEST_F(ItemWritingTest, TakesTheLastOfTwoItemsOfOneIdentifier)
{
    const SearchableItem knots = item(QStringLiteral("a"), {.title = QStringLiteral("Knots")});
    const SearchableItem links = item(QStringLiteral("a"), {.title = QStringLiteral("Links")});
    put({knots, links});
    EXPECT_EQ(text(QStringLiteral("title")), QStringLiteral("Links"));
    put({knots, links});
    EXPECT_EQ(text(QStringLiteral("title")), QStringLiteral("Links"));
    put({links, knots});
    EXPECT_EQ(text(QStringLiteral("title")), QStringLiteral("Knots"));
}

TEST_F(ItemWritingTest, RemovesByIdentifierAndTakesUnknownOnesForRemoved)
{
    put(three());
    ASSERT_TRUE(removeItems(database(), {QStringLiteral("a"), QStringLiteral("unknown")}));
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList());
}

TEST_F(ItemWritingTest, AListLeavesOthersAloneAndTheWholeListDoesNot)
{
    put(three());
    put({three()[0]});
    EXPECT_EQ(count(), 3);
    ASSERT_TRUE(replaceAllItems(database(), {three()[0]}));
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(find(QStringLiteral("links")), QStringList());
}

TEST_F(ItemWritingTest, ComparesLongListsAsItDoesShortOnes)
{
    QList<SearchableItem> many;
    for (int i = 0; i < 6000; ++i)
        many.append(item(QString::number(i), {.title = QStringLiteral("Knots %1").arg(i)}));
    put(many);
    const qint64 before = changes();
    put(many);
    EXPECT_EQ(changes(), before);
    many[17].title = QStringLiteral("Unique");
    put(many);
    EXPECT_EQ(find(QStringLiteral("unique")), QStringList(QStringLiteral("17")));
    EXPECT_EQ(count(), 6000);
}

TEST_F(ItemWritingTest, ChangesNothingWhenItIsStopped)
{
    put({three()[0]});
    std::stop_source source;
    source.request_stop();
    const Result<void> done = replaceAllItems(database(), {three()[1], three()[2]}, source.get_token());
    ASSERT_FALSE(done);
    EXPECT_TRUE(isCancelled(done.error()));
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("a")));
    EXPECT_EQ(count(), 1);
}
