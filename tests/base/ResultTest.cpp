#include "base/Result.h"

#include <QString>
#include <gtest/gtest.h>

namespace
{
const Error kRefused{QStringLiteral("Door"), 3, QStringLiteral("Refused"), {}};
}

TEST(ResultTest, HoldsAValue)
{
    const Result<int> result = 7;
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(*result, 7);
    EXPECT_EQ(result.value_or(1), 7);
}

TEST(ResultTest, HoldsAnError)
{
    const Result<int> result = kRefused;
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), kRefused);
    EXPECT_EQ(result.value_or(1), 1);
}

TEST(ResultTest, ThrowsWhenTheAbsentSideIsRead)
{
    const Result<int> failed = kRefused;
    EXPECT_THROW(static_cast<void>(failed.value()), std::bad_variant_access);
}

TEST(ResultTest, OfNothingIsASuccessOrAnError)
{
    EXPECT_TRUE(Result<void>().has_value());
    EXPECT_EQ(Result<void>(kRefused).error(), kRefused);
}

TEST(ErrorTest, MessageGivesTheReasonOnlyWhenThereIsOne)
{
    EXPECT_EQ(kRefused.message(), u"Refused");
    Error withReason = kRefused;
    withReason.reason = QStringLiteral("it is late");
    EXPECT_EQ(withReason.message(), u"Refused: it is late");
}

TEST(ErrorTest, CancellationIsToldFromOtherFailures)
{
    EXPECT_TRUE(isCancelled(cancelledError()));
    EXPECT_FALSE(isCancelled(kRefused));
}
