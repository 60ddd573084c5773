#include "indexing/TopicTagger.h"

#include "platform/InputFile.h"
#include "support/FakeBookService.h"
#include "support/FakePDFDocument.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
const QString kTopology = QStringLiteral("Topology");
const QString kReading = QStringLiteral("_currently_reading");
const QString kUntagged = QStringLiteral("Untagged");
const QString kMine = QStringLiteral("my notes");

class TopicTaggerTest : public testing::Test
{
protected:
    QStringList retag(const QStringList &tags, std::stop_token stop = {})
    {
        const TopicTagger tagger(m_books, [this](const InputFile &, std::stop_token) {
            return Result<std::unique_ptr<PDFDocument>>(std::make_unique<FakePDFDocument>(m_document));
        });
        Paper paper;
        paper.title = m_title;
        paper.filepath = m_path;
        paper.tags = tags;
        return tagger.retagPaper(paper, stop);
    }

    TemporaryFolder m_folder;
    QString m_path = m_folder.write(QStringLiteral("paper.pdf"), "content");
    QString m_title = QStringLiteral("A paper");
    FakeBookService m_books;
    FakePDFDocument m_document;
};

TEST_F(TopicTaggerTest, ReplacesTopicsAndKeepsOtherTags)
{
    m_document.pages = {"nothing of note"};
    EXPECT_EQ(retag({kTopology, kReading, kMine}), QStringList({kReading, kMine}));
}

TEST_F(TopicTaggerTest, CallsAPaperWithoutVisibleTagsUntagged)
{
    m_document.pages = {"nothing of note"};
    EXPECT_EQ(retag({kReading}), QStringList({kReading, kUntagged}));
    EXPECT_EQ(retag({}), QStringList(kUntagged));
    EXPECT_EQ(retag({kUntagged}), QStringList(kUntagged));
}

TEST_F(TopicTaggerTest, AppendsTopicsBehindTheTagsThatStay)
{
    m_document.pages = {"homotopy", "knot theory"};
    EXPECT_EQ(retag({kUntagged, kMine}), QStringList({kMine, kTopology}));
}

TEST_F(TopicTaggerTest, LooksAtTheTitle)
{
    m_title = QStringLiteral("Notes on Homotopy");
    EXPECT_EQ(retag({}), QStringList(kTopology));
}

TEST_F(TopicTaggerTest, ReadsTheFirstFivePages)
{
    m_document.pages = {"homotopy", "", "", "", "knot theory"};
    EXPECT_EQ(retag({}), QStringList(kTopology));
    m_document.pages = {"homotopy", "", "", "", "", "knot theory"};
    EXPECT_EQ(retag({}), QStringList(kUntagged));
}

TEST_F(TopicTaggerTest, AsksForTheBookOfAnISBNOnTheFirstPages)
{
    m_document.pages = {"ISBN", "0-306-40615-2"};
    m_books.books.insert(QStringLiteral("0306406152"), {{}, {}, {}, {QStringLiteral("topology")}});
    EXPECT_EQ(retag({}), QStringList(kTopology));
}

TEST_F(TopicTaggerTest, LooksForAnISBNInTheFirst3000Characters)
{
    const QByteArray isbn = "ISBN 0306406152";
    m_document.pages = {QByteArray(3000 - isbn.size(), 'x') + isbn};
    retag({});
    EXPECT_EQ(m_books.asked.size(), 1);
    m_document.pages = {QByteArray(3000 - isbn.size() + 1, 'x') + isbn};
    retag({});
    EXPECT_EQ(m_books.asked.size(), 1);
}

TEST_F(TopicTaggerTest, ReadsPastPagesThatFail)
{
    m_document.pages = {"x", "homotopy", "x", "knot theory"};
    m_document.failingPages = {{0, pdfError(PDFErrorCode::PageUnavailable)},
                               {2, pdfError(PDFErrorCode::EngineFailed)}};
    EXPECT_EQ(retag({}), QStringList(kTopology));
}

TEST_F(TopicTaggerTest, LeavesTheTagsOfAPaperWhosePDFIsMissing)
{
    QFile::remove(m_path);
    EXPECT_EQ(retag({kTopology, kReading}), QStringList({kTopology, kReading}));
}

TEST_F(TopicTaggerTest, LeavesTheTagsOfAPaperThatDoesNotOpen)
{
    const TopicTagger tagger(
        m_books, [](const InputFile &, std::stop_token) { return pdfError(PDFErrorCode::Damaged); });
    Paper paper;
    paper.filepath = m_path;
    paper.tags = QStringList{kTopology};
    EXPECT_EQ(tagger.retagPaper(paper), paper.tags);
}

TEST_F(TopicTaggerTest, LeavesTheTagsWhenTheEngineIsMissing)
{
    m_document.pages = {"x", "homotopy"};
    m_document.failingPages = {{0, pdfError(PDFErrorCode::EngineFailed)}};
    m_document.restartAnswer = pdfError(PDFErrorCode::EngineMissing);
    EXPECT_EQ(retag({kTopology}), QStringList(kTopology));
}

TEST_F(TopicTaggerTest, LeavesTheTagsOnceStopped)
{
    std::stop_source stop;
    m_document.pages = {"nothing of note"};
    m_document.onRead = [&](qint64) {
        stop.request_stop();
    };
    EXPECT_EQ(retag({kTopology}, stop.get_token()), QStringList(kTopology));
}
} // namespace
