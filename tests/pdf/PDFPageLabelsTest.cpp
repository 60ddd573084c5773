#include "pdf/PDFPageLabels.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
using Style = PDFPageLabels::Style;

QString label(Style style, qint64 number, qint64 index = 0)
{
    return PDFPageLabels({{0, style, number, {}}}).label(index);
}
} // namespace

TEST(PDFPageLabels, ArePageNumbersWhereTheDocumentGivesNone)
{
    EXPECT_TRUE(PDFPageLabels().isEmpty());
    EXPECT_EQ(PDFPageLabels().label(0), QStringLiteral("1"));
    const PDFPageLabels late({{5, Style::LowerRoman, 1, {}}});
    EXPECT_FALSE(late.isEmpty());
    EXPECT_EQ(late.label(4), QStringLiteral("5"));
    EXPECT_EQ(late.label(5), QStringLiteral("i"));
}

TEST(PDFPageLabels, FollowTheirRanges)
{
    const PDFPageLabels labels({{0, Style::LowerRoman, 1, {}},
                                {4, Style::Decimal, 1, {}},
                                {10, Style::Decimal, 7, QStringLiteral("A-")},
                                {12, Style::None, 1, QStringLiteral("Cover")}});
    EXPECT_EQ(labels.label(3), QStringLiteral("iv"));
    EXPECT_EQ(labels.label(4), QStringLiteral("1"));
    EXPECT_EQ(labels.label(9), QStringLiteral("6"));
    EXPECT_EQ(labels.label(11), QStringLiteral("A-8"));
    EXPECT_EQ(labels.label(13), QStringLiteral("Cover"));
}

TEST(PDFPageLabels, CountInRomanNumerals)
{
    EXPECT_EQ(label(Style::LowerRoman, 1999), QStringLiteral("mcmxcix"));
    EXPECT_EQ(label(Style::UpperRoman, 444), QStringLiteral("CDXLIV"));
    EXPECT_EQ(label(Style::UpperRoman, 38), QStringLiteral("XXXVIII"));
}

TEST(PDFPageLabels, CountInLetters)
{
    EXPECT_EQ(label(Style::LowerLetters, 1), QStringLiteral("a"));
    EXPECT_EQ(label(Style::UpperLetters, 26), QStringLiteral("Z"));
    EXPECT_EQ(label(Style::UpperLetters, 27), QStringLiteral("AA"));
    EXPECT_EQ(label(Style::LowerLetters, 54), QStringLiteral("bbb"));
}

TEST(PDFPageLabels, NeverGrowWithoutMeasure)
{
    for (Style style : {Style::LowerRoman, Style::UpperRoman, Style::LowerLetters, Style::UpperLetters})
        EXPECT_EQ(label(style, 2'000'000'000, 5), QStringLiteral("2000000005"));
}
