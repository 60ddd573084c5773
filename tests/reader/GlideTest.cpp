#include "reader/Glide.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(Glide, StartsFastAndComesToRestAtItsTarget)
{
    Glide glide;
    glide.start({0, 0}, {0, 100}, 5s);
    const double early = glide.advance(5s + Glide::kDuration / 4).y();
    EXPECT_GT(early, 50);
    EXPECT_TRUE(glide.isMoving());
    EXPECT_EQ(glide.advance(5s + Glide::kDuration), QPointF(0, 100));
    EXPECT_FALSE(glide.isMoving());
}

TEST(Glide, FollowsWhatMovesBelowIt)
{
    Glide glide;
    glide.start({0, 0}, {0, 100}, 0s);
    glide.shift({0, 1000});
    EXPECT_EQ(glide.advance(0s), QPointF(0, 1000));
    EXPECT_EQ(glide.advance(1s), QPointF(0, 1100));
}
