#include "search/ParsedQuery.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
ParsedQuery parsed(const char *text)
{
    return ParsedQuery(QString::fromUtf8(text));
}
} // namespace

TEST(ParsedQuery, SeparatesFiltersFromWords)
{
    const ParsedQuery query = parsed("author:smith title:deep attention");
    EXPECT_EQ(query.author, u"smith");
    EXPECT_EQ(query.title, u"deep");
    EXPECT_EQ(query.filename, std::nullopt);
    EXPECT_EQ(query.year, std::nullopt);
    EXPECT_EQ(query.fullText, u"attention");
    EXPECT_TRUE(query.hasFieldFilters());
}

TEST(ParsedQuery, TakesAQuotedValueWhole)
{
    EXPECT_EQ(parsed("title:\"deep learning\" x").title, u"deep learning");
    EXPECT_EQ(parsed("title:\"deep\nlearning").title, u"deep\nlearning") << "an open quote runs to the end";
    EXPECT_EQ(parsed("title:“deep learning” x").title, u"deep learning");
    EXPECT_EQ(parsed("title:deep learning").fullText, u"learning");
}

TEST(ParsedQuery, KeepsQuotesInFreeText)
{
    EXPECT_EQ(parsed("  “neural  network”\tgpu ").fullText, u"\"neural  network\" gpu");
    EXPECT_EQ(parsed("\"a: b\"").fullText, u"\"a: b\"");
}

TEST(ParsedQuery, KnowsEachKeyInAnyCase)
{
    EXPECT_EQ(parsed("TITLE:Ab").title, u"Ab");
    EXPECT_EQ(parsed("Author:Ab").author, u"Ab");
    EXPECT_EQ(parsed("authors:Ab").author, u"Ab");
    EXPECT_EQ(parsed("FileName:Ab").filename, u"Ab");
    EXPECT_EQ(parsed("file:Ab").filename, u"Ab");
    EXPECT_EQ(parsed("Year:7").year, 7);
}

TEST(ParsedQuery, KeepsTokensOfUnknownKeysAsTyped)
{
    EXPECT_EQ(parsed("https://a.b 10:30 foo:\"b c\"").fullText, u"https://a.b 10:30 foo:\"b c\"");
    EXPECT_FALSE(parsed("10:30").hasFieldFilters());
}

TEST(ParsedQuery, KeepsLaterColonsInTheValue)
{
    EXPECT_EQ(parsed("title:a:b").title, u"a:b");
}

TEST(ParsedQuery, TakesATokenThatBeginsWithAColonForAWord)
{
    EXPECT_EQ(parsed(":foo : x").fullText, u":foo : x");
}

TEST(ParsedQuery, DropsKeysWithoutAValue)
{
    EXPECT_EQ(parsed("author: title:\"\" foo: x"), parsed("x"));
}

TEST(ParsedQuery, ReadsYearsAsSignedIntegers)
{
    EXPECT_EQ(parsed("year:2019").year, 2019);
    EXPECT_EQ(parsed("year:+2019").year, 2019);
    EXPECT_EQ(parsed("year:-5").year, -5);
    EXPECT_EQ(parsed("year:9223372036854775807").year, 9223372036854775807);
    for (const char *text : {"year:abc", "year:20x", "year:9223372036854775808", "year:+", "year:--5",
                             "year:\" 7\"", "year:1.5", "year:0x10", "year:٢٠"}) {
        EXPECT_EQ(parsed(text), ParsedQuery()) << text;
    }
}

TEST(ParsedQuery, LetsALaterFilterReplaceAnEarlierOne)
{
    EXPECT_EQ(parsed("year:2019 year:abc").year, std::nullopt);
    EXPECT_EQ(parsed("title:a title:b").title, u"b");
    EXPECT_EQ(parsed("author:a authors:b").author, u"b");
}

TEST(ParsedQuery, IsEmptyForBlankText)
{
    EXPECT_EQ(parsed(""), ParsedQuery());
    EXPECT_EQ(parsed(" \n\t\u2003"), ParsedQuery());
    EXPECT_FALSE(ParsedQuery().hasFieldFilters());
}

TEST(ParsedQuery, TrimsTheFreeText)
{
    EXPECT_EQ(parsed("\" x ").fullText, u"\" x");
}
