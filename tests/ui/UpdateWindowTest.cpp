#include "ui/UpdateWindow.h"

#include "support/UpdaterFixture.h"
#include "ui/GridFixture.h"
#include "ui/ReleaseNotesView.h"
#include "ui/UpdateTexts.h"
#include "ui/WindowFixture.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <gtest/gtest.h>

namespace
{
/// The window over an updater whose server the test keeps.
class UpdateWindowTest : public testing::Test, public UpdaterFixture
{
protected:
    UpdateWindowTest()
    {
        QLocale::setDefault(QLocale::c());
        onWindow = [this](Updater &updater, Updater::Attention attention) {
            showUpdateWindow(updater, attention, &parent);
            if (QWidget *shown = findWindow())
                window = shown;
        };
        parent.show();
    }
    ~UpdateWindowTest() override
    {
        if (window)
            window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QWidget *findWindow() { return parent.findChild<UpdateWindow *>(); }
    void check()
    {
        updater().checkForUpdates();
        waitWhile(UpdatePhase::Checking);
    }
    void waitWhile(UpdatePhase phase)
    {
        waitUntil(updater().phase, [phase](UpdatePhase now) { return now != phase; });
    }
    template <typename Widget> Widget *part(const char *name)
    {
        return window->findChild<Widget *>(QLatin1String(name));
    }
    QPushButton *button(const char *name) { return part<QPushButton>(name); }
    QString heading() { return part<QLabel>("updateHeading")->text(); }
    QString text() { return part<QLabel>("updateText")->text(); }
    /// The texts of the buttons that are shown, in the order of the keyboard.
    QStringList buttons()
    {
        QStringList texts;
        const auto all = window->findChildren<QPushButton *>();
        for (const QPushButton *each : all) {
            if (!each->isHidden())
                texts.append(each->text());
        }
        return texts;
    }

    QWidget parent;
    QPointer<QWidget> window;
};
} // namespace

TEST_F(UpdateWindowTest, SaysThatThereIsNoService)
{
    builtInFeed.clear();
    makeUpdater().checkForUpdates();
    EXPECT_EQ(heading(), u"No update service is configured");
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("Close")});
    EXPECT_TRUE(part<QCheckBox>("dailyUpdates")->isHidden());
}

TEST_F(UpdateWindowTest, SaysThatItLooks)
{
    offer({.version = "1.0"});
    Hold hold(*this);
    updater().checkForUpdates();
    EXPECT_EQ(heading(), u"Looking for updates…");
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("Cancel")});
    EXPECT_EQ(part<QProgressBar>("updateProgress")->maximum(), 0);
}

TEST_F(UpdateWindowTest, ClosesWhenTheCheckIsCancelled)
{
    offer({.version = "1.0"});
    Hold hold(*this);
    updater().checkForUpdates();
    QTest::keyClick(window, Qt::Key_Escape);
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(updater().phase.value(), UpdatePhase::Idle);
    EXPECT_FALSE(window && window->isVisible());
}

TEST_F(UpdateWindowTest, SaysThatTheProgramIsUpToDate)
{
    offer({.version = "1.0"});
    check();
    EXPECT_EQ(heading(), u"Quirevault is up to date");
    EXPECT_EQ(text(), u"You have version 1.0, the newest.");
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("Close")});
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(updater().phase.value(), UpdatePhase::Idle);
    EXPECT_FALSE(window && window->isVisible());
}

TEST_F(UpdateWindowTest, ShowsANewVersionWithItsNotes)
{
    offer({.length = "12400000", .more = "<description>Faster &amp; smaller.</description>"});
    check();
    EXPECT_EQ(heading(), u"Quirevault 2.0 is available");
    EXPECT_EQ(text(), u"You have version 1.0. The download has 12.4 MB.");
    auto *notes = part<ReleaseNotesView>("releaseNotes");
    EXPECT_TRUE(notes->isVisible());
    EXPECT_EQ(notes->toPlainText(), u"Faster & smaller.");
    EXPECT_EQ(buttons(), (QStringList{QStringLiteral("Skip This Version"), QStringLiteral("Later"),
                                      QStringLiteral("Download")}));
    EXPECT_TRUE(button("downloadUpdate")->isDefault());
}

TEST_F(UpdateWindowTest, LeavesNoRoomForNotesThatThereAreNone)
{
    offer({});
    check();
    EXPECT_TRUE(part<ReleaseNotesView>("releaseNotes")->isHidden());
}

TEST_F(UpdateWindowTest, SkipsTheVersion)
{
    offer({});
    check();
    button("skipUpdate")->click();
    EXPECT_EQ(updater().settings().skippedVersion()->text(), u"2.0");
    EXPECT_FALSE(window && window->isVisible());
}

TEST_F(UpdateWindowTest, PutsTheVersionOffByEscape)
{
    offer({});
    check();
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(updater().phase.value(), UpdatePhase::Idle);
    EXPECT_FALSE(updater().settings().skippedVersion());
}

TEST_F(UpdateWindowTest, DownloadsByReturnAndIsNotStoppedByAnother)
{
    offerPackage("package");
    check();
    Hold hold(*this);
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(heading(), u"Downloading Quirevault 2.0…");
    EXPECT_EQ(part<QLabel>("updateCount")->text(), u"0 bytes of 7 bytes");
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("Cancel")});
    QTest::keyClick(window, Qt::Key_Return);
    hold.release();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(updater().phase.value(), UpdatePhase::Downloaded);
}

