#include "updates/DottedVersion.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
DottedVersion version(const char *text)
{
    const auto parsed = DottedVersion::fromText(QLatin1String(text));
    EXPECT_TRUE(parsed) << text;
    return parsed.value_or(DottedVersion());
}
} // namespace

TEST(DottedVersion, ComparesNumbersAndNotTexts)
{
    EXPECT_LT(version("1.9"), version("1.10"));
    EXPECT_LT(version("9"), version("10"));
    EXPECT_LT(version("1.2.3"), version("1.2.12"));
    EXPECT_GT(version("2.0"), version("1.99.99"));
    EXPECT_LT(version("0.1.0"), version("0.1.1"));
}

TEST(DottedVersion, CountsMissingComponentsAsZero)
{
    EXPECT_EQ(version("1"), version("1.0.0"));
    EXPECT_LT(version("1"), version("1.0.1"));
    EXPECT_EQ(version("1.07"), version("1.7"));
    EXPECT_EQ(DottedVersion(), version("0.0"));
}

TEST(DottedVersion, KeepsItsText)
{
    EXPECT_EQ(version("1.0").text(), u"1.0");
}

TEST(DottedVersion, TakesNothingThatCannotBeCompared)
{
    for (const char *text : {"", ".", "1.", ".1", "1..2", "v1", "1.0-beta", "1,0", " 1", "1\n", "-1", "+1",
                             "1.x", "1234567890", "1.2.3.4.5.6.7.8.9", "٣.١", "../1", "1/2"})
        EXPECT_FALSE(DottedVersion::fromText(QString::fromUtf8(text))) << text;
}

TEST(DottedVersion, TakesTheLargestNumbers)
{
    EXPECT_LT(version("999999998"), version("999999999"));
    EXPECT_LT(version("1.2.3.4.5.6.7.8"), version("1.2.3.4.5.6.7.9"));
}
