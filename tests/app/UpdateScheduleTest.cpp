#include "app/UpdateSchedule.h"

#include "app/UpdateSettings.h"
#include "platform/Preferences.h"
#include "support/FakeClock.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{
class UpdateScheduleTest : public testing::Test
{
protected:
    UpdateScheduleTest()
    {
        qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
        start();
    }

    void start(const QString &feed = QStringLiteral("https://updates.example/feed.xml"))
    {
        schedule.reset();
        settings = std::make_unique<UpdateSettings>(preferences, feed);
        schedule = std::make_unique<UpdateSchedule>(*settings, clock, [this] {
            ++checks;
            settings->setLastCheck(clock.now());
        });
    }

    TemporaryFolder folder;
    Preferences preferences;
    FakeClock clock;
    int checks = 0;
    std::unique_ptr<UpdateSettings> settings;
    std::unique_ptr<UpdateSchedule> schedule;
};
} // namespace

TEST_F(UpdateScheduleTest, ChecksAMinuteAfterTheFirstStart)
{
    clock.advance(kFirstUpdateLook - 1ms);
    EXPECT_EQ(checks, 0);
    clock.advance(1ms);
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, ChecksOnceADay)
{
    clock.advance(kFirstUpdateLook);
    clock.advance(24h - 1ms);
    EXPECT_EQ(checks, 1);
    clock.advance(1ms);
    EXPECT_EQ(checks, 2);
    clock.advance(10 * 24h);
    EXPECT_EQ(checks, 12);
}

TEST_F(UpdateScheduleTest, RemembersTheLastCheckOverAnEndOfTheProgram)
{
    clock.advance(kFirstUpdateLook);
    start();
    clock.advance(23h);
    EXPECT_EQ(checks, 1);
    start();
    clock.advance(2h);
    EXPECT_EQ(checks, 2);
}

TEST_F(UpdateScheduleTest, CountsACheckThatSomebodyAskedFor)
{
    settings->setLastCheck(clock.now().addSecs(-60));
    clock.advance(23h);
    EXPECT_EQ(checks, 0);
}

TEST_F(UpdateScheduleTest, DoesNothingWhileItIsSwitchedOff)
{
    settings->setChecksDaily(false);
    clock.advance(48h);
    EXPECT_EQ(checks, 0);
    settings->setChecksDaily(true);
    clock.advance(kUpdateLookInterval);
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, DoesNothingWithoutAnAddress)
{
    start(QString());
    clock.advance(48h);
    EXPECT_EQ(checks, 0);
}

TEST_F(UpdateScheduleTest, ChecksWhenTheLastCheckLiesInTheFuture)
{
    settings->setLastCheck(clock.now().addYears(1));
    clock.advance(kFirstUpdateLook);
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, ChecksWhenNobodyCanTellWhenTheLastCheckWas)
{
    preferences.setText(QStringLiteral("lastUpdateCheckDate"), QStringLiteral("yesterday"));
    clock.advance(kFirstUpdateLook);
    EXPECT_EQ(checks, 1);
}

TEST_F(UpdateScheduleTest, EndsWithItsOwner)
{
    schedule.reset();
    EXPECT_FALSE(clock.hasPendingCalls());
}

TEST_F(UpdateScheduleTest, IsSwitchedOffByOnePreference)
{
    preferences.setText(QStringLiteral("checksForUpdatesDaily"), QStringLiteral("false"));
    EXPECT_FALSE(settings->checksDaily());
    preferences.setText(QStringLiteral("checksForUpdatesDaily"), QStringLiteral("true"));
    EXPECT_TRUE(settings->checksDaily());
}
