#include "platform/InputFile.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
constexpr uid_t kNobody = 65534;

Error errorFor(const QString &path)
{
    const Result<InputFile> file = InputFile::open(path);
    EXPECT_FALSE(file) << path.toStdString();
    return file ? Error() : file.error();
}

/// Expects `path` to be refused by name, with `what` among the words.
void expectRefused(const QString &path, const QString &what)
{
    const Error error = errorFor(path);
    EXPECT_EQ(error.domain, QStringLiteral("InputFile"));
    EXPECT_EQ(error.code, EINVAL);
    EXPECT_TRUE(error.message().contains(path));
    EXPECT_TRUE(error.message().contains(what)) << error.message().toStdString();
}

void bindSocket(const QString &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    close(descriptor);
}
} // namespace

TEST(InputFile, OpensARegularFile)
{
    const TemporaryFolder folder;
    const QString path = folder.write(QStringLiteral("a.pdf"), "12345");
    const Result<InputFile> file = InputFile::open(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->path(), path);
    EXPECT_EQ(file->sizeBytes(), 5);
    EXPECT_FALSE(file->hasChanged());
    char byte = 0;
    EXPECT_EQ(pread(file->descriptor(), &byte, 1, 4), 1);
    EXPECT_EQ(byte, '5');
    EXPECT_NE(fcntl(file->descriptor(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(InputFile, OpensThroughALink)
{
    const TemporaryFolder folder;
    const QString target = folder.write(QStringLiteral("a.pdf"), "12345");
    ASSERT_TRUE(QFile::link(target, folder.path(QStringLiteral("b.pdf"))));
    EXPECT_TRUE(InputFile::open(folder.path(QStringLiteral("b.pdf"))));
}

TEST(InputFile, RefusesFoldersPipesSocketsAndDevices)
{
    const TemporaryFolder folder;
    QDir(folder.path()).mkdir(QStringLiteral("folder.pdf"));
    expectRefused(folder.path(QStringLiteral("folder.pdf")), QStringLiteral("folder"));
    const QString pipe = folder.path(QStringLiteral("pipe.pdf"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    expectRefused(pipe, QStringLiteral("pipe"));
    const QString socket = folder.path(QStringLiteral("socket.pdf"));
    bindSocket(socket);
    expectRefused(socket, QStringLiteral("socket"));
    expectRefused(QStringLiteral("/dev/zero"), QStringLiteral("device"));
}

TEST(InputFile, SaysWhatIsMissing)
{
    const TemporaryFolder folder;
    const QString path = folder.path(QStringLiteral("missing.pdf"));
    EXPECT_EQ(errorFor(path).code, ENOENT);
    EXPECT_TRUE(errorFor(path).message().contains(path));
    ASSERT_TRUE(QFile::link(path, folder.path(QStringLiteral("dangling.pdf"))));
    EXPECT_EQ(errorFor(folder.path(QStringLiteral("dangling.pdf"))).code, ENOENT);
}

TEST(InputFile, SaysWhatMayNotBeRead)
{
    const TemporaryFolder folder;
    const QString path = folder.write(QStringLiteral("secret.pdf"), "x");
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0), 0);
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    // Root may read everything; be somebody else meanwhile. For others this does nothing.
    const uid_t user = geteuid();
    (void)!seteuid(user == 0 ? kNobody : user);
    const Error error = errorFor(path);
    (void)!seteuid(user);
    EXPECT_EQ(error.code, EACCES);
    EXPECT_TRUE(error.message().contains(path));
}

TEST(InputFile, NoticesWriting)
{
    const TemporaryFolder folder;
    const QString path = folder.write(QStringLiteral("a.pdf"), "12345");
    const Result<InputFile> file = InputFile::open(path);
    QFile writing(path);
    ASSERT_TRUE(writing.open(QIODevice::Append));
    writing.write("6");
    writing.close();
    EXPECT_TRUE(file->hasChanged());
}

TEST(InputFile, NoticesReplacementAndKeepsTheOldContent)
{
    const TemporaryFolder folder;
    const QString path = folder.write(QStringLiteral("a.pdf"), "12345");
    const Result<InputFile> file = InputFile::open(path);
    const QString other = folder.write(QStringLiteral("b.pdf"), "abcde");
    ASSERT_EQ(rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()), 0);
    EXPECT_TRUE(file->hasChanged());
    char byte = 0;
    EXPECT_EQ(pread(file->descriptor(), &byte, 1, 0), 1);
    EXPECT_EQ(byte, '1');
}

TEST(InputFile, NoticesRemoval)
{
    const TemporaryFolder folder;
    const QString path = folder.write(QStringLiteral("a.pdf"), "12345");
    const Result<InputFile> file = InputFile::open(path);
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(file->hasChanged());
}

TEST(InputFile, ClosesItsDescriptorOnceWhenMoved)
{
    const TemporaryFolder folder;
    int descriptor = -1;
    {
        Result<InputFile> file = InputFile::open(folder.write(QStringLiteral("a.pdf"), "12345"));
        descriptor = file->descriptor();
        InputFile moved = *std::move(file);
        EXPECT_EQ(moved.descriptor(), descriptor);
        EXPECT_NE(fcntl(descriptor, F_GETFD), -1);
    }
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
}
