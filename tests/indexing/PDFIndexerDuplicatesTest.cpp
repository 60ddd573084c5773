// What becomes of a file whose content the library has already.
#include "IndexerFixture.h"

#include <latch>
#include <thread>

namespace
{
class PDFIndexerDuplicatesTest : public IndexerFixture
{
protected:
    /// Every document that is opened counts.
    void SetUp() override
    {
        m_openPDF = [this](const InputFile &, std::stop_token) {
            ++m_opened;
            return m_makeDocument();
        };
    }
    QString copyOfPaper(const QString &name)
    {
        EXPECT_TRUE(QFile::copy(m_pdf, m_folder.path(name)));
        return m_folder.path(name);
    }
    /// Indexes these files at the same moment, each of which is read before any is written.
    std::vector<Result<Paper>> indexTogether(const QStringList &paths)
    {
        std::latch read(paths.size());
        useDocument([&](FakePDFDocument &document) {
            document.pages = {"some words"};
            document.onRead = [&](qint64) {
                read.arrive_and_wait();
            };
        });
        std::vector<Result<Paper>> papers(static_cast<size_t>(paths.size()));
        std::vector<std::thread> jobs;
        for (qsizetype i = 0; i < paths.size(); ++i)
            jobs.emplace_back([&, i] { papers[static_cast<size_t>(i)] = tryIndex(paths[i]); });
        for (std::thread &job : jobs)
            job.join();
        return papers;
    }

    std::atomic<int> m_opened = 0;
};

TEST_F(PDFIndexerDuplicatesTest, AnswersTheStoredPaperOfTheSamePath)
{
    const Paper first = index(m_pdf);
    EXPECT_EQ(index(m_pdf), first);
    EXPECT_EQ(m_opened, 1);
    EXPECT_EQ(covers().size(), 1);
}

TEST_F(PDFIndexerDuplicatesTest, AnswersTheStoredPaperForACopyOfIt)
{
    const Paper first = index(m_pdf);
    EXPECT_EQ(index(copyOfPaper(QStringLiteral("Copy.pdf"))), first);
    EXPECT_EQ(count(QStringLiteral("papers")), 1);
    EXPECT_EQ(m_opened, 1);
}

TEST_F(PDFIndexerDuplicatesTest, FollowsAPaperThatWasMoved)
{
    const Paper first = index(m_pdf);
    ASSERT_TRUE(m_library.addTag(first.id, QStringLiteral("mine")).result());
    m_clock.advance(std::chrono::hours(1));
    const QString moved = m_folder.path(QStringLiteral("Moved.pdf"));
    ASSERT_TRUE(QFile::rename(m_pdf, moved));

    Paper expected = first;
    expected.filepath = moved;
    expected.tags = QStringList{QStringLiteral("mine")};
    EXPECT_EQ(index(moved), expected);
    EXPECT_EQ(m_opened, 1);
    const Row row = onlyRow(QStringLiteral("SELECT * FROM papers"));
    EXPECT_EQ(row.text(QLatin1String("date_indexed")), QStringLiteral("2025-03-07T14:05:09Z"));
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 1);
}

TEST_F(PDFIndexerDuplicatesTest, MakeOnePaperWhenSixJobsIndexThemAtTheSameMoment)
{
    QStringList paths{m_pdf};
    for (int i = 1; i < 6; ++i)
        paths.append(copyOfPaper(QStringLiteral("copy%1.pdf").arg(i)));
    const std::vector<Result<Paper>> papers = indexTogether(paths);
    ASSERT_EQ(count(QStringLiteral("papers")), 1);
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 1);
    for (const Result<Paper> &paper : papers) {
        ASSERT_TRUE(paper) << paper.error().message().toStdString();
        EXPECT_EQ(*paper, *papers.front());
    }
    EXPECT_EQ(covers(), QStringList(papers.front()->id + u".jpg"));
}

TEST_F(PDFIndexerDuplicatesTest, MakeOnePaperWhenOneFileIsIndexedTwiceAtTheSameMoment)
{
    const std::vector<Result<Paper>> papers = indexTogether({m_pdf, m_pdf});
    ASSERT_TRUE(papers[0] && papers[1]);
    EXPECT_EQ(*papers[0], *papers[1]);
    EXPECT_EQ(count(QStringLiteral("papers")), 1);
    EXPECT_EQ(covers().size(), 1);
}
TEST_F(PDFIndexerDuplicatesTest, MakeOnePaperEachWhenTwoProgramsIndexThemAtTheSameTime)
{
    QStringList paths;
    for (int i = 0; i < 40; ++i)
        paths.append(m_folder.write(QStringLiteral("paper%1.pdf").arg(i), QByteArray::number(i)));
    ASSERT_EQ(count(QStringLiteral("papers")), 0); // the library is made before the other program opens it
    DatabaseManager otherDb{m_db.dbPath()};
    NativeLibraryService otherLibrary{otherDb, m_publisher, m_bookmarkEvents};
    PDFIndexer other({otherDb, otherLibrary, m_books, m_covers, m_clock, m_openPDF});
    std::latch ready(2);
    const auto indexAll = [&](PDFIndexer indexer) {
        ready.arrive_and_wait();
        for (const QString &path : paths) {
            const Result<Paper> paper = indexer.indexFile(path);
            EXPECT_TRUE(paper) << paper.error().message().toStdString();
        }
    };
    std::thread otherProgram([&] { indexAll(other); });
    indexAll(indexer());
    otherProgram.join();
    EXPECT_EQ(count(QStringLiteral("papers")), 40);
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 40);
}
} // namespace
