#include "reader/Spring.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(Spring, StartsAtRestAndNeverOvershoots)
{
    EXPECT_EQ(springProgress(0s), 0);
    EXPECT_EQ(springProgress(-1s), 0);
    double before = 0;
    for (auto time = 10ms; time < 3s; time += 10ms) {
        const double now = springProgress(time);
        EXPECT_GT(now, before);
        EXPECT_LT(now, 1);
        before = now;
    }
}

TEST(Spring, FollowsTheCriticallyDampedCurve)
{
    // 1 - (1 + w t) e^(-w t) with w = 2 pi / 0.5 s.
    EXPECT_NEAR(springProgress(100ms), 0.357740, 1e-5);
    EXPECT_NEAR(springProgress(250ms), 0.821026, 1e-5);
    EXPECT_NEAR(springProgress(500ms), 0.986399, 1e-5);
}

TEST(Spring, HasSettledWhenAMotionEnds)
{
    EXPECT_GT(springProgress(kSpringSettles), 0.999);
}
