#include "desktop/ServiceStart.h"

#include "support/FakeClock.h"

#include <gtest/gtest.h>

class ServiceStartTest : public testing::Test
{
protected:
    FakeClock m_clock;
    bool m_hasWindow = false;
    bool m_hasEnded = false;
    std::unique_ptr<PendingCall> m_ending = endUnlessAWindowComes(
        m_clock, [this] { return m_hasWindow; }, [this] { m_hasEnded = true; });
};

TEST_F(ServiceStartTest, EndsAProgramThatNobodyAskedForAWindow)
{
    m_clock.advance(kServicePatience - std::chrono::milliseconds(1));
    EXPECT_FALSE(m_hasEnded);
    m_clock.advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(m_hasEnded);
}

TEST_F(ServiceStartTest, LeavesAProgramAloneThatHasAWindow)
{
    m_hasWindow = true;
    m_clock.advance(2 * kServicePatience);
    EXPECT_FALSE(m_hasEnded);
}
