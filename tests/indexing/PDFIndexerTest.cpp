// What becomes of a file whose content is new to the library.
#include "IndexerFixture.h"
#include "platform/Sha256.h"
#include "support/Words.h"

namespace
{
using PDFIndexerTest = IndexerFixture;

bool isIndexerError(const Error &error, PDFIndexerErrorCode code, const QString &description)
{
    return error.domain == u"PDFIndexer" && error.code == static_cast<int>(code) &&
           error.description == description;
}

TEST_F(PDFIndexerTest, StoresThePaperAndAnswersIt)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"On homotopy", "and knot theory"};
        document.itsAttributes = {QStringLiteral("Knots"), QStringLiteral("A. One")};
    });
    const QString id = sha256Hex(m_pdf.toUtf8()).left(32);
    const Paper expected{.id = id,
                         .title = QStringLiteral("Knots"),
                         .authors = QStringLiteral("A. One"),
                         .year = {},
                         .pageCount = 2,
                         .coverPath = m_coversFolder + u'/' + id + u".jpg",
                         .filepath = m_pdf,
                         .tags = {QStringLiteral("Topology")}};
    EXPECT_EQ(index(m_pdf), expected);
    EXPECT_EQ(m_library.paperById(id).result().value(), expected);

    const Row row = onlyRow(QStringLiteral("SELECT * FROM papers"));
    EXPECT_EQ(row.text(QLatin1String("date_indexed")), QStringLiteral("2025-03-07T14:05:09Z"));
    EXPECT_EQ(row.text(QLatin1String("content_hash")), sha256Hex("content of the paper"));
    EXPECT_EQ(row.integer(QLatin1String("chunk_count")), 2);
    EXPECT_FALSE(row.contains(QLatin1String("year")));
}

TEST_F(PDFIndexerTest, StoresOneFullTextRowAChunk)
{
    usePages({"first page", "", words(1, 700)});
    const Paper paper = index(m_pdf);
    const auto rows = m_db.query(QStringLiteral("SELECT * FROM fts_papers ORDER BY rowid")).result();
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->size(), 3);
    const auto expectRow = [&](qsizetype index, qint64 page, const QByteArray &content) {
        EXPECT_EQ(rows->at(index).text(QLatin1String("paper_id")), paper.id);
        EXPECT_EQ(rows->at(index).integer(QLatin1String("page_num")), page);
        EXPECT_EQ(rows->at(index).text(QLatin1String("content")), QString::fromUtf8(content));
    };
    expectRow(0, 1, "first page");
    expectRow(1, 3, words(1, 700));
    expectRow(2, 3, words(641, 700));
}

TEST_F(PDFIndexerTest, StoresAPaperWithoutText)
{
    usePages({"", " \n"});
    EXPECT_EQ(index(m_pdf).pageCount, 2);
    EXPECT_EQ(onlyRow(QStringLiteral("SELECT chunk_count FROM papers")).integer(QLatin1String("chunk_count")),
              0);
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 0);
}

TEST_F(PDFIndexerTest, StoresADocumentWithoutPages)
{
    usePages({});
    const Paper paper = index(m_pdf);
    EXPECT_EQ(paper.pageCount, 0);
    EXPECT_EQ(paper.coverPath, u"");
    EXPECT_TRUE(covers().isEmpty());
}

TEST_F(PDFIndexerTest, StoresNoTagsWhenNoTopicMatches)
{
    EXPECT_EQ(index(m_pdf).tags, QStringList());
    EXPECT_EQ(count(QStringLiteral("tags")), 0);
}

TEST_F(PDFIndexerTest, TakesTheFileNameWhenTheTitleIsEmpty)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"words"};
        document.itsAttributes.title = QStringLiteral("");
    });
    EXPECT_EQ(index(m_pdf).title, u"Paper");
    EXPECT_EQ(index(m_pdf).authors, u"");
}

TEST_F(PDFIndexerTest, PrefersTheBookRecordOfAnISBN)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"Contents", "ISBN 0-306-40615-2"};
        document.itsAttributes = {QStringLiteral("untitled"), QStringLiteral("admin")};
    });
    m_books.books.insert(
        QStringLiteral("0306406152"),
        {QStringLiteral("Learning"), QString(), 1987, {QStringLiteral("Machine learning -- Congresses")}});
    const Paper paper = index(m_pdf);
    EXPECT_EQ(paper.title, u"Learning");
    EXPECT_EQ(paper.authors, u"admin");
    EXPECT_EQ(paper.year, 1987);
    EXPECT_EQ(paper.tags, QStringList(QStringLiteral("AI & Machine Learning")));
}

