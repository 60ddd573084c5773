// What is left when a file cannot be indexed, and what is said about it.
#include "IndexerFixture.h"

namespace
{
using PDFIndexerFailureTest = IndexerFixture;

bool isIndexerError(const Error &error, PDFIndexerErrorCode code, const QString &description)
{
    return error.domain == u"PDFIndexer" && error.code == static_cast<int>(code) &&
           error.description == description;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST_F(PDFIndexerFailureTest, SaysWhyADocumentDoesNotOpen)
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

TEST_F(PDFIndexerFailureTest, SaysWhyAFileDoesNotOpen)
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

TEST_F(PDFIndexerFailureTest, FailsWhenTheCoverCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkpath(m_folder.path(QStringLiteral("library"))));
    m_folder.write(QStringLiteral("library/covers"), "a file where the folder should be");
    const Result<Paper> paper = tryIndex(m_pdf);
    ASSERT_FALSE(paper);
    EXPECT_EQ(paper.error().domain, u"CoverStore");
    EXPECT_EQ(paper.error().code, ENOTDIR);
    EXPECT_EQ(count(QStringLiteral("papers")), 0);
}

TEST_F(PDFIndexerFailureTest, WritesNothingWhenStoppedAtTheStart)
{
    std::stop_source stop;
    stop.request_stop();
    const Result<Paper> paper = tryIndex(m_pdf, stop.get_token());
    ASSERT_FALSE(paper);
    EXPECT_TRUE(isCancelled(paper.error()));
}

TEST_F(PDFIndexerFailureTest, WritesNothingWhenStoppedAtAPage)
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

TEST_F(PDFIndexerFailureTest, WritesNothingWhenStoppedBeforeTheWrite)
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

TEST_F(PDFIndexerFailureTest, LeavesTheCoverOfAStoredPaperAloneWhenStopped)
{
    const Paper old = index(m_pdf);
    const QByteArray oldCover = contentOf(old.coverPath);
    ASSERT_FALSE(oldCover.isEmpty());
    m_folder.write(QStringLiteral("Paper.pdf"), "new content");
    std::stop_source stop;
    useDocument([&](FakePDFDocument &document) {
        document.pages = {"one"};
        document.picture = PDFBitmap{100, 100, QByteArray(100 * 100 * 3, '\x10')};
        document.onRead = [&](qint64) {
            stop.request_stop();
        };
    });
    EXPECT_FALSE(tryIndex(m_pdf, stop.get_token()));
    EXPECT_EQ(contentOf(old.coverPath), oldCover);
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

TEST_F(PDFIndexerFailureTest, KeepsTheLibraryWhenAStatementFails)
{
    const Paper old = index(m_pdf);
    m_folder.write(QStringLiteral("Paper.pdf"), "new content");
    useDocument([](FakePDFDocument &document) {
        document.pages = {"homotopy and knot theory"};
        document.picture = PDFBitmap{100, 100, QByteArray(100 * 100 * 3, '\x10')};
    });
    const QByteArray oldCover = contentOf(old.coverPath);
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
    EXPECT_NE(contentOf(old.coverPath), oldCover) << "the cover of the file as it is now was not kept";
    EXPECT_EQ(covers(), QStringList(old.id + u".jpg"));
}

TEST_F(PDFIndexerFailureTest, SaysThatAPaperIsMissingAfterItWasWritten)
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
