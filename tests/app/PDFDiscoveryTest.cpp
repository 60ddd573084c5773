#include "app/PDFDiscovery.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

class PDFDiscoveryTest : public testing::Test
{
protected:
    QString add(const QString &name) const
    {
        QDir().mkpath(QFileInfo(m_folder.path(name)).path());
        return m_folder.write(name, "%PDF-");
    }
    static fs::path asPath(const QString &path) { return path.toStdString(); }
    DiscoveredPDFs discover(const QString &name = {}) const
    {
        return discoverPDFs({asPath(m_folder.path(name))});
    }

    TemporaryFolder m_folder;
};

TEST_F(PDFDiscoveryTest, FindsEveryPDFBelowAFolderHiddenOnesIncluded)
{
    const QStringList expected{add(QStringLiteral("b.pdf")), add(QStringLiteral(".hidden/c.pdf")),
                               add(QStringLiteral("sub/deep/a.pdf"))};
    const DiscoveredPDFs found = discover();
    EXPECT_EQ(found.paths, expected);
    EXPECT_TRUE(found.containsFolder);
    EXPECT_TRUE(found.problems.isEmpty());
}

TEST_F(PDFDiscoveryTest, CountsTheExtensionInAnyCaseAndNothingElse)
{
    const QString upper = add(QStringLiteral("UPPER.PDF"));
    add(QStringLiteral("trap.pdf.txt"));
    add(QStringLiteral("pdf"));
    add(QStringLiteral(".pdf"));
    EXPECT_EQ(discover().paths, QStringList{upper});
}

TEST_F(PDFDiscoveryTest, IgnoresAChosenFileThatIsNoPDFByName)
{
    add(QStringLiteral("notes.txt"));
    const DiscoveredPDFs found = discover(QStringLiteral("notes.txt"));
    EXPECT_TRUE(found.paths.isEmpty());
    EXPECT_TRUE(found.problems.isEmpty());
    EXPECT_FALSE(found.containsFolder);
}

TEST_F(PDFDiscoveryTest, SaysThatAChosenLocationDoesNotExist)
{
    const DiscoveredPDFs found = discover(QStringLiteral("gone.pdf"));
    EXPECT_TRUE(found.paths.isEmpty());
    EXPECT_EQ(found.problems.keys(), QStringList{m_folder.path(QStringLiteral("gone.pdf"))});
}

TEST_F(PDFDiscoveryTest, EndsInFoldersWithLinkLoops)
{
    const QString paper = add(QStringLiteral("sub/a.pdf"));
    ASSERT_EQ(symlink("..", m_folder.path(QStringLiteral("sub/up")).toLocal8Bit().constData()), 0);
    ASSERT_EQ(symlink("self", m_folder.path(QStringLiteral("self")).toLocal8Bit().constData()), 0);
    EXPECT_EQ(discover().paths, QStringList{paper});
}

TEST_F(PDFDiscoveryTest, NamesOddItemsByTheirNameForTheReaderToRefuse)
{
    QDir(m_folder.path()).mkdir(QStringLiteral("folder.pdf"));
    ASSERT_EQ(mkfifo(m_folder.path(QStringLiteral("pipe.pdf")).toLocal8Bit().constData(), 0600), 0);
    ASSERT_EQ(symlink("nowhere", m_folder.path(QStringLiteral("dangling.pdf")).toLocal8Bit().constData()), 0);
    const QStringList expected{m_folder.path(QStringLiteral("dangling.pdf")),
                               m_folder.path(QStringLiteral("folder.pdf")),
                               m_folder.path(QStringLiteral("pipe.pdf"))};
    EXPECT_EQ(discover().paths, expected);
}

TEST_F(PDFDiscoveryTest, FollowsALinkToAFolderThatWasChosenItself)
{
    add(QStringLiteral("real/a.pdf"));
    ASSERT_EQ(symlink("real", m_folder.path(QStringLiteral("link")).toLocal8Bit().constData()), 0);
    EXPECT_EQ(discover(QStringLiteral("link")).paths,
              QStringList{m_folder.path(QStringLiteral("link/a.pdf"))});
}

TEST_F(PDFDiscoveryTest, KeepsNamesWithLineBreaksQuotesAndEmoji)
{
    const QString odd = add(QStringLiteral("it's \"new\"\nline 🧪.pdf"));
    EXPECT_EQ(discover().paths, QStringList{odd});
}

TEST_F(PDFDiscoveryTest, RefusesANameThatIsNotUtf8InsteadOfChangingIt)
{
    const std::string raw = m_folder.path().toStdString() + "/caf\xE9.pdf";
    ASSERT_EQ(mknod(raw.c_str(), S_IFREG | 0600, 0), 0);
    const DiscoveredPDFs found = discover();
    EXPECT_TRUE(found.paths.isEmpty());
    EXPECT_EQ(found.problems.value(m_folder.path(QStringLiteral("caf\\xe9.pdf"))),
              u"The file name is not valid UTF-8");
    EXPECT_EQ(unlink(raw.c_str()), 0); // Qt, whose folder this is, cannot name it
}

TEST_F(PDFDiscoveryTest, SaysWhereAPathIsTooLongToFollow)
{
    const std::string name(200, 'd');
    const int top = open(m_folder.path().toLocal8Bit().constData(), O_PATH | O_CLOEXEC);
    int folder = top;
    for (int depth = 0; depth < 30; ++depth) { // 6,000 bytes, beyond what a path may have
        ASSERT_EQ(mkdirat(folder, name.c_str(), 0700), 0);
        const int below = openat(folder, name.c_str(), O_PATH | O_CLOEXEC);
        if (folder != top)
            close(folder);
        folder = below;
    }
    close(folder);
    const DiscoveredPDFs found = discover();
    EXPECT_EQ(found.problems.values(), QStringList{QStringLiteral("File name too long")});
    fs::remove_all(asPath(m_folder.path()) / name);
    close(top);
}

TEST_F(PDFDiscoveryTest, GivesAbsolutePathsWithoutDots)
{
    const QString paper = add(QStringLiteral("sub/a.pdf"));
    EXPECT_EQ(discover(QStringLiteral("./sub/../sub/a.pdf")).paths, QStringList{paper});
    EXPECT_EQ(discover(QStringLiteral("sub/")).paths, QStringList{paper});
}

TEST_F(PDFDiscoveryTest, StopsWhenAsked)
{
    add(QStringLiteral("a.pdf"));
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(discoverPDFs({asPath(m_folder.path())}, stop.get_token()).paths.isEmpty());
}
