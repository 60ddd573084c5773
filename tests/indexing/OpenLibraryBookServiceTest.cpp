#include "indexing/OpenLibraryBookService.h"

#include "platform/CurlHttpClient.h"
#include "support/LoopbackServer.h"
#include "support/Printing.h"

#include <QUrl>
#include <gtest/gtest.h>

namespace
{
/// Answers what a test gives it.
class FakeHttpClient : public HttpClient
{
public:
    Result<QByteArray> answer = QByteArray("{}");
    QStringList asked;
    std::chrono::milliseconds timeout{0};

    Result<QByteArray> fetch(const QUrl &url, std::chrono::milliseconds limit, std::stop_token) override
    {
        asked.append(url.toString());
        timeout = limit;
        return answer;
    }
    Result<void> stream(const HttpStream &, std::stop_token) override { return cancelledError(); }
};

class OpenLibraryBookServiceTest : public testing::Test
{
protected:
    /// Looks one book up and keeps what was printed meanwhile.
    std::optional<BookRecord> lookUp(const QString &isbn = QStringLiteral("123"))
    {
        OpenLibraryBookService service(m_http, QStringLiteral("https://books.example"));
        testing::internal::CaptureStdout();
        std::optional<BookRecord> record = service.lookupBook(isbn, {});
        m_printed = testing::internal::GetCapturedStdout();
        return record;
    }
    std::optional<BookRecord> lookUpAnswer(const QByteArray &book)
    {
        m_http.answer = QByteArray("{\"ISBN:123\": " + book + "}");
        return lookUp();
    }

    FakeHttpClient m_http;
    std::string m_printed;
};

TEST_F(OpenLibraryBookServiceTest, AsksForTheISBNAsFound)
{
    lookUp(QStringLiteral("100306406152"));
    EXPECT_EQ(
        m_http.asked,
        QStringList(u"https://books.example/api/books?bibkeys=ISBN:100306406152&format=json&jscmd=data"_qs));
    EXPECT_EQ(m_http.timeout, std::chrono::seconds(2));
}

TEST_F(OpenLibraryBookServiceTest, ReadsARecord)
{
    const auto record =
        lookUpAnswer(R"({"title": "Knots", "authors": [{"name": "A. One"}, {"name": "B. Two"}],
        "publish_date": "March 1987", "subjects": [{"name": "Topology", "url": "x"}, {"name": "Links"}]})");
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (BookRecord{u"Knots"_qs, u"A. One, B. Two"_qs, 1987, {u"Topology"_qs, u"Links"_qs}}));
    EXPECT_EQ(m_printed, "");
}

TEST_F(OpenLibraryBookServiceTest, ReadsARecordThatHoldsLittle)
{
    EXPECT_EQ(lookUpAnswer("{}"), BookRecord());
    EXPECT_EQ(lookUpAnswer(R"({"title": 7, "authors": "x", "publish_date": 1987, "subjects": {}})"),
              BookRecord());
}

TEST_F(OpenLibraryBookServiceTest, SkipsEntriesWithoutAName)
{
    const auto record = lookUpAnswer(
        R"({"authors": ["x", {}, {"name": 1}, {"name": "A"}], "subjects": [null, {"name": "S"}]})");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->authors, u"A");
    EXPECT_EQ(record->subjects, QStringList(u"S"_qs));
}

TEST_F(OpenLibraryBookServiceTest, TakesTheFirstFourDigitsOfADateAsYear)
{
    const auto yearOf = [&](const QByteArray &date) {
        return lookUpAnswer("{\"publish_date\": \"" + date + "\"}")->year;
    };
    EXPECT_EQ(yearOf("March 1987"), 1987);
    EXPECT_EQ(yearOf("0999"), 999);
    EXPECT_EQ(yearOf("19871990"), 1987);
    EXPECT_FALSE(yearOf("c. 87"));
    EXPECT_FALSE(yearOf(""));
}

TEST_F(OpenLibraryBookServiceTest, FindsNoRecordInAnAnswerWithoutTheBook)
{
    for (const char *answer : {"{}", "[]", "{\"ISBN:999\": {}}", "{\"ISBN:123\": []}"}) {
        m_http.answer = QByteArray(answer);
        EXPECT_FALSE(lookUp());
        EXPECT_EQ(m_printed, "");
    }
}

TEST_F(OpenLibraryBookServiceTest, LogsAnAnswerThatIsNotJson)
{
    m_http.answer = QByteArray("<html>");
    EXPECT_FALSE(lookUp());
    EXPECT_EQ(m_printed, "PDFIndexer: OpenLibrary lookup failed: illegal value\n");
}

TEST_F(OpenLibraryBookServiceTest, LogsAFailedTransfer)
{
    m_http.answer = Error{u"HttpClient"_qs, 4, u"The request timed out"_qs, {}};
    EXPECT_FALSE(lookUp());
    EXPECT_EQ(m_printed, "PDFIndexer: OpenLibrary lookup failed: The request timed out\n");
}

TEST_F(OpenLibraryBookServiceTest, IsSilentAboutAStop)
{
    m_http.answer = cancelledError();
    EXPECT_FALSE(lookUp());
    EXPECT_EQ(m_printed, "");
}

TEST_F(OpenLibraryBookServiceTest, AsksNobodyWithoutAnAddress)
{
    OpenLibraryBookService service(m_http, QString());
    EXPECT_FALSE(service.lookupBook(u"123"_qs, {}));
    EXPECT_TRUE(m_http.asked.isEmpty());
}

TEST_F(OpenLibraryBookServiceTest, AsksNobodyAtAnAddressThatIsNone)
{
    OpenLibraryBookService service(m_http, u"https://[books"_qs);
    EXPECT_FALSE(service.lookupBook(u"123"_qs, {}));
    EXPECT_TRUE(m_http.asked.isEmpty());
}

TEST(OpenLibraryAddress, IsTheServicesOwnUnlessTheEnvironmentNamesAnother)
{
    qunsetenv("QUIREVAULT_OPENLIBRARY_URL");
    EXPECT_EQ(OpenLibraryBookService::configuredAddress(), u"https://openlibrary.org");
    qputenv("QUIREVAULT_OPENLIBRARY_URL", "http://127.0.0.1:8080/");
    EXPECT_EQ(OpenLibraryBookService::configuredAddress(), u"http://127.0.0.1:8080/");
    qputenv("QUIREVAULT_OPENLIBRARY_URL", "");
    EXPECT_EQ(OpenLibraryBookService::configuredAddress(), u"");
    qunsetenv("QUIREVAULT_OPENLIBRARY_URL");
}

TEST(OpenLibraryOverHttp, ReadsTheAnswerOfAServerWhateverItsStatusIs)
{
    qputenv("no_proxy", "*");
    const LoopbackServer server(httpAnswer("404 Not Found", R"({"ISBN:123": {"title": "Found"}})"));
    CurlHttpClient http;
    OpenLibraryBookService service(http, server.address(u"/"_qs));
    const auto record = service.lookupBook(u"123"_qs, {});
    ASSERT_TRUE(record);
    EXPECT_EQ(record->title, u"Found");
    EXPECT_EQ(server.requestLines().at(0), "GET /api/books?bibkeys=ISBN:123&format=json&jscmd=data HTTP/1.1");
}
} // namespace
