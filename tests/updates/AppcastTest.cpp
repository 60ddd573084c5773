#include "updates/Appcast.h"

#include "support/FeedText.h"
#include "support/Printing.h"
#include "updates/UpdateError.h"

#include <gtest/gtest.h>

namespace
{
QList<AppcastItem> items(const QByteArray &feed)
{
    const Result<QList<AppcastItem>> parsed = parseAppcast(feed);
    EXPECT_TRUE(parsed) << parsed.error().message().toStdString();
    return parsed.value_or(QList<AppcastItem>());
}

AppcastItem item(const FeedItem &text)
{
    return items(feedOf(text.text())).value(0);
}

/// Why the feed was refused; empty when it was not.
QString refusal(const QByteArray &feed)
{
    const Result<QList<AppcastItem>> parsed = parseAppcast(feed);
    if (parsed)
        return {};
    EXPECT_EQ(parsed.error().domain, u"Updater");
    EXPECT_EQ(parsed.error().code, static_cast<int>(UpdateErrorCode::BadFeed));
    return parsed.error().message();
}
} // namespace

TEST(Appcast, TellsAllOfAnItem)
{
    const QByteArray signature(64, 's');
    const AppcastItem read =
        item({.signature = signature.toBase64(),
              .more = "<q:shortVersionString>2.0 “Folio”</q:shortVersionString>"
                      "<q:minimumSystemVersion>2.36</q:minimumSystemVersion>"
                      "<description q:format=\"markdown\"><![CDATA[\n# New\n]]></description>"
                      "<pubDate>Sat, 21 Nov 2026 12:00:00 +0000</pubDate>"});
    EXPECT_EQ(read, (AppcastItem{.version = *DottedVersion::fromText(u"2.0"_qs),
                                 .displayVersion = u"2.0 “Folio”"_qs,
                                 .minimumSystem = *DottedVersion::fromText(u"2.36"_qs),
                                 .operatingSystem = {},
                                 .notes = {u"# New"_qs, ReleaseNotes::Format::Markdown},
                                 .url = QUrl(u"https://updates.example/quirevault_2.0_amd64.deb"_qs),
                                 .sizeBytes = 1000,
                                 .signature = signature}));
}

TEST(Appcast, DoesWithoutWhatAnItemMayLack)
{
    const AppcastItem read = item({.length = {}, .signature = {}});
    EXPECT_EQ(read.displayVersion, u"2.0");
    EXPECT_EQ(read.minimumSystem, DottedVersion());
    EXPECT_EQ(read.notes, ReleaseNotes());
    EXPECT_EQ(read.sizeBytes, 0);
    EXPECT_EQ(read.signature, "");
}

TEST(Appcast, ReadsVersionsFromTheEnclosureToo)
{
    const auto read = items(feedOf("<item><enclosure url=\"https://a.example/p.deb\" q:version=\"3.1\" "
                                   "q:shortVersionString=\"Three\" q:os=\"Linux\" length=\"5\"/></item>"));
    ASSERT_EQ(read.size(), 1);
    EXPECT_EQ(read[0].version.text(), u"3.1");
    EXPECT_EQ(read[0].displayVersion, u"Three");
    EXPECT_EQ(read[0].operatingSystem, u"linux");
}

TEST(Appcast, ReadsElementsOfAnyNamespaceButRssFromNone)
{
    const auto read =
        items("<rss xmlns:a=\"urn:a\"><channel><a:item/><item><a:version>2</a:version>"
              "<a:description>not this</a:description><description>this</description>"
              "<a:enclosure url=\"https://b.example/\"/><enclosure url=\"https://a.example/p.deb\"/></item>"
              "</channel></rss>");
    ASSERT_EQ(read.size(), 1);
    EXPECT_EQ(read[0].version.text(), u"2");
    EXPECT_EQ(read[0].notes.text, u"this");
    EXPECT_EQ(read[0].url.host(), u"a.example");
}

TEST(Appcast, KeepsTheOrderOfTheFeed)
{
    const auto read = items(feedOf(FeedItem{.version = "1"}.text() + FeedItem{.version = "3"}.text() +
                                   FeedItem{.version = "2"}.text()));
    ASSERT_EQ(read.size(), 3);
    EXPECT_EQ(read[0].version.text(), u"1");
    EXPECT_EQ(read[2].version.text(), u"2");
}

TEST(Appcast, LeavesOutItemsThatCannotBeUpdatesTo)
{
    EXPECT_TRUE(items(feedOf(FeedItem{.version = "2.0-beta"}.text())).isEmpty());
    EXPECT_TRUE(items(feedOf(FeedItem{.version = ""}.text())).isEmpty());
    EXPECT_TRUE(items(feedOf(FeedItem{.url = ""}.text())).isEmpty());
    EXPECT_TRUE(items(feedOf("<item><q:version>2</q:version></item>")).isEmpty());
    EXPECT_TRUE(
        items(feedOf(FeedItem{.more = "<q:minimumSystemVersion>soon</q:minimumSystemVersion>"}.text()))
            .isEmpty());
    EXPECT_TRUE(items(feedOf("")).isEmpty());
}

