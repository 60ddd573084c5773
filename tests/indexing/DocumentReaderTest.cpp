#include "indexing/DocumentReader.h"

#include "support/FakeClock.h"
#include "support/FakePDFDocument.h"
#include "support/Printing.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace
{
using testing::ElementsAre;

class DocumentReaderTest : public testing::Test
{
protected:
    DocumentContent read(const ReadingLimits &limits = {})
    {
        Result<DocumentContent> content = readDocument(m_document, m_clock, m_stop.get_token(), limits);
        EXPECT_TRUE(content) << content.error().message().toStdString();
        return content ? *content : DocumentContent();
    }
    void loseEngineAt(std::initializer_list<qint64> pages)
    {
        for (const qint64 page : pages)
            m_document.failingPages.insert({page, pdfError(PDFErrorCode::EngineFailed)});
    }

    FakePDFDocument m_document;
    FakeClock m_clock;
    std::stop_source m_stop;
};

TEST_F(DocumentReaderTest, ReadsEveryPageInOrder)
{
    m_document.pages = {"one", "two", "three"};
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "one two three");
    EXPECT_EQ(content.pageCount, 3);
    EXPECT_THAT(m_document.readPages, ElementsAre(0, 1, 2));
}

TEST_F(DocumentReaderTest, ReadsADocumentWithoutPages)
{
    EXPECT_EQ(read().pageCount, 0);
    EXPECT_TRUE(m_document.readPages.empty());
}

TEST_F(DocumentReaderTest, TakesAPageThatFailsAsAPageWithoutText)
{
    m_document.pages = {"one", "two", "three"};
    m_document.failingPages.insert({1, pdfError(PDFErrorCode::PageUnavailable)});
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "one three");
    EXPECT_EQ(content.text.pages().back().number, 3);
    EXPECT_EQ(content.pageCount, 3);
    EXPECT_EQ(m_document.restarts, 0);
}

TEST_F(DocumentReaderTest, StopsBeforeTheNextPage)
{
    m_document.pages = {"one", "two", "three"};
    m_document.onRead = [this](qint64 index) {
        if (index == 1)
            m_stop.request_stop();
    };
    const auto content = readDocument(m_document, m_clock, m_stop.get_token());
    ASSERT_FALSE(content);
    EXPECT_TRUE(isCancelled(content.error()));
    EXPECT_THAT(m_document.readPages, ElementsAre(0, 1));
}

TEST_F(DocumentReaderTest, PassesOnThatAPageWasCancelled)
{
    m_document.pages = {"one"};
    m_document.failingPages.insert({0, cancelledError()});
    const auto content = readDocument(m_document, m_clock, {});
    ASSERT_FALSE(content);
    EXPECT_TRUE(isCancelled(content.error()));
}

TEST_F(DocumentReaderTest, GoesOnWithANewEngineAfterAPageCostOne)
{
    m_document.pages = {"one", "two", "three", "four", "five"};
    loseEngineAt({1});
    m_document.failingPages.insert({3, pdfError(PDFErrorCode::DeadlineExceeded)});
    EXPECT_EQ(read().text.fullText(), "one three five");
    EXPECT_EQ(m_document.restarts, 2);
}

TEST_F(DocumentReaderTest, LosesNoPageWhenTheCoverCostTheEngine)
{
    m_document.pages = {"one", "two"};
    m_document.picture = pdfError(PDFErrorCode::DeadlineExceeded);
    ASSERT_FALSE(m_document.thumbnail(0, 300, 400, {}));
    EXPECT_EQ(read().text.fullText(), "one two");
}

TEST_F(DocumentReaderTest, EndsWhenADocumentCostMoreEnginesThanItMay)
{
    m_document.pages = {"one", "x", "x", "x", "five", "x", "seven"};
    loseEngineAt({1, 2, 3, 5});
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "one five");
    EXPECT_EQ(m_document.restarts, 3);
    EXPECT_EQ(m_document.readPages.back(), 5);
    EXPECT_EQ(content.pageCount, 7);
}

TEST_F(DocumentReaderTest, KeepsWhatWasReadWhenTheDocumentDoesNotOpenAgain)
{
    m_document.pages = {"one", "x", "three"};
    loseEngineAt({1});
    m_document.restartAnswer = pdfError(PDFErrorCode::Damaged);
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "one");
    EXPECT_EQ(content.pageCount, 3);
    EXPECT_EQ(m_document.restarts, 1);
}

TEST_F(DocumentReaderTest, FailsWhenThisMachineCannotStartAnEngine)
{
    m_document.pages = {"one", "x", "three"};
    loseEngineAt({1});
    m_document.restartAnswer = pdfError(PDFErrorCode::EngineMissing);
    const auto content = readDocument(m_document, m_clock, {});
    ASSERT_FALSE(content);
    EXPECT_TRUE(isPDFError(content.error(), PDFErrorCode::EngineMissing));
}

TEST_F(DocumentReaderTest, EndsAtARunOfUnreadablePages)
{
    m_document.pages = {"one", "two"};
    m_document.claimedPages = 1'000'000'000;
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "one two");
    EXPECT_EQ(m_document.readPages.size(), 22U);
    EXPECT_EQ(content.pageCount, 2);
}

TEST_F(DocumentReaderTest, CountsTheRunOfUnreadablePagesAnewBehindAReadableOne)
{
    m_document.pages = std::vector<QByteArray>(40, "word");
    for (qint64 page = 0; page < 40; ++page) {
        if (page != 19)
            m_document.failingPages.insert({page, pdfError(PDFErrorCode::PageUnavailable)});
    }
    m_document.pages.resize(38);
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "word");
    EXPECT_EQ(m_document.readPages.size(), 38U);
    EXPECT_EQ(content.pageCount, 38);
}

TEST_F(DocumentReaderTest, CallsThePageCountUnknownWhenNoPageOfMillionsIsReadable)
{
    m_document.claimedPages = 1'410'065'407;
    EXPECT_EQ(read().pageCount, 0);
}

TEST_F(DocumentReaderTest, BelievesAPageCountThatWasTriedToItsEnd)
{
    m_document.claimedPages = 20;
    EXPECT_EQ(read().pageCount, 20);
    EXPECT_EQ(m_document.readPages.size(), 20U);
}

TEST_F(DocumentReaderTest, EndsWhenTheTimeIsOver)
{
    m_document.pages = std::vector<QByteArray>(10, "word");
    m_document.onRead = [this](qint64) {
        m_clock.advance(50s);
    };
    const DocumentContent content = read();
    EXPECT_EQ(content.text.fullText(), "word word word");
    EXPECT_EQ(content.pageCount, 10);
}

TEST_F(DocumentReaderTest, BelievesNoHugePageCountThatTimeCutShort)
{
    m_document.pages = std::vector<QByteArray>(10, "word");
    m_document.claimedPages = kMaxClaimedPages + 1;
    m_document.onRead = [this](qint64) {
        m_clock.advance(50s);
    };
    EXPECT_EQ(read().pageCount, 3);
    m_document.claimedPages = kMaxClaimedPages;
    EXPECT_EQ(read().pageCount, kMaxClaimedPages);
}

TEST_F(DocumentReaderTest, EndsWhenThereIsNoRoomForMoreText)
{
    m_document.pages = {"one two", "three four", "five"};
    ReadingLimits limits;
    limits.textBytes = 14;
    const DocumentContent content = read(limits);
    EXPECT_EQ(content.text.fullText(), "one two three");
    EXPECT_TRUE(content.text.isFull());
    EXPECT_EQ(content.pageCount, 3);
    EXPECT_EQ(m_document.readPages.size(), 2U);
}
} // namespace
