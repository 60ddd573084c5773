#include "platform/DesktopEntry.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QUrl>
#include <gtest/gtest.h>

namespace
{
/// Arguments that `exec` gives for `path`; nothing where the entry is refused.
std::optional<QStringList> argumentsOf(const QString &exec, const QString &path = QStringLiteral("/a/b.pdf"))
{
    const DesktopEntry entry{.id = u"v.desktop"_qs,
                             .path = u"/apps/v.desktop"_qs,
                             .name = u"The Viewer"_qs,
                             .icon = u"eye"_qs,
                             .exec = exec};
    const std::optional<ProgramCall> call = entry.callFor(path);
    return call ? std::optional(call->arguments) : std::nullopt;
}

using Arguments = QStringList;
} // namespace

TEST(DesktopEntry, IsReadFromItsFile)
{
    const TemporaryFolder folder;
    const QString path =
        folder.write(u"v.desktop"_qs,
                     "[Desktop Entry]\nType=Application\nName=V\nName[de]=W\nExec=true %f\n"
                     "TryExec=true\nPath=/tmp\nMimeType=application/pdf;image/png;\n"
                     "Terminal=true\nHidden=true\nDBusActivatable=true\n[Desktop Action x]\nExec=false\n");
    const auto entry = DesktopEntry::read(path, u"v.desktop"_qs);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, u"V");
    EXPECT_EQ(entry->exec, u"true %f");
    EXPECT_EQ(entry->mimeTypes, QStringList({u"application/pdf"_qs, u"image/png"_qs}));
    EXPECT_TRUE(entry->isHidden && entry->needsTerminal && entry->isDBusActivatable && entry->isInstalled());
    EXPECT_EQ(entry->callFor(u"/x"_qs)->workingFolder, u"/tmp");
}

TEST(DesktopEntry, IsNotReadFromAFileThatDescribesNoProgram)
{
    const TemporaryFolder folder;
    const QString path = folder.write(u"v.desktop"_qs, "[Desktop Entry]\nType=Link\nExec=true\n");
    EXPECT_FALSE(DesktopEntry::read(path, u"v.desktop"_qs));
    EXPECT_FALSE(DesktopEntry::read(folder.path(u"missing"_qs), u"missing"_qs));
}

TEST(DesktopEntry, IsNotInstalledWhereWhatItAsksToTryIsMissing)
{
    EXPECT_TRUE(DesktopEntry{.tryExec = u"true"_qs}.isInstalled());
    EXPECT_FALSE(DesktopEntry{.tryExec = u"/no/such/program"_qs}.isInstalled());
    EXPECT_FALSE(DesktopEntry{.tryExec = u"no-such-program"_qs}.isInstalled());
}

TEST(DesktopEntry, NamesTheProgramByItsAbsolutePath)
{
    const DesktopEntry entry{.exec = u"true"_qs};
    const auto call = entry.callFor(u"/a"_qs);
    ASSERT_TRUE(call);
    EXPECT_TRUE(call->program.startsWith(u'/') && call->program.endsWith(u"/true"));
}

TEST(DesktopEntry, ReplacesFieldCodes)
{
    EXPECT_EQ(argumentsOf(u"true %f"_qs), Arguments{u"/a/b.pdf"_qs});
    EXPECT_EQ(argumentsOf(u"true -x %F --"_qs), Arguments({u"-x"_qs, u"/a/b.pdf"_qs, u"--"_qs}));
    EXPECT_EQ(argumentsOf(u"true %U"_qs), Arguments{u"file:///a/b.pdf"_qs});
    EXPECT_EQ(argumentsOf(u"true --file=%f %% 100%%"_qs),
              Arguments({u"--file=/a/b.pdf"_qs, u"%"_qs, u"100%"_qs}));
    EXPECT_EQ(argumentsOf(u"true %i %c %k %u"_qs), Arguments({u"--icon"_qs, u"eye"_qs, u"The Viewer"_qs,
                                                              u"/apps/v.desktop"_qs, u"file:///a/b.pdf"_qs}));
}

TEST(DesktopEntry, LeavesOutCodesWithoutMeaning)
{
    EXPECT_EQ(argumentsOf(u"true %d %D %n %N %v %m %z %f %"_qs), Arguments({u"/a/b.pdf"_qs, u"%"_qs}));
}

TEST(DesktopEntry, GivesTheFileLastWhereTheCommandHasNoPlaceForIt)
{
    EXPECT_EQ(argumentsOf(u"true -x 100%%f"_qs), Arguments({u"-x"_qs, u"100%f"_qs, u"/a/b.pdf"_qs}));
}

TEST(DesktopEntry, PassesOddPathsWholeAndUnread)
{
    for (const QString &path :
         {u"/-rf"_qs, u"/a b/c  d.pdf"_qs, u"/it's \"so\".pdf"_qs, u"/%f%u%%.pdf"_qs, u"/a\nb.pdf"_qs,
          u"/$(touch x);`y`|&.pdf"_qs, u"/\\s\\\\.pdf"_qs, u"/ä€😀.pdf"_qs}) {
        EXPECT_EQ(argumentsOf(u"true -- %f end"_qs, path), Arguments({u"--"_qs, path, u"end"_qs}));
        const auto url = argumentsOf(u"true %u"_qs, path);
        ASSERT_TRUE(url && url->size() == 1);
        EXPECT_TRUE(url->first().startsWith(u"file:///"));
        EXPECT_EQ(QUrl(url->first()).toLocalFile(), path);
    }
}

TEST(DesktopEntry, KeepsQuotedWordsTogether)
{
    EXPECT_EQ(argumentsOf(u"\"true\" \"a b\" 'c d' \"\" \"e\\\"\\$\\\\f\" g\\ h %f"_qs),
              Arguments({u"a b"_qs, u"c d"_qs, u""_qs, u"e\"$\\f"_qs, u"g h"_qs, u"/a/b.pdf"_qs}));
}

TEST(DesktopEntry, GivesAScriptTheFileAsAWordOfItsOwn)
{
    EXPECT_EQ(argumentsOf(u"sh -c \"exec true \\\"\\$1\\\"\" viewer %f"_qs),
              Arguments({u"-c"_qs, u"exec true \"$1\""_qs, u"viewer"_qs, u"/a/b.pdf"_qs}));
}

TEST(DesktopEntry, IsRefusedWhereAShellWouldReadThePath)
{
    for (const QString &exec : {u"sh -c \"true %f\""_qs, u"sh -c 'true %u'"_qs, u"sh -c %f"_qs,
                                u"env A=b bash -l -xc -e true%f"_qs, u"\"%f\""_qs, u"%f"_qs})
        EXPECT_EQ(argumentsOf(exec), std::nullopt) << exec.toStdString();
}

TEST(DesktopEntry, IsRefusedWithoutACommandThatCanRun)
{
    for (const QString &exec : {u""_qs, u"   "_qs, u"\"true"_qs, u"true 'x"_qs, u"no-such-program %f"_qs,
                                u"/etc/passwd %f"_qs, u"%d"_qs, u"\"\" %f"_qs})
        EXPECT_EQ(argumentsOf(exec), std::nullopt) << exec.toStdString();
}
