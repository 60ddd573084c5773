#include "reader/ReaderLayout.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
constexpr QSize kScreen(1920, 1080);
} // namespace

TEST(ReaderLayout, RemembersAWindowAsLargeAsTheScreenAllows)
{
    EXPECT_EQ(ReaderLayout::windowSizeFrom(QStringLiteral("1200x700"), kScreen), QSize(1200, 700));
    EXPECT_EQ(ReaderLayout::windowSizeFrom(QStringLiteral("5000x700"), kScreen), QSize(1920, 700));
    EXPECT_EQ(ReaderLayout::windowSizeFrom(QStringLiteral("99999999999999x99999999999999"), kScreen),
              kScreen);
}

TEST(ReaderLayout, HasAUsualWindowWhereNoneIsRemembered)
{
    const QSize usual = ReaderLayout::windowSizeFrom(QString(), kScreen);
    EXPECT_GT(usual.width(), 600);
    for (const char *nonsense : {"1200", "x", "0x0", "-5x700", "700x-5", "1200xx700", "wide"})
        EXPECT_EQ(ReaderLayout::windowSizeFrom(QLatin1String(nonsense), kScreen), usual) << nonsense;
    EXPECT_EQ(ReaderLayout::windowSizeFrom(QString(), QSize(640, 480)), QSize(640, 480));
}

TEST(ReaderLayout, RemembersASidebarThatLeavesHalfTheScreen)
{
    EXPECT_EQ(ReaderLayout::sidebarWidthFrom(QStringLiteral("300"), kScreen), 300);
    EXPECT_EQ(ReaderLayout::sidebarWidthFrom(QStringLiteral("5000"), kScreen), 960);
    EXPECT_EQ(ReaderLayout::sidebarWidthFrom(QStringLiteral("3"), kScreen), 160);
    EXPECT_EQ(ReaderLayout::sidebarWidthFrom(QStringLiteral("wide"), kScreen), 260);
}

TEST(ReaderLayout, KeepsASidebarThatCanBeReadOnATinyScreen)
{
    EXPECT_EQ(ReaderLayout::sidebarWidthFrom(QStringLiteral("300"), QSize(240, 320)), 160);
}
