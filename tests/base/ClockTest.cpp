#include "base/Clock.h"

#include "support/Printing.h"

#include <QTimeZone>
#include <gtest/gtest.h>

TEST(ClockTest, StoredTimesAreUtcInWholeSecondsWithAZ)
{
    const QDateTime local({2025, 3, 7}, {16, 5, 9, 999}, Qt::OffsetFromUTC, 2 * 3600);
    EXPECT_EQ(toStoredTime(local), u"2025-03-07T14:05:09Z");
}

TEST(ClockTest, StoredTimesSortAsTimeSorts)
{
    const QDateTime earlier({2024, 12, 31}, {23, 59, 59}, Qt::UTC);
    EXPECT_LT(toStoredTime(earlier), toStoredTime(earlier.addSecs(1)));
}
