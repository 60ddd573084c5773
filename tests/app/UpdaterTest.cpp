#include "app/Updater.h"

#include "support/UpdaterFixture.h"
#include "support/ViewModelFixture.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{
class UpdaterTest : public testing::Test, public UpdaterFixture
{
protected:
    void check()
    {
        updater().checkForUpdates();
        waitWhile(UpdatePhase::Checking);
    }
    void download()
    {
        updater().download();
        waitWhile(UpdatePhase::Downloading);
    }
    void waitWhile(UpdatePhase phase)
    {
        waitUntil(updater().phase, [phase](UpdatePhase now) { return now != phase; });
    }
    /// What a check that nobody asked for prints.
    std::string checkUnasked()
    {
        testing::internal::CaptureStdout();
        updater().checkInBackground();
        waitWhile(UpdatePhase::Checking);
        return testing::internal::GetCapturedStdout();
    }
    UpdatePhase phase() { return updater().phase; }
    QStringList packageNames() const
    {
        return QDir(packages).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};
using Attention = Updater::Attention;
} // namespace

TEST_F(UpdaterTest, CanCheckWhenThereIsAnAddress)
{
    EXPECT_TRUE(updater().canCheckForUpdates);
    EXPECT_EQ(phase(), UpdatePhase::Idle);
}

TEST_F(UpdaterTest, StartsNoCheckWithoutAnAddressAndSaysSo)
{
    builtInFeed.clear();
    makeUpdater();
    EXPECT_FALSE(updater().canCheckForUpdates);
    updater().checkForUpdates();
    EXPECT_EQ(phase(), UpdatePhase::NotConfigured);
    EXPECT_EQ(windowsShown, QList{Attention::Asked});
    EXPECT_FALSE(updater().settings().lastCheck());
    EXPECT_TRUE(server.requestLines().empty());
}

TEST_F(UpdaterTest, LooksWhereThePreferencesSayFirst)
{
    preferences.setText(QStringLiteral("QuirevaultUpdateFeedURL"),
                        server.address(QStringLiteral("/mine.xml")));
    check();
    EXPECT_EQ(server.requestLines().at(0), "GET /mine.xml HTTP/1.1");
}

TEST_F(UpdaterTest, LooksNowhereWhenThePreferenceIsEmpty)
{
    preferences.setText(QStringLiteral("QuirevaultUpdateFeedURL"), QString());
    EXPECT_FALSE(makeUpdater().canCheckForUpdates);
}

TEST_F(UpdaterTest, RefusesAnAddressThatIsNotSafe)
{
    preferences.setText(QStringLiteral("QuirevaultUpdateFeedURL"),
                        QStringLiteral("http://192.0.2.1/feed.xml"));
    check();
    EXPECT_EQ(phase(), UpdatePhase::Failed);
    EXPECT_TRUE(updater().problem.value().contains(u"http://192.0.2.1/feed.xml"));
}

TEST_F(UpdaterTest, SaysThatTheProgramIsUpToDate)
{
    offer({.version = "1.0"});
    check();
    EXPECT_EQ(phase(), UpdatePhase::UpToDate);
    EXPECT_EQ(windowsShown, QList{Attention::Asked});
    EXPECT_TRUE(updater().canCheckForUpdates);
}

TEST_F(UpdaterTest, OffersANewVersion)
{
    offer({.more = "<description>Faster.</description>"});
    check();
    EXPECT_EQ(phase(), UpdatePhase::Available);
    EXPECT_EQ(updater().update().version.text(), u"2.0");
    EXPECT_EQ(updater().update().notes.text, u"Faster.");
}

TEST_F(UpdaterTest, SaysWhyACheckFailedAndChecksAgain)
{
    answers["/feed.xml"] = httpAnswer("200 OK", "<rss");
    check();
    EXPECT_EQ(phase(), UpdatePhase::Failed);
    EXPECT_FALSE(updater().hasDownloadFailed());
    EXPECT_TRUE(updater().problem.value().startsWith(u"The answer is not an update feed"));
    offer({});
    updater().tryAgain();
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(phase(), UpdatePhase::Available);
    EXPECT_EQ(updater().problem.value(), u"");
}

