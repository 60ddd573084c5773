#include "platform/SystemSearchIndex.h"

#include <gtest/gtest.h>

namespace
{
TEST(NullSystemSearchIndex, TakesEverythingWithoutError)
{
    NullSystemSearchIndex index;
    int completions = 0;
    const auto completion = [&](const std::optional<Error> &error) {
        EXPECT_FALSE(error);
        ++completions;
    };
    index.indexItems({SearchableItem()}, completion);
    index.replaceItems({SearchableItem()}, completion);
    index.deleteItems({QStringLiteral("id")}, completion);
    EXPECT_EQ(completions, 3);
}
} // namespace
