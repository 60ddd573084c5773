#include "ui/ReducedMotion.h"
#include "ui/GridFixture.h"

TEST(ReducedMotion, FollowsTheStyleOfTheDesktop)
{
    const QString former = QApplication::style()->name();
    QApplication::setStyle(new MotionStyle(0));
    EXPECT_TRUE(prefersReducedMotion());
    QApplication::setStyle(new MotionStyle(150));
    EXPECT_FALSE(prefersReducedMotion());
    QApplication::setStyle(former);
}
