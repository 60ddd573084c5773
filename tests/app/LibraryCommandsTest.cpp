#include "app/LibraryCommands.h"

#include "support/Printing.h"
#include "support/ViewModelFixture.h"

#include <gtest/gtest.h>

namespace
{

/// Commands whose targets write their names down.
struct RecordingCommands {
    QStringList asked;
    LibraryCommands commands{{.showAbout = [this] { asked.append(QStringLiteral("about")); },
                              .checkForUpdates = [this] { asked.append(QStringLiteral("updates")); },
                              .openLibraryWindow = [this] { asked.append(QStringLiteral("library")); },
                              .quit =
                                  [this] {
                                      asked.append(QStringLiteral("quit"));
                                  }}};
};

QKeySequence control(Qt::Key key)
{
    return QKeyCombination(Qt::ControlModifier, key);
}

} // namespace

TEST(LibraryCommandsTest, HaveTheirTextsAndShortcuts)
{
    const RecordingCommands recording;
    const LibraryCommands &commands = recording.commands;
    EXPECT_EQ(commands.about->text(), QStringLiteral("About Quirevault"));
    EXPECT_EQ(commands.checkForUpdates->text(), QStringLiteral("Check for Updates…"));
    EXPECT_EQ(commands.library->text(), QStringLiteral("Library"));
    EXPECT_EQ(commands.findInLibrary->text(), QStringLiteral("Find in Library"));
    EXPECT_EQ(commands.importPDFs->text(), QStringLiteral("Import PDFs…"));
    EXPECT_EQ(commands.retagLibrary->text(), QStringLiteral("Retag Library…"));
    EXPECT_EQ(commands.library->shortcut(), control(Qt::Key_L));
    EXPECT_EQ(commands.findInLibrary->shortcut(), control(Qt::Key_F));
    EXPECT_EQ(commands.importPDFs->shortcut(), control(Qt::Key_I));
    EXPECT_TRUE(commands.retagLibrary->shortcut().isEmpty());
}

TEST(LibraryCommandsTest, SayInAToolbarWhatTheyDoThere)
{
    const RecordingCommands recording;
    EXPECT_EQ(recording.commands.importPDFs->iconText(), QStringLiteral("Import PDFs"));
    EXPECT_EQ(recording.commands.refresh->iconText(), QStringLiteral("Refresh library"));
}

TEST(LibraryCommandsTest, PassOnWhatConcernsTheApplication)
{
    RecordingCommands recording;
    recording.commands.about->trigger();
    recording.commands.checkForUpdates->trigger();
    recording.commands.library->trigger();
    recording.commands.quit->trigger();
    EXPECT_EQ(recording.asked, (QStringList{QStringLiteral("about"), QStringLiteral("updates"),
                                            QStringLiteral("library"), QStringLiteral("quit")}));
}

TEST(LibraryCommandsTest, AreEnabledAndDoNothingWhileNoLibraryWindowHasFocus)
{
    ViewModelFixture fixture;
    RecordingCommands recording;
    bool hasAskedForFiles = false;
    fixture.vm().setOpenPanel([&](auto) { hasAskedForFiles = true; });
    LibraryCommands &commands = recording.commands;
    for (QAction *action :
         {commands.findInLibrary, commands.importPDFs, commands.retagLibrary, commands.refresh}) {
        EXPECT_TRUE(action->isEnabled());
        action->trigger();
    }
    EXPECT_EQ(fixture.vm().searchFocusRequest.value(), 0);
    EXPECT_FALSE(hasAskedForFiles);
    EXPECT_FALSE(fixture.vm().isRetagging.value());
    EXPECT_FALSE(fixture.vm().isLoading.value());
    EXPECT_TRUE(recording.asked.isEmpty());
}

TEST(LibraryCommandsTest, WorkOnTheLibraryWhoseWindowHasFocus)
{
    ViewModelFixture fixture;
    fixture.addPaper(QStringLiteral("a"), QStringLiteral("Knots"));
    bool hasAskedForFiles = false;
    fixture.vm().setOpenPanel([&](auto) { hasAskedForFiles = true; });
    RecordingCommands recording;
    LibraryCommands &commands = recording.commands;
    commands.setFocusedLibrary(&fixture.vm());
    commands.findInLibrary->trigger();
    EXPECT_EQ(fixture.vm().searchFocusRequest.value(), 1);
    commands.importPDFs->trigger();
    EXPECT_TRUE(hasAskedForFiles);
    commands.refresh->trigger();
    waitUntil(fixture.vm().papers, [](const QList<Paper> &papers) { return papers.size() == 1; });
    commands.retagLibrary->trigger();
    waitUntil(fixture.vm().retagResult, [](const auto &result) { return result.has_value(); });
}

TEST(LibraryCommandsTest, ForgetALibraryThatIsGone)
{
    ViewModelFixture fixture;
    RecordingCommands recording;
    recording.commands.setFocusedLibrary(&fixture.vm());
    fixture.model.reset();
    EXPECT_EQ(recording.commands.focusedLibrary(), nullptr);
    recording.commands.findInLibrary->trigger();
}
