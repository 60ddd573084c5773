#include "reader/NavigationHistory.h"

#include <gtest/gtest.h>

namespace
{
PDFPosition at(qint64 page)
{
    return {page, {10, 20.5}};
}
} // namespace

TEST(NavigationHistory, LeadsNowhereAtFirst)
{
    const NavigationHistory history;
    EXPECT_FALSE(history.canGoBack());
    EXPECT_FALSE(history.canGoForward());
}

TEST(NavigationHistory, GoesBackToThePositionLeftAndForwardAgain)
{
    NavigationHistory history;
    history.leave(at(1));
    history.leave(at(5));
    EXPECT_EQ(history.goBack(at(9)), at(5));
    EXPECT_EQ(history.goBack(at(5)), at(1));
    EXPECT_FALSE(history.canGoBack());
    EXPECT_EQ(history.goForward(at(1)), at(5));
    EXPECT_EQ(history.goForward(at(5)), at(9));
    EXPECT_FALSE(history.canGoForward());
}

TEST(NavigationHistory, RemembersWhereOneScrolledToBeforeGoingBack)
{
    NavigationHistory history;
    history.leave(at(1));
    history.goBack(at(7));
    EXPECT_EQ(history.goForward(at(2)), at(7));
    EXPECT_EQ(history.goBack(at(8)), at(2));
}

TEST(NavigationHistory, ForgetsTheWayForwardWithAJump)
{
    NavigationHistory history;
    history.leave(at(1));
    history.goBack(at(5));
    history.leave(at(1));
    EXPECT_FALSE(history.canGoForward());
    EXPECT_TRUE(history.canGoBack());
}

TEST(NavigationHistory, RemembersAPositionLeftTwiceOnce)
{
    NavigationHistory history;
    history.leave(at(1));
    history.leave(at(1));
    history.goBack(at(5));
    EXPECT_FALSE(history.canGoBack());
}

TEST(NavigationHistory, ForgetsTheOldestPositions)
{
    NavigationHistory history;
    const auto most = qint64(NavigationHistory::kMostPositions);
    for (qint64 page = 0; page <= most; ++page)
        history.leave(at(page));
    PDFPosition last;
    for (qint64 i = 0; i < most; ++i)
        last = history.goBack(at(0));
    EXPECT_EQ(last, at(1));
    EXPECT_FALSE(history.canGoBack());
}
