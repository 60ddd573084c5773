#include "cli/BookmarkMarkdown.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{

QString markdownOf(const QString &text, const QString &label = {}, const QString &title = QStringLiteral("T"))
{
    Paper paper;
    paper.title = title;
    return bookmarksAsMarkdown(
        paper, {{.id = {}, .paperId = {}, .text = text, .page = 7, .label = label, .createdAt = {}}});
}

} // namespace

TEST(BookmarkMarkdown, QuotesABookmarkUnderThePapersTitle)
{
    EXPECT_EQ(markdownOf(QStringLiteral("a passage"), {}, QStringLiteral("On knots")),
              u"# On knots\n\n> a passage\n>\n> — page 7");
}

TEST(BookmarkMarkdown, PutsALabelInBold)
{
    EXPECT_EQ(markdownOf(QStringLiteral("a"), QStringLiteral("main result")),
              u"# T\n\n> a\n>\n> — **main result**, page 7");
}

TEST(BookmarkMarkdown, KeepsTheLinesOfAPassageInsideItsQuote)
{
    EXPECT_EQ(markdownOf(QStringLiteral("one\r\n  two\n\nthree\n")),
              u"# T\n\n> one\n> two\n>\n> three\n>\n> — page 7");
}

TEST(BookmarkMarkdown, LeavesNothingOfATextToBeTakenForMarkup)
{
    EXPECT_EQ(markdownOf(QStringLiteral(R"(*a* [b](c) <d> `e` f_g & h\ $x$)"), QStringLiteral("**")),
              QStringLiteral("# T\n\n> \\*a\\* \\[b\\](c) \\<d\\> \\`e\\` f\\_g \\& h\\\\ \\$x\\$\n>\n> — "
                             "**\\*\\***, page 7"));
}

TEST(BookmarkMarkdown, LeavesNoLineToBeTakenForAHeadingAListOrARule)
{
    EXPECT_EQ(
        markdownOf(QStringLiteral("# a\n- b\n1. c\n23) d\n+ e\n===\na - b 1. #"), {},
                   QStringLiteral("# 1. T\n## more")),
        u"# \\# 1. T \\#\\# more\n\n> \\# a\n> \\- b\n> 1\\. c\n> 23\\) d\n> \\+ e\n> \\===\n> a - b 1. \\#"
        u"\n>\n> — page 7");
}

TEST(BookmarkMarkdown, SaysThatAPaperHasNone)
{
    Paper paper;
    paper.title = QStringLiteral("T");
    EXPECT_EQ(bookmarksAsMarkdown(paper, {}), u"# T\n\nNo bookmarks.");
}
