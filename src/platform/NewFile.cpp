#include "platform/NewFile.h"

#include <QDir>
#include <QFile>
#include <QUuid>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace
{
constexpr int kMaxNames = 1000; ///< names tried before the folder counts as full. Chosen.

Error systemError(const QString &path, const QString &problem, int code = errno)
{
    return {QStringLiteral("NewFile"), code, path + problem, QString::fromLocal8Bit(std::strerror(code))};
}

/// Its descriptor; negative with errno set when there is a file already, or none can be made.
int createFile(const QString &path)
{
    // Readable by whom the user's umask lets: a program that installs packages may run as somebody else.
    return ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                  0666);
}

/// Removes what programs left behind that were killed; those that live hold a lock.
void removeAbandoned(const QString &folder)
{
    const QStringList names =
        QDir(folder).entryList({QStringLiteral(".quirevault-*.part")}, QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        const QByteArray path = QFile::encodeName(QString(folder + u'/' + name));
        const int file = ::open(path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
        if (file < 0)
            continue;
        if (::flock(file, LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.constData());
        ::close(file);
    }
}
} // namespace

Result<NewFile> NewFile::begin(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return Error{
            QStringLiteral("NewFile"), ENOTDIR, folder + u" is no folder and cannot be made one", {}};
    removeAbandoned(folder);
    const QString path =
        folder + u"/.quirevault-" + QUuid::createUuid().toString(QUuid::WithoutBraces) + u".part";
    const int descriptor = createFile(path);
    if (descriptor < 0)
        return systemError(folder, QStringLiteral(" cannot take a new file"));
    ::flock(descriptor, LOCK_EX | LOCK_NB); // where a file system knows none, only nothing is ever removed
    return NewFile(folder, path, descriptor);
}

NewFile::NewFile(const QString &folder, const QString &path, int descriptor)
    : m_folder(folder)
    , m_path(path)
    , m_descriptor(descriptor)
{
}

NewFile::NewFile(NewFile &&other) noexcept
    : m_folder(std::move(other.m_folder))
    , m_path(std::exchange(other.m_path, {}))
    , m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_sizeBytes(other.m_sizeBytes)
{
}

NewFile &NewFile::operator=(NewFile &&other) noexcept
{
    std::swap(m_folder, other.m_folder);
    std::swap(m_path, other.m_path);
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_sizeBytes, other.m_sizeBytes);
    return *this;
}

NewFile::~NewFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    if (!m_path.isEmpty())
        ::unlink(QFile::encodeName(m_path).constData());
}

Result<void> NewFile::write(const QByteArray &bytes)
{
    for (qsizetype written = 0; written < bytes.size();) {
        const ssize_t count =
            ::write(m_descriptor, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemError(m_path, QStringLiteral(" cannot be written"));
        written += count;
    }
    m_sizeBytes += bytes.size();
    return {};
}

Result<QByteArray> NewFile::content() const
{
    QByteArray bytes(m_sizeBytes, Qt::Uninitialized);
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count =
            ::pread(m_descriptor, bytes.data() + done, static_cast<size_t>(bytes.size() - done), done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) // it ends early when another program has cut it
            return systemError(m_path, QStringLiteral(" cannot be read back"), count < 0 ? errno : EIO);
        done += count;
    }
    return bytes;
}

Result<QString> NewFile::keepAs(const QString &baseName, const QString &ending)
{
    if (::fsync(m_descriptor) != 0)
        return systemError(m_path, QStringLiteral(" cannot be written"));
    for (int number = 1; number <= kMaxNames; ++number) {
        const QString counted = number == 1 ? baseName : QStringLiteral("%1 (%2)").arg(baseName).arg(number);
        const QString path = m_folder + u'/' + counted + ending;
        // Renaming replaces: so the name is taken first, by a file of our own. Not every file system can
        // rename without replacing.
        const int reserved = createFile(path);
        if (reserved < 0 && errno == EEXIST)
            continue;
        if (reserved < 0)
            return systemError(path, QStringLiteral(" cannot be made"));
        ::close(reserved);
        if (std::rename(QFile::encodeName(m_path).constData(), QFile::encodeName(path).constData()) != 0) {
            const Error error = systemError(path, QStringLiteral(" cannot be made"));
            ::unlink(QFile::encodeName(path).constData());
            return error;
        }
        m_path.clear();
        return path;
    }
    return systemError(m_folder + u'/' + baseName + ending, QStringLiteral(" has too many namesakes"),
                       EEXIST);
}