TEST_F(UpdateWindowTest, ShowsHowFarADownloadIs)
{
    offerPackage(QByteArray(2'000'000, 'p'));
    check();
    Hold hold(*this);
    updater().download();
    updater().receivedBytes = 500'000;
    const auto *bar = part<QProgressBar>("updateProgress");
    EXPECT_EQ(bar->value() * 4, bar->maximum());
    EXPECT_EQ(part<QLabel>("updateCount")->text(), u"500.0 kB of 2.0 MB");
}

TEST_F(UpdateWindowTest, OffersTheVersionAgainAfterCancel)
{
    offerPackage("package");
    check();
    Hold hold(*this);
    updater().download();
    button("cancelUpdate")->click();
    EXPECT_FALSE(button("cancelUpdate")->isEnabled()) << "it was heard";
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(heading(), u"Quirevault 2.0 is available");
    EXPECT_TRUE(window->isVisible());
}

TEST_F(UpdateWindowTest, ComesBackWhenADownloadIsThere)
{
    offerPackage("package");
    check();
    Hold hold(*this);
    updater().download();
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window, nullptr);
    hold.release();
    waitWhile(UpdatePhase::Downloading);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(UpdateWindowTest, OffersThePackageThatIsThere)
{
    offerPackage("package");
    check();
    updater().download();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(heading(), u"Quirevault 2.0 is downloaded");
    EXPECT_TRUE(text().contains(updater().packagePath()));
    EXPECT_EQ(buttons(), (QStringList{QStringLiteral("Close"), QStringLiteral("Show in Folder"),
                                      QStringLiteral("Open Package")}));
    button("showPackage")->click();
    EXPECT_EQ(opener.shown.size(), 1);
    opener.problem = Error{QStringLiteral("FileOpener"), 2, QStringLiteral("No program"), {}};
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(opener.opened.size(), 1);
    EXPECT_TRUE(text().endsWith(u"No program"));
}

TEST_F(UpdateWindowTest, SaysWhatFailedAndTriesAgain)
{
    check();
    EXPECT_EQ(heading(), u"Updates could not be looked for");
    EXPECT_TRUE(text().contains(u"404"));
    EXPECT_EQ(buttons(), (QStringList{QStringLiteral("Close"), QStringLiteral("Try Again")}));
    offer({.version = "1.0"});
    QTest::keyClick(window, Qt::Key_Return);
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(heading(), u"Quirevault is up to date");
}

TEST_F(UpdateWindowTest, SaysThatADownloadWasRefused)
{
    offerPackage("package");
    answers["/package.deb"] = httpAnswer("200 OK", "pockage");
    check();
    updater().download();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(heading(), u"Quirevault 2.0 was not downloaded");
    EXPECT_EQ(text(), u"The package of version 2.0 was refused: its signature is not that of its makers");
}

TEST_F(UpdateWindowTest, SwitchesDailyChecksOffAndOn)
{
    offer({.version = "1.0"});
    check();
    auto *daily = part<QCheckBox>("dailyUpdates");
    EXPECT_TRUE(daily->isChecked());
    daily->click();
    EXPECT_FALSE(updater().settings().checksDaily());
    daily->click();
    EXPECT_TRUE(updater().settings().checksDaily());
}

TEST_F(UpdateWindowTest, IsOneWindowHoweverOftenItIsAskedFor)
{
    offer({});
    check();
    updater().checkForUpdates();
    EXPECT_EQ(parent.findChildren<UpdateWindow *>().size(), 1);
}

TEST_F(UpdateWindowTest, DismissesItsOfferWhenItGoesWithTheWindowBelow)
{
    offer({});
    check();
    delete window;
    EXPECT_EQ(updater().phase.value(), UpdatePhase::Idle);
}

TEST_F(UpdateWindowTest, TellsScreenReadersWhatItSays)
{
    QLocale::setDefault(QLocale::c());
    offer({.length = "12400000", .more = "<description>Faster.</description>"});
    check();
    EXPECT_EQ(window->windowTitle(), u"Software Update");
    EXPECT_EQ(window->accessibleDescription(),
              u"Quirevault 2.0 is available\nYou have version 1.0. The download has 12.4 MB.");
    const auto widgets = window->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (widget->isHidden() || widget->focusPolicy() == Qt::NoFocus || !widget->parentWidget()->isWindow())
            continue;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << widget->objectName().toStdString();
    }
}

TEST_F(UpdateWindowTest, IsUsedByKeyboardAlone)
{
    offer({.more = "<description>Faster.</description>"});
    check();
    QApplication::setActiveWindow(window);
    QSet<QString> reached;
    for (int i = 0; i < 8; ++i) {
        reached.insert(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, (QSet<QString>{QStringLiteral("releaseNotes"), QStringLiteral("dailyUpdates"),
                                      QStringLiteral("skipUpdate"), QStringLiteral("updateLater"),
                                      QStringLiteral("downloadUpdate")}));
}

TEST_F(UpdateWindowTest, MovesNothingWhereThatIsUnwelcome)
{
    const QString former = QApplication::style()->name();
    QApplication::setStyle(new MotionStyle(0));
    offer({.version = "1.0"});
    {
        Hold hold(*this);
        updater().checkForUpdates();
        EXPECT_TRUE(part<QProgressBar>("updateProgress")->isHidden());
    }
    waitWhile(UpdatePhase::Checking);
    QApplication::setStyle(former);
}
