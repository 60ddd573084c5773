#include "platform/InputFile.h"

#include <QFile>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace
{
Error openingError(const QString &path, int code, const QString &reason)
{
    return {QStringLiteral("InputFile"), code, path + u" cannot be read", reason};
}

Error systemError(const QString &path)
{
    const int code = errno;
    return openingError(path, code, QString::fromLocal8Bit(std::strerror(code)));
}

/// What a file is that cannot be read as a document; empty for a regular file.
QString oddity(const struct stat &status)
{
    switch (status.st_mode & S_IFMT) {
    case S_IFREG:
        return {};
    case S_IFDIR:
        return QStringLiteral("it is a folder");
    case S_IFIFO:
        return QStringLiteral("it is a named pipe");
    case S_IFSOCK:
        return QStringLiteral("it is a socket");
    case S_IFBLK:
    case S_IFCHR:
        return QStringLiteral("it is a device");
    default:
        return QStringLiteral("it is not a regular file");
    }
}

bool hasSameContentTimes(const struct stat &a, const struct stat &b)
{
    return a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
           a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

bool isSameFile(const struct stat &a, const struct stat &b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}
} // namespace

Result<InputFile> InputFile::open(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    // Before opening: merely opening a pipe or a device can block or do something.
    if (stat(name.constData(), &status) != 0)
        return systemError(path);
    if (const QString odd = oddity(status); !odd.isEmpty())
        return openingError(path, EINVAL, odd);
    // Without blocking, should a pipe have taken the place meanwhile.
    const int descriptor = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return systemError(path);
    InputFile file(path, descriptor, status);
    if (fstat(descriptor, &file.m_status) != 0)
        return systemError(path);
    if (const QString odd = oddity(file.m_status); !odd.isEmpty())
        return openingError(path, EINVAL, odd);
    return file;
}

InputFile::InputFile(const QString &path, int descriptor, const struct stat &status)
    : m_path(path)
    , m_descriptor(descriptor)
    , m_status(status)
{
}

InputFile::InputFile(InputFile &&other) noexcept
    : m_path(std::move(other.m_path))
    , m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_status(other.m_status)
{
}

InputFile &InputFile::operator=(InputFile &&other) noexcept
{
    std::swap(m_path, other.m_path);
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_status, other.m_status);
    return *this;
}

InputFile::~InputFile()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

qint64 InputFile::sizeBytes() const
{
    return m_status.st_size;
}

bool InputFile::hasChanged() const
{
    struct stat now = {};
    if (fstat(m_descriptor, &now) != 0 || !hasSameContentTimes(now, m_status))
        return true;
    return stat(QFile::encodeName(m_path).constData(), &now) != 0 || !isSameFile(now, m_status);
}
