#include "app/RestoreGuard.h"

#include "platform/Preferences.h"
#include "support/FakeClock.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

class RestoreGuardTest : public testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit()); }

    /// A program that restores, goes on for `time` and ends without a word.
    void crashAfter(std::chrono::seconds time)
    {
        RestoreGuard guard(m_preferences, m_clock);
        guard.restoring();
        m_clock.advance(time);
    }
    bool mustAsk() { return RestoreGuard(m_preferences, m_clock).mustAsk(); }

    TemporaryFolder m_folder;
    Preferences m_preferences;
    FakeClock m_clock;
};

TEST_F(RestoreGuardTest, AsksAfterTwoCrashesWithinAMinuteOfRestoring)
{
    EXPECT_FALSE(mustAsk());
    crashAfter(59s);
    EXPECT_FALSE(mustAsk());
    crashAfter(0s);
    EXPECT_TRUE(mustAsk());
}

TEST_F(RestoreGuardTest, HoldsACrashAMinuteLaterAgainstNobody)
{
    crashAfter(59s);
    crashAfter(60s);
    crashAfter(59s);
    EXPECT_FALSE(mustAsk());
}

TEST_F(RestoreGuardTest, StartsAnewAfterAnEndInGoodOrder)
{
    crashAfter(1s);
    RestoreGuard guard(m_preferences, m_clock);
    guard.restoring();
    guard.programEnds();
    crashAfter(1s);
    EXPECT_FALSE(mustAsk());
}

TEST_F(RestoreGuardTest, GoesOnAskingWhenNobodyAnswered)
{
    crashAfter(1s);
    crashAfter(1s);
    RestoreGuard(m_preferences, m_clock).programEnds();
    EXPECT_TRUE(mustAsk());
}
