#include "platform/Paths.h"

#include "support/Printing.h"

#include <QFileInfo>
#include <gtest/gtest.h>

TEST(Paths, FollowXdgDataHome)
{
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", "/somewhere/data");
    EXPECT_EQ(dataFolder(), QStringLiteral("/somewhere/data/Quirevault"));
    EXPECT_EQ(libraryDatabasePath(), QStringLiteral("/somewhere/data/Quirevault/library.db"));
    EXPECT_EQ(coversFolder(), QStringLiteral("/somewhere/data/Quirevault/covers"));
    EXPECT_EQ(sessionFilePath(), QStringLiteral("/somewhere/data/Quirevault/session.json"));
    before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
}

TEST(Paths, KnowWhereTheProgramIs)
{
    EXPECT_TRUE(QFileInfo(programFolder()).isAbsolute());
    EXPECT_TRUE(QFileInfo::exists(QString(programFolder() + u"/platform-tests")));
}

TEST(Paths, FindAProgramThatLiesBesideThisOne)
{
    EXPECT_EQ(companionProgram(QStringLiteral("platform-tests")),
              QString(programFolder() + u"/platform-tests"));
}

TEST(Paths, LookForOtherProgramsWhereTheyAreInstalled)
{
    const QString installed = QFileInfo(programFolder()).path() + u"/libexec/quirevault/no-such-program";
    EXPECT_EQ(companionProgram(QStringLiteral("no-such-program")), installed);
}

TEST(Paths, ShowPeopleTheirHomeFolderAsATilde)
{
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", "/home/ada");
    EXPECT_EQ(pathForPeople(QStringLiteral("/home/ada/a.pdf")), QStringLiteral("~/a.pdf"));
    EXPECT_EQ(pathForPeople(QStringLiteral("/home/adamant/a.pdf")), QStringLiteral("/home/adamant/a.pdf"));
    EXPECT_EQ(pathForPeople(QStringLiteral("/media/a.pdf")), QStringLiteral("/media/a.pdf"));
    qputenv("HOME", before);
}
