#include "store/PhrasePrefixes.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
QStringList prefixes(const char *expression)
{
    return phrasePrefixes(QString::fromUtf8(expression));
}
} // namespace

TEST(PhrasePrefixes, AreNamedInTheOrderOfThePhrases)
{
    EXPECT_EQ(prefixes("trans* matrix Energ*"), QStringList({"trans", "", "Energ"}));
    EXPECT_EQ(prefixes("\"of the\" OR \"e-mail\"* AND naïv*"), QStringList({"", "e-mail", "naïv"}));
    EXPECT_EQ(prefixes("(a* OR b) NOT c_1 *"), QStringList({"a", "", "c_1"}));
}

TEST(PhrasePrefixes, AreNamedInsideANearGroup)
{
    EXPECT_EQ(prefixes("NEAR(trans* \"x y\" m*, 10) AND z*"), QStringList({"trans", "", "m", "z"}));
    EXPECT_EQ(prefixes("near* NEAR(a b)"), QStringList({"near", "", ""}));
}

TEST(PhrasePrefixes, TakeQuotedOperatorsAndNumbersForWords)
{
    EXPECT_EQ(prefixes("\"AND\"* 10* \"say \"\"x\"\"\""), QStringList({"AND", "10", ""}));
}

TEST(PhrasePrefixes, AreUnknownInExpressionsOfOtherKinds)
{
    for (const char *expression :
         {"", "*", "^a*", "a + b*", "content : a*", "{content} : a*", "- content : a*", "a* \"b"})
        EXPECT_EQ(prefixes(expression), QStringList()) << expression;
}