TEST_F(PDFIndexerTest, KeepsWhatThePDFSaysWhenTheBookIsUnknown)
{
    usePages({"ISBN 0-306-40615-2"});
    const Paper paper = index(m_pdf);
    EXPECT_EQ(m_books.asked, QStringList(QStringLiteral("0306406152")));
    EXPECT_EQ(paper.title, u"Paper");
    EXPECT_FALSE(paper.year);
}

TEST_F(PDFIndexerTest, LooksForAnISBNInTheFirstThousandWords)
{
    usePages({words(1, 998), "ISBN 0306406152"});
    index(m_pdf);
    EXPECT_EQ(m_books.asked.size(), 1);
    usePages({words(1, 999), "ISBN 0306406152"});
    index(m_folder.write(QStringLiteral("other.pdf"), "other content"));
    EXPECT_EQ(m_books.asked.size(), 1);
}

TEST_F(PDFIndexerTest, ReplacesThePaperOfAPathWhoseContentIsNew)
{
    usePages({"old words", "homotopy and knot theory"});
    const Paper old = index(m_pdf);
    m_folder.write(QStringLiteral("Paper.pdf"), "new content");
    usePages({"new words"});
    const Paper renewed = index(m_pdf);
    EXPECT_EQ(renewed.id, old.id);
    EXPECT_EQ(renewed.tags, QStringList());
    EXPECT_EQ(count(QStringLiteral("papers")), 1);
    EXPECT_EQ(onlyRow(QStringLiteral("SELECT content FROM fts_papers")).text(QLatin1String("content")),
              QStringLiteral("new words"));
    EXPECT_EQ(covers(), QStringList(renewed.id + u".jpg"));
}

TEST_F(PDFIndexerTest, SaysWhyADocumentDoesNotOpen)
{
    m_makeDocument = [] {
        return pdfError(PDFErrorCode::NeedsPassword);
    };
    const Result<Paper> paper = tryIndex(m_pdf);
    ASSERT_FALSE(paper);
    EXPECT_TRUE(
        isIndexerError(paper.error(), PDFIndexerErrorCode::CannotLoad, QStringLiteral("Failed to load PDF")));
    EXPECT_EQ(paper.error().reason, pdfError(PDFErrorCode::NeedsPassword).message());
    EXPECT_EQ(count(QStringLiteral("papers")), 0);
}

TEST_F(PDFIndexerTest, SaysWhyAFileDoesNotOpen)
{
    const QMap<QString, QString> reasons{
        {m_folder.path(QStringLiteral("missing.pdf")), QStringLiteral("No such file or directory")},
        {m_folder.path(), QStringLiteral("it is a folder")}};
    for (auto expected = reasons.begin(); expected != reasons.end(); ++expected) {
        const Result<Paper> paper = tryIndex(expected.key());
        ASSERT_FALSE(paper);
        EXPECT_TRUE(isIndexerError(paper.error(), PDFIndexerErrorCode::CannotLoad,
                                   QStringLiteral("Failed to load PDF")));
        EXPECT_EQ(paper.error().reason, expected.value());
    }
}

TEST_F(PDFIndexerTest, FailsWhenTheCoverCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkpath(m_folder.path(QStringLiteral("library"))));
    m_folder.write(QStringLiteral("library/covers"), "a file where the folder should be");
    const Result<Paper> paper = tryIndex(m_pdf);
    ASSERT_FALSE(paper);
    EXPECT_EQ(paper.error().domain, u"CoverStore");
    EXPECT_EQ(paper.error().code, ENOTDIR);
    EXPECT_EQ(count(QStringLiteral("papers")), 0);
}

TEST_F(PDFIndexerTest, StoresAPaperWhosePictureCannotBeDrawn)
{
    useDocument([](FakePDFDocument &document) {
        document.pages = {"words"};
        document.picture = pdfError(PDFErrorCode::DeadlineExceeded);
    });
    const Paper paper = index(m_pdf);
    EXPECT_FALSE(paper.coverPath.isEmpty());
    EXPECT_FALSE(QFile::exists(paper.coverPath));
    EXPECT_EQ(count(QStringLiteral("fts_papers")), 1);
}

TEST_F(PDFIndexerTest, WritesNothingWhenStoppedAtTheStart)
{
    std::stop_source stop;
    stop.request_stop();
    const Result<Paper> paper = tryIndex(m_pdf, stop.get_token());
    ASSERT_FALSE(paper);
    EXPECT_TRUE(isCancelled(paper.error()));
}