TEST_F(UpdaterTest, CannotCheckDuringACheck)
{
    offer({.version = "1.0"});
    Hold hold(*this);
    updater().checkForUpdates();
    EXPECT_EQ(phase(), UpdatePhase::Checking);
    EXPECT_FALSE(updater().canCheckForUpdates);
    updater().checkForUpdates(); // only brings the window forward
    hold.release();
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(server.requestLines().size(), 1U);
    EXPECT_EQ(windowsShown.size(), 2);
}

TEST_F(UpdaterTest, StopsACheck)
{
    offer({});
    Hold hold(*this);
    updater().checkForUpdates();
    updater().cancel();
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(phase(), UpdatePhase::Idle);
    EXPECT_TRUE(updater().canCheckForUpdates);
}

TEST_F(UpdaterTest, StopsACheckThatNobodyWantsToSeeAnyMore)
{
    offer({});
    Hold hold(*this);
    updater().checkForUpdates();
    updater().dismiss();
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(phase(), UpdatePhase::Idle);
}

TEST_F(UpdaterTest, ChecksAnewWhenAskedBeforeAStoppedCheckHasEnded)
{
    offer({});
    Hold hold(*this);
    updater().checkForUpdates();
    updater().cancel();
    updater().checkForUpdates();
    hold.release();
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(phase(), UpdatePhase::Available);
}

TEST_F(UpdaterTest, IsSilentUnaskedWhenThereIsNothingNew)
{
    offer({.version = "1.0"});
    EXPECT_EQ(checkUnasked(), "");
    EXPECT_EQ(phase(), UpdatePhase::Idle);
    EXPECT_TRUE(windowsShown.isEmpty());
}

TEST_F(UpdaterTest, OnlyLogsAFailureOfACheckThatNobodyAskedFor)
{
    const std::string printed = checkUnasked();
    EXPECT_TRUE(printed.starts_with("Updater: Check failed: The server does not have it: status 404"))
        << printed;
    EXPECT_EQ(phase(), UpdatePhase::Idle);
    EXPECT_TRUE(windowsShown.isEmpty());
}

TEST_F(UpdaterTest, ShowsANewVersionUnaskedWithoutTakingTheFocus)
{
    offer({});
    checkUnasked();
    EXPECT_EQ(phase(), UpdatePhase::Available);
    EXPECT_EQ(windowsShown, QList{Attention::Unasked});
}

TEST_F(UpdaterTest, ShowsWhatARunningCheckComesToOnceSomebodyAsks)
{
    offer({.version = "1.0"});
    Hold hold(*this);
    updater().checkInBackground();
    updater().checkForUpdates();
    EXPECT_EQ(windowsShown, QList{Attention::Asked});
    hold.release();
    waitWhile(UpdatePhase::Checking);
    EXPECT_EQ(phase(), UpdatePhase::UpToDate);
    EXPECT_EQ(server.requestLines().size(), 1U);
}

TEST_F(UpdaterTest, DoesNotOfferASkippedVersionUnaskedAgain)
{
    offer({});
    checkUnasked();
    updater().skip();
    EXPECT_EQ(phase(), UpdatePhase::Idle);
    makeUpdater();
    checkUnasked();
    EXPECT_EQ(phase(), UpdatePhase::Idle);
    EXPECT_EQ(windowsShown.size(), 1);
}

TEST_F(UpdaterTest, OffersASkippedVersionToWhoAsks)
{
    updater().settings().setSkippedVersion(*DottedVersion::fromText(QStringLiteral("2.0")));
    offer({});
    check();
    EXPECT_EQ(phase(), UpdatePhase::Available);
}

TEST_F(UpdaterTest, OffersAVersionNewerThanTheSkippedOne)
{
    updater().settings().setSkippedVersion(*DottedVersion::fromText(QStringLiteral("2.0")));
    offer({.version = "2.0.1"});
    checkUnasked();
    EXPECT_EQ(phase(), UpdatePhase::Available);
}

TEST_F(UpdaterTest, OffersAgainWhatWasPutOff)
{
    offer({});
    checkUnasked();
    updater().dismiss();
    EXPECT_EQ(phase(), UpdatePhase::Idle);
    checkUnasked();
    EXPECT_EQ(windowsShown.size(), 2);
}

