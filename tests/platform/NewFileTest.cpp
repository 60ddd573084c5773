#include "platform/NewFile.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace
{
class NewFileTest : public testing::Test
{
protected:
    NewFile begin(const QString &folder = {})
    {
        Result<NewFile> file = NewFile::begin(folder.isEmpty() ? m_folder.path() : folder);
        EXPECT_TRUE(file) << file.error().message().toStdString();
        return std::move(*file);
    }
    QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    TemporaryFolder m_folder;
};

/// Keeps files from growing beyond a size, as a full disk does.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};
} // namespace

TEST_F(NewFileTest, TakesItsNameOnlyWhenItIsKept)
{
    NewFile file = begin();
    EXPECT_TRUE(file.write("one "));
    EXPECT_TRUE(file.write("two"));
    ASSERT_EQ(names().size(), 1);
    EXPECT_TRUE(names().first().startsWith(u'.')) << "it is hidden until then";
    const Result<QString> path = file.keepAs(QStringLiteral("a-1.0"), QStringLiteral(".deb"));
    ASSERT_TRUE(path) << path.error().message().toStdString();
    EXPECT_EQ(*path, m_folder.path(QStringLiteral("a-1.0.deb")));
    EXPECT_EQ(names(), QStringList{QStringLiteral("a-1.0.deb")});
    EXPECT_EQ(contentOf(*path), "one two");
}

TEST_F(NewFileTest, GoesWhenItIsNotKept)
{
    {
        NewFile file = begin();
        EXPECT_TRUE(file.write("half"));
    }
    EXPECT_EQ(names(), QStringList());
}

TEST_F(NewFileTest, StaysWhenItWasKept)
{
    {
        NewFile file = begin();
        const NewFile moved = std::move(file);
        NewFile kept = begin();
        EXPECT_TRUE(kept.keepAs(QStringLiteral("a"), {}));
    }
    EXPECT_EQ(names(), QStringList{QStringLiteral("a")});
}

TEST_F(NewFileTest, ReplacesNoFileThatHasTheName)
{
    m_folder.write(QStringLiteral("a.tar.gz"), "mine");
    m_folder.write(QStringLiteral("a (2).tar.gz"), "mine too");
    NewFile file = begin();
    EXPECT_TRUE(file.write("new"));
    const Result<QString> path = file.keepAs(QStringLiteral("a"), QStringLiteral(".tar.gz"));
    ASSERT_TRUE(path);
    EXPECT_EQ(*path, m_folder.path(QStringLiteral("a (3).tar.gz")));
    EXPECT_EQ(contentOf(*path), "new");
    EXPECT_EQ(contentOf(m_folder.path(QStringLiteral("a.tar.gz"))), "mine");
    EXPECT_EQ(contentOf(m_folder.path(QStringLiteral("a (2).tar.gz"))), "mine too");
}

TEST_F(NewFileTest, FollowsNoLinkThatHasTheName)
{
    const QString elsewhere = m_folder.path(QStringLiteral("elsewhere"));
    EXPECT_TRUE(QFile::link(elsewhere, m_folder.path(QStringLiteral("a"))));
    NewFile file = begin();
    EXPECT_TRUE(file.write("new"));
    EXPECT_EQ(file.keepAs(QStringLiteral("a"), {}).value_or(QString()),
              m_folder.path(QStringLiteral("a (2)")));
    EXPECT_FALSE(QFileInfo::exists(elsewhere));
}

TEST_F(NewFileTest, ReadsBackWhatWasWritten)
{
    NewFile file = begin();
    const QByteArray bytes(300'000, 'x');
    EXPECT_TRUE(file.write(bytes));
    EXPECT_TRUE(file.write("end"));
    EXPECT_EQ(file.sizeBytes(), bytes.size() + 3);
    const Result<QByteArray> content = file.content();
    ASSERT_TRUE(content);
    EXPECT_TRUE(*content == bytes + "end");
}

TEST_F(NewFileTest, NoticesThatAnotherProgramCutIt)
{
    NewFile file = begin();
    EXPECT_TRUE(file.write("whole"));
    EXPECT_TRUE(QFile::resize(m_folder.path(names().first()), 2));
    const Result<QByteArray> content = file.content();
    ASSERT_FALSE(content);
    EXPECT_EQ(content.error().code, EIO);
}

TEST_F(NewFileTest, MakesTheFolderThatIsMissing)
{
    NewFile file = begin(m_folder.path(QStringLiteral("new/folder")));
    EXPECT_TRUE(file.keepAs(QStringLiteral("a"), {}));
    EXPECT_TRUE(QFileInfo::exists(m_folder.path(QStringLiteral("new/folder/a"))));
}

TEST_F(NewFileTest, NamesTheFolderThatIsNone)
{
    const QString path = m_folder.write(QStringLiteral("file"), "in the way");
    const Result<NewFile> file = NewFile::begin(path);
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().domain, u"NewFile");
    EXPECT_TRUE(file.error().message().contains(path));
}

TEST_F(NewFileTest, SaysWhatKeepsItFromBeingWritten)
{
    NewFile file = begin();
    const FileSizeLimit limit(100);
    EXPECT_TRUE(file.write(QByteArray(60, 'x')));
    const Result<void> written = file.write(QByteArray(60, 'x'));
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().code, EFBIG);
    EXPECT_TRUE(written.error().message().contains(m_folder.path()));
}

TEST_F(NewFileTest, SaysThatItsFolderWentAway)
{
    const QString folder = m_folder.path(QStringLiteral("folder"));
    NewFile file = begin(folder);
    EXPECT_TRUE(QDir(folder).removeRecursively());
    const Result<QString> path = file.keepAs(QStringLiteral("a"), QStringLiteral(".deb"));
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().code, ENOENT);
    EXPECT_TRUE(path.error().message().contains(folder));
}

TEST_F(NewFileTest, RemovesWhatAKilledProgramLeft)
{
    const QString left = QStringLiteral(".quirevault-of-a-killed-program.part");
    m_folder.write(left, "half");
    const NewFile other = begin(); // it removes the one, and is no program's leaving itself
    const QStringList living = names();
    EXPECT_FALSE(living.contains(left));
    ASSERT_EQ(living.size(), 1);
    const NewFile next = begin();
    EXPECT_TRUE(names().contains(living.first()));
}
