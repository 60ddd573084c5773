#include "search/FTSQueryBuilder.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

TEST(FTSQueryBuilder, BuildsTheExpressionThatAPersonMeans)
{
    const std::pair<QString, QString> examples[] = {
        {QStringLiteral("attention AND transformer*"), QStringLiteral("attention* AND transformer*")},
        {QStringLiteral("\"neural network\" or c++"), QStringLiteral("\"neural network\" OR c*")},
        {QStringLiteral("state-of-the-art"), QStringLiteral("\"state-of-the-art\"*")},
        {QStringLiteral("NEAR(graph neural, 5)"), QStringLiteral("NEAR(graph* neural*, 5)")},
        {QStringLiteral("near(“deep learning” gpu)"), QStringLiteral("NEAR(\"deep learning\" gpu*)")},
        {QStringLiteral("NEAR(a and b)"), QStringLiteral("NEAR(a* and* b*)")},
        {QStringLiteral("AND OR transformer NOT"), QStringLiteral("transformer*")},
        {QStringLiteral("NOT bert"), QStringLiteral("NOT bert*")},
        {QStringLiteral("(attention),"), QStringLiteral("attention*")},
        {QStringLiteral("x,y"), QStringLiteral("\"x,y\"*")},
        {QStringLiteral("foo_bar"), QStringLiteral("foo_bar*")},
        {QStringLiteral("\"\""), QString()},
        {QStringLiteral("\"   \" OR x"), QStringLiteral("x*")},
        {QStringLiteral("NEAR(, 3)"), QString()},
        {QStringLiteral("NEAR(a b"), QStringLiteral("\"NEAR(a\"* b*")},
        {QStringLiteral("ab\"cd"), QStringLiteral("abcd*")},
    };
    for (const auto &[text, expression] : examples)
        EXPECT_EQ(buildFTSQuery(text), expression) << text.toStdString();
}

TEST(FTSQueryBuilder, FindsNothingToSearchForInPunctuationAndBlanks)
{
    for (const char *text :
         {"", "   ", "\n\t", "...", "( ) - * ,", "\"", "“", "“”", "AND", "or NOT and", "NEAR()"})
        EXPECT_EQ(buildFTSQuery(QString::fromUtf8(text)), QString()) << text;
}

TEST(FTSQueryBuilder, MakesTermsOfAnUnclosedPhrase)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("\"neural network")), u"neural* network*");
}

TEST(FTSQueryBuilder, TakesTypographicQuotesForPlainOnes)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("“neural network” ‘single’")), u"\"neural network\" single*");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("”a”b“")), u"\"a\" b*");
}

TEST(FTSQueryBuilder, KeepsAPhraseExactlyAsTyped)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("\"  a  AND-b,\"")), u"\"  a  AND-b,\"");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("\"a\nb\"")), u"\"a\nb\"");
}

TEST(FTSQueryBuilder, TakesOperatorsInAnyCase)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("a and b Or c nOt d")), u"a* AND b* OR c* NOT d*");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("a AND NOT b")), u"a* AND NOT b*");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("android nothing")), u"android* nothing*");
}

TEST(FTSQueryBuilder, TakesNearWithoutAParenthesisForAWord)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("near miss")), u"near* miss*");
}

TEST(FTSQueryBuilder, TakesANearGroupWithBlanksBeforeItsParenthesis)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("NEAR  (a b)")), u"NEAR(a* b*)");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("Near\n(a b, 12 ) c")), u"NEAR(a* b*, 12) c*");
}

TEST(FTSQueryBuilder, TakesADistanceOnlyWhenItIsDigitsAtTheEnd)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("NEAR(a b, x)")), u"NEAR(a* b* x*)");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("NEAR(a, 5 b)")), u"NEAR(a* 5* b*)");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("NEAR(a, 5, 6)")), u"NEAR(a* 5*, 6)");
}

TEST(FTSQueryBuilder, FindsAGroupRightAfterAWordOnlyAtATokensStart)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("xNEAR(a b)")), u"\"xNEAR(a\"* b*");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("NEAR(a)b")), u"NEAR(a*) b*");
}

TEST(FTSQueryBuilder, RemovesOperatorsThatDangleButALeadingNot)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("or and NOT a OR NOT and")), u"NOT a*");
    EXPECT_EQ(buildFTSQuery(QStringLiteral("NOT")), QString());
}

TEST(FTSQueryBuilder, QuotesTermsWithPunctuationInside)
{
    for (const char *text : {"a-b", "a.b", "a/b", "a'b", "a’b", "a:b", "a+b", "a*b", "a\xc2\xa0z"})
        EXPECT_TRUE(needsQuoting(QString::fromUtf8(text))) << text;
    for (const char *text : {"ab", "a_b", "_", "a1", "naïve", "数学", "𝔸𝟙", "e\xcc\x81t\xc3\xa9", ""})
        EXPECT_FALSE(needsQuoting(QString::fromUtf8(text))) << text;
    EXPECT_TRUE(needsQuoting(QStringLiteral("a😀b")));
}

TEST(FTSQueryBuilder, TrimsAndKeepsCharactersBeyondTheBasicPlane)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("😀𝔸bc😀")), QStringLiteral("𝔸bc*"));
    EXPECT_EQ(buildFTSQuery(QStringLiteral("😀")), QString());
}

TEST(FTSQueryBuilder, SurvivesHalfASurrogatePair)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("a ") + QChar(0xD800) + u" b"), u"a* b*");
}

TEST(FTSQueryBuilder, SeparatesTokensAtUnicodeSpaces)
{
    EXPECT_EQ(buildFTSQuery(QStringLiteral("a\u00A0b\u3000c\u2003d")), u"a* b* c* d*");
}

// Each of these would take minutes if any step looked at the rest of the text again for every token.
TEST(FTSQueryBuilder, TakesAMegabyteOfAnything)
{
    constexpr int kMegabyte = 1 << 20;
    for (const char *piece :
         {"NEAR( ", "NEAR(", "near    ", "\"", "\" ", "a\" ", "x", " ", "AND ", ", 1", "((", "NEAR(a, 1) "}) {
        const QString part = QLatin1String(piece);
        const QString text = part.repeated(kMegabyte / part.size());
        EXPECT_LE(buildFTSQuery(text).size(), 3 * text.size()) << piece;
        EXPECT_LE(buildFTSQuery(u"NEAR(" + text + u')').size(), 3 * text.size()) << piece;
    }
    EXPECT_EQ(buildFTSQuery(QStringLiteral("x ").repeated(kMegabyte / 2)).size(), kMegabyte / 2 * 3 - 1);
}

TEST(NearClause, IsNothingWithoutATerm)
{
    EXPECT_EQ(buildNearClause(QString()), std::nullopt);
    EXPECT_EQ(buildNearClause(QStringLiteral(" , 7 ")), std::nullopt);
    EXPECT_EQ(buildNearClause(QStringLiteral("\" \" --")), std::nullopt);
    EXPECT_EQ(buildNearClause(QStringLiteral("a or \"b c\",9")), u"NEAR(a* or* \"b c\", 9)");
}