TEST_F(PDFIndexerTest, WritesNothingWhenStoppedAtAPage)
{
    std::stop_source stop;
    useDocument([&](FakePDFDocument &document) {
        document.pages = {"one", "two", "three"};
        document.onRead = [&](qint64 page) {
            if (page == 1)
                stop.request_stop();
        };
    });
    const Result<Paper> paper = tryIndex(m_pdf, stop.get_token());
    ASSERT_FALSE(paper);
    EXPECT_TRUE(isCancelled(paper.error()));
    EXPECT_EQ(count(QStringLiteral("papers")), 0);
    EXPECT_TRUE(covers().isEmpty());
}

TEST_F(PDFIndexerTest, WritesNothingWhenStoppedBeforeTheWrite)
{
    std::stop_source stop;
    useDocument([&](FakePDFDocument &document) {
        document.pages = {"one"};
        document.onRead = [&](qint64) {
            stop.request_stop();
        };
    });
    const Result<Paper> paper = tryIndex(m_pdf, stop.get_token());
    ASSERT_FALSE(paper);
    EXPECT_TRUE(isCancelled(paper.error()));
    EXPECT_EQ(count(QStringLiteral("papers")), 0);
    EXPECT_TRUE(covers().isEmpty());
}

class PDFIndexerChangedFileTest : public IndexerFixture
{
protected:
    /// Indexes the file while `change` happens to it.
    Error errorOfChange(std::function<void()> change)
    {
        useDocument([&](FakePDFDocument &document) {
            document.pages = {"words"};
            document.onRead = [&](qint64) {
                change();
            };
        });
        const Result<Paper> paper = tryIndex(m_pdf);
        EXPECT_FALSE(paper);
        EXPECT_EQ(count(QStringLiteral("papers")), 0);
        EXPECT_TRUE(covers().isEmpty());
        return paper ? Error() : paper.error();
    }
    static bool saysChanged(const Error &error)
    {
        return isIndexerError(error, PDFIndexerErrorCode::ChangedWhileRead,
                              QStringLiteral("The file changed while it was read"));
    }
};

TEST_F(PDFIndexerChangedFileTest, StoresNothingOfAFileThatWasWrittenTo)
{
    EXPECT_TRUE(saysChanged(
        errorOfChange([&] { m_folder.write(QStringLiteral("Paper.pdf"), "longer content than before"); })));
}

TEST_F(PDFIndexerChangedFileTest, StoresNothingOfAFileThatVanished)
{
    EXPECT_TRUE(saysChanged(errorOfChange([&] { QFile::remove(m_pdf); })));
}

TEST_F(PDFIndexerChangedFileTest, StoresNothingOfAFileThatWasReplaced)
{
    EXPECT_TRUE(saysChanged(errorOfChange([&] {
        QFile::rename(m_pdf, m_folder.path(QStringLiteral("kept.pdf")));
        m_folder.write(QStringLiteral("Paper.pdf"), "content of the paper");
    })));
}

TEST_F(PDFIndexerTest, KeepsTheLibraryWhenAStatementFails)
{
    const Paper old = index(m_pdf);
    m_folder.write(QStringLiteral("Paper.pdf"), "new content");
    usePages({"homotopy and knot theory"});
    ASSERT_TRUE(m_db.execute(QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON tags "
                                            "BEGIN SELECT RAISE(ABORT, 'no tags today'); END"))
                    .result());
    const Result<Paper> paper = tryIndex(m_pdf);
    ASSERT_FALSE(paper);
    EXPECT_EQ(paper.error().domain, u"DatabaseManager");
    EXPECT_EQ(paper.error().description, u"no tags today");
    EXPECT_EQ(m_library.paperById(old.id).result().value(), old);
    EXPECT_EQ(onlyRow(QStringLiteral("SELECT content FROM fts_papers")).text(QLatin1String("content")),
              QStringLiteral("some words"));
}

TEST_F(PDFIndexerTest, SaysThatAPaperIsMissingAfterItWasWritten)
{
    ASSERT_TRUE(m_db.execute(QStringLiteral("CREATE TRIGGER vanish AFTER INSERT ON papers "
                                            "BEGIN DELETE FROM papers WHERE id = new.id; END"))
                    .result());
    const Result<Paper> paper = tryIndex(m_pdf);
    ASSERT_FALSE(paper);
    EXPECT_TRUE(isIndexerError(paper.error(), PDFIndexerErrorCode::MissingAfterWrite,
                               QStringLiteral("Failed to retrieve paper after indexing")));
}
} // namespace
