#include "ui/Spring.h"
#include "ui/GridMotion.h"

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

TEST(GridMotion, LeavesCardsInPlaceWhileNothingMoves)
{
    const GridMotion motion(nullptr);
    const auto pose = motion.pose(QStringLiteral("a"), {10, 20});
    EXPECT_EQ(pose.topLeft, QPointF(10, 20));
    EXPECT_EQ(pose.opacity, 1);
}

TEST(GridMotion, CarriesACardFromItsOldPlaceToItsNew)
{
    GridMotion motion(nullptr);
    motion.startFrom({{QStringLiteral("a"), QPointF(0, 100)}});
    EXPECT_EQ(motion.pose(QStringLiteral("a"), {200, 0}).topLeft, QPointF(0, 100));
    motion.setCurrentTime(250);
    const auto pose = motion.pose(QStringLiteral("a"), {200, 0});
    EXPECT_NEAR(pose.topLeft.x(), 200 * 0.821026, 0.01);
    EXPECT_NEAR(pose.topLeft.y(), 100 - 100 * 0.821026, 0.01);
    EXPECT_EQ(pose.opacity, 1);
    motion.setCurrentTime(int(kSpringSettles.count()));
    EXPECT_FALSE(motion.isMoving());
    EXPECT_EQ(motion.pose(QStringLiteral("a"), {200, 0}).topLeft, QPointF(200, 0));
}

TEST(GridMotion, FadesInWhatWasNotThere)
{
    GridMotion motion(nullptr);
    motion.startFrom({{QStringLiteral("a"), QPointF(0, 100)}});
    EXPECT_EQ(motion.pose(QStringLiteral("b"), {5, 6}).opacity, 0);
    motion.setCurrentTime(250);
    EXPECT_EQ(motion.pose(QStringLiteral("b"), {5, 6}).topLeft, QPointF(5, 6));
    EXPECT_NEAR(motion.pose(QStringLiteral("b"), {5, 6}).opacity, 0.821026, 1e-5);
}

TEST(GridMotion, HasNothingToDoWhenNothingWasThere)
{
    GridMotion motion(nullptr);
    motion.startFrom({});
    EXPECT_FALSE(motion.isMoving());
}
