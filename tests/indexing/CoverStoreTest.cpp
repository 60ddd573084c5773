#include "indexing/CoverStore.h"

#include "support/FakePDFDocument.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <gtest/gtest.h>
#include <turbojpeg.h>

namespace
{
class CoverStoreTest : public testing::Test
{
protected:
    QString render()
    {
        const Cover cover = draw();
        const Result<void> written = m_covers.write(cover);
        EXPECT_TRUE(written) << written.error().message().toStdString();
        return cover.path;
    }
    Cover draw()
    {
        Result<Cover> cover = m_covers.drawCover(m_document, QStringLiteral("id"));
        EXPECT_TRUE(cover) << cover.error().message().toStdString();
        return cover ? *std::move(cover) : Cover();
    }
    QStringList files() const { return QDir(m_coversFolder).entryList(QDir::Files | QDir::Hidden); }

    TemporaryFolder m_folder;
    QString m_coversFolder = m_folder.path(QStringLiteral("data/covers"));
    CoverStore m_covers{m_coversFolder};
    std::unique_ptr<FakePDFDocument> m_owned = documentOf({"a page"});
    FakePDFDocument &m_document = *m_owned;
};

TEST_F(CoverStoreTest, WritesIntoAFolderWithPercentSignsInItsName)
{
    const QString folder = m_folder.path(QStringLiteral("50%2 of %1, %3"));
    const CoverStore covers(folder);
    const Result<Cover> cover = covers.drawCover(m_document, QStringLiteral("id"));
    ASSERT_TRUE(cover);
    EXPECT_EQ(cover->path, folder + u"/id.jpg");
    const Result<void> written = covers.write(*cover);
    ASSERT_TRUE(written) << written.error().message().toStdString();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList(QStringLiteral("id.jpg")));
}

TEST_F(CoverStoreTest, WritesTheFirstPageAsJpeg)
{
    m_document.picture = PDFBitmap{300, 200, QByteArray(300 * 200 * 3, '\xff')};
    const QString path = render();
    EXPECT_EQ(path, m_coversFolder + u"/id.jpg");
    EXPECT_EQ(m_document.thumbnailRequest, (FakePDFDocument::ThumbnailRequest{0, 300, 400}));
    EXPECT_EQ(files(), QStringList(QStringLiteral("id.jpg")));

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray jpeg = file.readAll();
    int width = 0, height = 0, subsampling = 0, colours = 0;
    tjhandle decoder = tjInitDecompress();
    EXPECT_EQ(tjDecompressHeader3(decoder, reinterpret_cast<const unsigned char *>(jpeg.constData()),
                                  static_cast<unsigned long>(jpeg.size()), &width, &height, &subsampling,
                                  &colours),
              0);
    tjDestroy(decoder);
    EXPECT_EQ(width, 300);
    EXPECT_EQ(height, 200);
}

TEST_F(CoverStoreTest, DrawsWithoutTouchingTheFolder)
{
    EXPECT_FALSE(draw().jpeg.isEmpty());
    EXPECT_FALSE(QFile::exists(m_coversFolder));
}

TEST_F(CoverStoreTest, ReplacesAnEarlierCover)
{
    render();
    const qint64 before = QFile(m_coversFolder + u"/id.jpg").size();
    m_document.picture = PDFBitmap{100, 100, QByteArray(100 * 100 * 3, '\x10')};
    render();
    EXPECT_NE(QFile(m_coversFolder + u"/id.jpg").size(), before);
    EXPECT_EQ(files().size(), 1);
}

TEST_F(CoverStoreTest, AnswersNoPathForADocumentWithoutPages)
{
    m_document.pages.clear();
    EXPECT_EQ(render(), u"");
    EXPECT_FALSE(m_document.thumbnailRequest);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CoverStoreTest, AnswersThePathOfAPageThatCannotBeDrawn)
{
    m_document.picture = pdfError(PDFErrorCode::PageUnavailable);
    EXPECT_EQ(render(), m_coversFolder + u"/id.jpg");
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CoverStoreTest, WritesNothingOfAPictureThatIsNotWhole)
{
    for (const PDFBitmap &picture :
         {PDFBitmap{}, PDFBitmap{3, 4, QByteArray(35, 'x')}, PDFBitmap{-3, -4, QByteArray(36, 'x')},
          PDFBitmap{1 << 16, 1 << 16, QByteArray(3, 'x')}}) {
        m_document.picture = picture;
        EXPECT_EQ(render(), m_coversFolder + u"/id.jpg");
        EXPECT_TRUE(files().isEmpty());
    }
}

TEST_F(CoverStoreTest, PassesOnAStop)
{
    m_document.picture = cancelledError();
    const Result<Cover> cover = m_covers.drawCover(m_document, QStringLiteral("id"));
    ASSERT_FALSE(cover);
    EXPECT_TRUE(isCancelled(cover.error()));
}

TEST_F(CoverStoreTest, NamesTheFileThatCannotBeWrittenAndTheCause)
{
    m_folder.write(QStringLiteral("data"), "a file where a folder should be");
    const Result<void> written = m_covers.write(draw());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error(),
              (Error{QStringLiteral("CoverStore"), ENOTDIR,
                     u"Failed to write the cover " + m_coversFolder + u"/id.jpg", qt_error_string(ENOTDIR)}));
}

TEST_F(CoverStoreTest, LeavesNoPartOfAFileBehindWhenWritingFails)
{
    ASSERT_TRUE(QDir().mkpath(m_coversFolder + u"/id.jpg"));
    const Result<void> written = m_covers.write(draw());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, EISDIR);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CoverStoreTest, RemovesACover)
{
    render();
    EXPECT_TRUE(m_covers.hasCover(QStringLiteral("id")));
    m_covers.removeCover(QStringLiteral("id"));
    EXPECT_FALSE(m_covers.hasCover(QStringLiteral("id")));
}
} // namespace
