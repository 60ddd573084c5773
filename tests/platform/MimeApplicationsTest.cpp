#include "platform/MimeApplications.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace
{
/// A user's and a system's folders, and the programs for PDFs that they make.
class MimeApplicationsTest : public testing::Test
{
protected:
    void write(const QString &name, const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(m_folder.path(name)).path());
        m_folder.write(name, content);
    }
    void program(const QString &name, const QByteArray &more = {},
                 const QByteArray &types = "application/pdf;")
    {
        write(name + u".desktop",
              "[Desktop Entry]\nType=Application\nExec=true\nMimeType=" + types + "\n" + more);
    }
    /// A list with one line in the group.
    void list(const QString &name, const QByteArray &group, const QByteArray &ids)
    {
        write(name, "[" + group + "]\napplication/pdf=" + ids + "\n");
    }
    QStringList names() const
    {
        QStringList names;
        for (const DesktopEntry &entry : applicationsFor(u"application/pdf"_qs, folders()))
            names.append(entry.id.chopped(8));
        return names;
    }
    DesktopFolders folders() const
    {
        return {.config = {m_folder.path(u"config"_qs), m_folder.path(u"etc"_qs)},
                .data = {m_folder.path(u"home"_qs), m_folder.path(u"usr"_qs)},
                .desktops = {u"gnome"_qs}};
    }
    TemporaryFolder m_folder;
};
using Names = QStringList;
} // namespace

TEST_F(MimeApplicationsTest, AreNoneWhereNothingIsInstalled)
{
    EXPECT_EQ(names(), Names());
}

TEST_F(MimeApplicationsTest, AreThoseThatNameTheTypeUsersFirst)
{
    program(u"usr/applications/b"_qs);
    program(u"usr/applications/a"_qs);
    program(u"home/applications/z"_qs);
    program(u"usr/applications/text"_qs, {}, "text/plain;");
    EXPECT_EQ(names(), Names({u"z"_qs, u"a"_qs, u"b"_qs}));
}

TEST_F(MimeApplicationsTest, BeginWithTheDefaultsInTheOrderOfTheLists)
{
    for (const char *name : {"a", "b", "c", "d", "e"})
        program(u"usr/applications/" + QString::fromLatin1(name), {}, "text/plain;");
    list(u"usr/applications/mimeapps.list"_qs, "Default Applications", "e.desktop");
    list(u"home/applications/mimeapps.list"_qs, "Default Applications", "d.desktop");
    list(u"etc/mimeapps.list"_qs, "Default Applications", "c.desktop");
    list(u"config/mimeapps.list"_qs, "Default Applications", "missing.desktop;b.desktop;");
    list(u"config/gnome-mimeapps.list"_qs, "Default Applications", "a.desktop");
    EXPECT_EQ(names(), Names({u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs, u"e"_qs}));
}

TEST_F(MimeApplicationsTest, PutAddedAssociationsBeforeThoseThatNameTheType)
{
    program(u"usr/applications/a"_qs);
    program(u"usr/applications/b"_qs, {}, "text/plain;");
    list(u"config/mimeapps.list"_qs, "Added Associations", "b.desktop;");
    EXPECT_EQ(names(), Names({u"b"_qs, u"a"_qs}));
}

TEST_F(MimeApplicationsTest, LeaveOutWhatTheUserRemoved)
{
    program(u"usr/applications/a"_qs);
    program(u"usr/applications/b"_qs);
    list(u"config/mimeapps.list"_qs, "Removed Associations", "a.desktop;");
    EXPECT_EQ(names(), Names{u"b"_qs});
}

TEST_F(MimeApplicationsTest, KeepWhatTheUserAddedThoughTheSystemRemovesIt)
{
    program(u"usr/applications/a"_qs);
    list(u"config/mimeapps.list"_qs, "Added Associations", "a.desktop;");
    list(u"etc/mimeapps.list"_qs, "Removed Associations", "a.desktop;");
    EXPECT_EQ(names(), Names{u"a"_qs});
}

TEST_F(MimeApplicationsTest, TakeTheUsersEntryOfAProgram)
{
    program(u"usr/applications/a"_qs);
    program(u"usr/applications/b"_qs);
    program(u"usr/applications/c"_qs);
    program(u"home/applications/a"_qs, "Hidden=true\n");
    write(u"home/applications/b.desktop"_qs, "not an entry");
    program(u"home/applications/c"_qs, {}, "text/plain;");
    EXPECT_EQ(names(), Names());
}

TEST_F(MimeApplicationsTest, LeaveOutWhatIsNotInstalled)
{
    program(u"usr/applications/a"_qs, "TryExec=/no/such/program\n");
    program(u"usr/applications/b"_qs);
    list(u"config/mimeapps.list"_qs, "Default Applications", "a.desktop;");
    EXPECT_EQ(names(), Names{u"b"_qs});
}

TEST_F(MimeApplicationsTest, CallEntriesInFoldersByTheirPathWithDashes)
{
    program(u"usr/applications/kde/viewer"_qs);
    program(u"usr/applications/a"_qs);
    list(u"config/mimeapps.list"_qs, "Default Applications", "kde-viewer.desktop;");
    EXPECT_EQ(names(), Names({u"kde-viewer"_qs, u"a"_qs}));
}

TEST_F(MimeApplicationsTest, AreFoundThroughLinksButNotInCirclesOfThem)
{
    program(u"elsewhere/a"_qs);
    QDir().mkpath(m_folder.path(u"usr/applications"_qs));
    ASSERT_TRUE(QFile::link(m_folder.path(u"elsewhere/a.desktop"_qs),
                            m_folder.path(u"usr/applications/a.desktop"_qs)));
    ASSERT_TRUE(
        QFile::link(m_folder.path(u"usr/applications"_qs), m_folder.path(u"usr/applications/self"_qs)));
    EXPECT_EQ(names(), Names{u"a"_qs});
}

TEST(DesktopFolders, AreThoseOfTheEnvironment)
{
    const QByteArray before = qgetenv("XDG_CURRENT_DESKTOP");
    qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    const DesktopFolders folders = DesktopFolders::ofTheUser();
    before.isNull() ? qunsetenv("XDG_CURRENT_DESKTOP") : qputenv("XDG_CURRENT_DESKTOP", before);
    EXPECT_EQ(folders.desktops, QStringList({u"ubuntu"_qs, u"gnome"_qs}));
    EXPECT_FALSE(folders.config.isEmpty() || folders.data.isEmpty());
}
