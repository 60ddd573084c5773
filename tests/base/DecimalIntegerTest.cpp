#include "base/DecimalInteger.h"

#include <gtest/gtest.h>

TEST(DecimalInteger, ReadsDigitsWithAnOptionalSign)
{
    EXPECT_EQ(decimalInteger(QStringLiteral("2019")), 2019);
    EXPECT_EQ(decimalInteger(QStringLiteral("+2019")), 2019);
    EXPECT_EQ(decimalInteger(QStringLiteral("-5")), -5);
    EXPECT_EQ(decimalInteger(QStringLiteral("010")), 10);
}

TEST(DecimalInteger, RefusesEverythingElse)
{
    for (const char *text : {"", "+", "-", " 1", "1 ", "1.0", "0x7E3", "1e3", "٣", "99999999999999999999"})
        EXPECT_EQ(decimalInteger(QString::fromUtf8(text)), std::nullopt) << text;
}
