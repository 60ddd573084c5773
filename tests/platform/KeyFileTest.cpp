#include "platform/KeyFile.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{
const QString kGroup = QStringLiteral("A");

QString valueOf(const QByteArray &line)
{
    return KeyFile::parse("[A]\nkey=" + line).text(kGroup, QStringLiteral("key"));
}
} // namespace

TEST(KeyFile, ReadsKeysOfTheirGroup)
{
    const KeyFile file = KeyFile::parse("# comment\n[A]\none = 1\n\n[B b]\none=2\n#two=3\n");
    EXPECT_EQ(file.text(kGroup, QStringLiteral("one")), u"1");
    EXPECT_EQ(file.text(QStringLiteral("B b"), QStringLiteral("one")), u"2");
    EXPECT_EQ(file.text(QStringLiteral("B b"), QStringLiteral("two")), QString());
    EXPECT_TRUE(file.hasGroup(kGroup));
    EXPECT_FALSE(file.hasGroup(QStringLiteral("C")));
}

TEST(KeyFile, ResolvesEscapes)
{
    EXPECT_EQ(valueOf("a\\sb\\tc\\nd\\\\e"), u"a b\tc\nd\\e");
    EXPECT_EQ(valueOf("\\\"q\\x\\"), u"\\\"q\\x\\");
}

TEST(KeyFile, SplitsListsAtSemicolons)
{
    const KeyFile file = KeyFile::parse("[A]\nkey=a;;b c;\n");
    EXPECT_EQ(file.list(kGroup, QStringLiteral("key")), QStringList({u"a"_qs, u"b c"_qs}));
    EXPECT_EQ(file.list(kGroup, QStringLiteral("other")), QStringList());
}

TEST(KeyFile, TakesOnlyTheWordTrueForTrue)
{
    EXPECT_TRUE(KeyFile::parse("[A]\nkey=true\n").flag(kGroup, QStringLiteral("key")));
    EXPECT_FALSE(KeyFile::parse("[A]\nkey=1\n").flag(kGroup, QStringLiteral("key")));
}

TEST(KeyFile, PassesOverWhatHasAnotherForm)
{
    const KeyFile file = KeyFile::parse("key=outside\n[A\nno equals\n=no key\n[A]\r\nkey=in\r\n\xff\xfe\n");
    EXPECT_EQ(file.text(kGroup, QStringLiteral("key")), u"in");
}

TEST(KeyFile, HasNothingOfAFileThatIsMissingOrHugeOrNoFile)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path(QStringLiteral("fifo")).toLocal8Bit().constData(), 0600), 0);
    folder.write(QStringLiteral("huge"), "[A]\nkey=in\n" + QByteArray(1024 * 1024, '#'));
    for (const QString &name : {u"fifo"_qs, u"huge"_qs, u"missing"_qs})
        EXPECT_FALSE(KeyFile::read(folder.path(name)).hasGroup(kGroup)) << name.toStdString();
    folder.write(QStringLiteral("right"), "[A]\n");
    EXPECT_TRUE(KeyFile::read(folder.path(QStringLiteral("right"))).hasGroup(kGroup));
}