TEST(Appcast, TakesNoSignatureThatIsNone)
{
    EXPECT_EQ(item({.signature = "not base64!"}).signature, "");
    EXPECT_EQ(item({.signature = QByteArray(63, 's').toBase64()}).signature, "");
}

TEST(Appcast, TakesNoLengthThatIsNone)
{
    EXPECT_EQ(item({.length = "-5"}).sizeBytes, 0);
    EXPECT_EQ(item({.length = "many"}).sizeBytes, 0);
    EXPECT_EQ(item({.length = "99999999999999999999"}).sizeBytes, 0);
}

TEST(Appcast, KeepsWhatPeopleReadShortAndOnOneLine)
{
    const AppcastItem read =
        item({.more = "<q:shortVersionString>2.0\n\xe2\x80\xae" + QByteArray(99, 'x') +
                      "</q:shortVersionString><description>" + QByteArray(40'000, 'x') + "</description>"});
    EXPECT_EQ(read.displayVersion.size(), 40);
    EXPECT_FALSE(read.displayVersion.contains(u'\n') || read.displayVersion.contains(QChar(0x202e)));
    EXPECT_EQ(read.notes.text.size(), kMaxNotesCharacters);
}

TEST(Appcast, LeavesElementsInsideNotesOut)
{
    EXPECT_EQ(item({.more = "<description>a <b>bold</b> word</description>"}).notes.text, u"a  word");
}

TEST(Appcast, RefusesWhatIsMalformed)
{
    EXPECT_NE(refusal(""), u"");
    EXPECT_NE(refusal("hello"), u"");
    EXPECT_NE(refusal("<rss><channel></rss>"), u"");
    EXPECT_NE(refusal(feedOf("<item>&unknown;</item>")), u"");
    EXPECT_NE(refusal(feedOf(FeedItem{}.text()) + "<more/>"), u"") << "after its end";
}

TEST(Appcast, RefusesWhatEndsTooEarlyWhereverItDoes)
{
    const QByteArray feed = feedOf(FeedItem{.more = "<description>notes</description>"}.text());
    for (qsizetype length = 0; length < feed.size(); ++length)
        EXPECT_NE(refusal(feed.left(length)), u"") << length;
}

TEST(Appcast, RefusesWhatIsNoFeed)
{
    EXPECT_EQ(refusal("<html><body>Not found</body></html>"),
              u"The answer is not an update feed: it is not RSS");
    EXPECT_NE(refusal("<rss/>"), u"");
    EXPECT_NE(refusal("<rss xmlns=\"urn:other\"><channel/></rss>"), u"");
}

TEST(Appcast, RefusesADocumentTypeBeforeItsEntitiesAreUsed)
{
    QByteArray bomb = "<!DOCTYPE rss [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 40; ++i)
        bomb += "<!ENTITY a" + QByteArray::number(i) + " \"&a" + QByteArray::number(i - 1) + ";&a" +
                QByteArray::number(i - 1) + ";\">";
    bomb += "]><rss><channel><item>&a39;</item></channel></rss>";
    EXPECT_TRUE(refusal(bomb).contains(u"declares a document type"));
    EXPECT_TRUE(refusal("<!DOCTYPE rss SYSTEM \"file:///etc/hostname\"><rss><channel/></rss>")
                    .contains(u"declares a document type"));
}

TEST(Appcast, RefusesTooManyElements)
{
    const auto feed = [](int elements) {
        QByteArray text;
        for (int i = 0; i < elements; ++i)
            text += "<a/>";
        return feedOf(text);
    };
    constexpr int kFrame = 3; // rss, channel, title
    EXPECT_EQ(refusal(feed(kMaxFeedElements - kFrame)), u"");
    EXPECT_TRUE(refusal(feed(kMaxFeedElements - kFrame + 1)).contains(u"too many elements"));
}

TEST(Appcast, RefusesElementsNestedWithoutEnd)
{
    EXPECT_NE(refusal("<rss><channel>" + QByteArray("<a>").repeated(300'000)), u"");
}

TEST(Appcast, RefusesWhatIsTooLong)
{
    const QByteArray padding(kMaxFeedBytes, ' ');
    EXPECT_EQ(refusal(feedOf("") + padding), u"The update feed is too long");
}

TEST(Appcast, RefusesTooManyAttributes)
{
    QByteArray element = "<a";
    for (qsizetype i = 0; i <= kMaxFeedAttributes; ++i)
        element += " a" + QByteArray::number(i) + "=''";
    EXPECT_EQ(refusal(feedOf(element + "/>")), u"The update feed has too many attributes");
}
