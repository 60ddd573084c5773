#include "ui/GridMotion.h"

#include "reader/Spring.h"

#include <gtest/gtest.h>

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
