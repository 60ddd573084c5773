#include "indexing/CoverStore.h"

#include "indexing/JpegEncoder.h"
#include "pdf/PDFDocument.h"

#include <QDir>
#include <QFile>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{
Error writeError(const QString &path, int cause)
{
    return {QStringLiteral("CoverStore"), cause, u"Failed to write the cover " + path,
            qt_error_string(cause)};
}

/// A name beside `path` that no other thread or process uses.
QString temporaryNameFor(const QString &path)
{
    static std::atomic<unsigned> counter = 0;
    return QStringLiteral("%1.%2-%3.part").arg(path, QString::number(::getpid()), QString::number(counter++));
}

/// 0, or the errno of what failed.
int writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (count < 0 && errno != EINTR)
            return errno;
        bytes = bytes.sliced(std::max<ssize_t>(count, 0));
    }
    return 0;
}

int writeFile(const QByteArray &path, QByteArrayView bytes)
{
    const int descriptor =
        ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return errno;
    const int failure = writeAll(descriptor, bytes);
    const bool isClosed = ::close(descriptor) == 0;
    return failure != 0 || isClosed ? failure : errno;
}
} // namespace

CoverStore::CoverStore(const QString &folder)
    : m_folder(folder)
{
}

QString CoverStore::pathFor(const QString &paperId) const
{
    return m_folder + u'/' + paperId + u".jpg";
}

Result<Cover> CoverStore::drawCover(PDFDocument &document, const QString &paperId, std::stop_token stop) const
{
    if (document.pageCount() == 0)
        return Cover{QStringLiteral(""), {}};
    const Result<PDFBitmap> picture = document.thumbnail(0, kMaxWidth, kMaxHeight, std::move(stop));
    if (!picture && isCancelled(picture.error()))
        return picture.error();
    return Cover{pathFor(paperId), picture ? encodeJpeg(*picture, kQuality) : JpegData()};
}

// Not synced to disk: that would cost an import more than all its drawing, and a cover lost with the power
// only shows as the placeholder.
Result<void> CoverStore::write(const Cover &cover) const
{
    if (cover.jpeg.isEmpty())
        return {};
    QDir().mkpath(m_folder); // when it fails, so does the write, with the cause
    const QByteArray target = QFile::encodeName(cover.path);
    const QByteArray temporary = QFile::encodeName(temporaryNameFor(cover.path));
    int failure = writeFile(temporary, cover.jpeg.view());
    if (failure == 0 && ::rename(temporary.constData(), target.constData()) != 0)
        failure = errno;
    if (failure == 0)
        return {};
    ::unlink(temporary.constData());
    return writeError(cover.path, failure);
}

bool CoverStore::hasCover(const QString &paperId) const
{
    return QFile::exists(pathFor(paperId));
}

void CoverStore::removeCover(const QString &paperId) const
{
    QFile::remove(pathFor(paperId));
}