TEST_F(UpdaterTest, ShowsTheOfferAgainInsteadOfCheckingAgain)
{
    offer({});
    check();
    updater().checkForUpdates();
    EXPECT_EQ(phase(), UpdatePhase::Available);
    EXPECT_EQ(server.requestLines().size(), 1U);
    EXPECT_EQ(windowsShown.size(), 3) << "for the check, for the offer, and again";
}

TEST_F(UpdaterTest, DownloadsThePackage)
{
    const QByteArray package(300'000, 'p');
    offerPackage(package);
    check();
    download();
    ASSERT_EQ(phase(), UpdatePhase::Downloaded) << updater().problem.value().toStdString();
    EXPECT_EQ(updater().packagePath(), QString(packages + u"/quirevault-2.0.deb"));
    EXPECT_EQ(QFileInfo(updater().packagePath()).size(), package.size());
    EXPECT_EQ(windowsShown.last(), Attention::Unasked);
}

TEST_F(UpdaterTest, TellsHowFarADownloadIs)
{
    const QByteArray package(300'000, 'p');
    offerPackage(package);
    check();
    std::promise<void> seen;
    intercept = [&, half = seen.get_future().share()](const LoopbackServer::Connection &connection) {
        const QByteArray answer = httpAnswer("200 OK", package);
        connection.send(answer.left(answer.size() / 2));
        half.wait();
        connection.send(answer.mid(answer.size() / 2));
        return true;
    };
    updater().download();
    EXPECT_FALSE(updater().canCheckForUpdates);
    waitUntil(updater().receivedBytes, [](qint64 bytes) { return bytes > 100'000; });
    EXPECT_LE(updater().receivedBytes.value(), 150'100);
    seen.set_value();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(phase(), UpdatePhase::Downloaded);
}

TEST_F(UpdaterTest, GoesOnDownloadingWhenTheWindowIsClosed)
{
    offerPackage("package");
    check();
    Hold hold(*this);
    updater().download();
    updater().dismiss();
    EXPECT_EQ(phase(), UpdatePhase::Downloading);
    hold.release();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(phase(), UpdatePhase::Downloaded);
}

TEST_F(UpdaterTest, OffersTheVersionAgainAfterItsDownloadWasStopped)
{
    offerPackage("package");
    check();
    Hold hold(*this);
    updater().download();
    updater().cancel();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(phase(), UpdatePhase::Available);
    EXPECT_EQ(packageNames(), QStringList());
}

TEST_F(UpdaterTest, RefusesATamperedPackageAndTriesAgain)
{
    offerPackage("package");
    answers["/package.deb"] = httpAnswer("200 OK", "pockage");
    check();
    download();
    EXPECT_EQ(phase(), UpdatePhase::Failed);
    EXPECT_TRUE(updater().hasDownloadFailed());
    EXPECT_EQ(updater().problem.value(),
              u"The package of version 2.0 was refused: its signature is not that of its makers");
    EXPECT_EQ(packageNames(), QStringList());
    answers["/package.deb"] = httpAnswer("200 OK", "package");
    updater().tryAgain();
    waitWhile(UpdatePhase::Downloading);
    EXPECT_EQ(phase(), UpdatePhase::Downloaded);
}

TEST_F(UpdaterTest, StopsWhatRunsWhenItEnds)
{
    offerPackage("package");
    check();
    Hold hold(*this);
    updater().download();
    instance.reset();
    EXPECT_EQ(packageNames(), QStringList());
}

TEST_F(UpdaterTest, HandsThePackageToTheDesktop)
{
    offerPackage("package");
    check();
    download();
    updater().openPackage();
    updater().showPackageInFolder();
    EXPECT_EQ(opener.opened, QStringList{updater().packagePath()});
    EXPECT_EQ(opener.shown, QStringList{updater().packagePath()});
    EXPECT_EQ(phase(), UpdatePhase::Downloaded);
}

TEST_F(UpdaterTest, SaysWhyThePackageWasNotOpened)
{
    offerPackage("package");
    check();
    download();
    opener.problem =
        Error{QStringLiteral("FileOpener"), 2, QStringLiteral("The desktop has no program to open"), {}};
    updater().openPackage();
    EXPECT_EQ(updater().problem.value(), u"The desktop has no program to open");
    opener.problem.reset();
    updater().openPackage();
    EXPECT_EQ(updater().problem.value(), u"");
}
