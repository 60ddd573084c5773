#include "app/PaperEditTexts.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{

const Paper kPaper{.id = QStringLiteral("p"),
                   .title = QStringLiteral("On Graphs"),
                   .authors = QStringLiteral("Ada Moss"),
                   .year = 1998,
                   .coverPath = {},
                   .filepath = {},
                   .tags = {}};

PaperEditTexts edited(const QString &title, const QString &authors, const QString &year)
{
    return {title, authors, year};
}

Result<PaperEdit> editTo(const PaperEditTexts &after)
{
    return paperEdit(PaperEditTexts::of(kPaper), after);
}

} // namespace

TEST(PaperEditTexts, ShowAPaperWithoutAYearAsAnEmptyText)
{
    Paper paper = kPaper;
    paper.year.reset();
    EXPECT_EQ(PaperEditTexts::of(paper).year, QString());
    EXPECT_EQ(PaperEditTexts::of(kPaper).year, u"1998");
}

TEST(PaperEditTexts, ThatDidNotChangeWriteNothing)
{
    const auto edit = editTo(PaperEditTexts::of(kPaper));
    ASSERT_TRUE(edit);
    EXPECT_FALSE(edit->title);
    EXPECT_FALSE(edit->authors);
    EXPECT_FALSE(edit->year);
}

TEST(PaperEditTexts, WriteWhatChangedTrimmed)
{
    const auto edit =
        editTo(edited(QStringLiteral("  On Trees "), QStringLiteral(" Bo Fen\t"), QStringLiteral(" 2001 ")));
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->title, QStringLiteral("On Trees"));
    EXPECT_EQ(edit->authors, QStringLiteral("Bo Fen"));
    EXPECT_EQ(edit->year, 2001);
}

TEST(PaperEditTexts, LeaveOutAFieldThatTheEditDidNotTouch)
{
    const auto edit = editTo(edited(kPaper.title, QStringLiteral("Bo Fen"), QStringLiteral("1998")));
    ASSERT_TRUE(edit);
    EXPECT_FALSE(edit->title);
    EXPECT_EQ(edit->authors, QStringLiteral("Bo Fen"));
    EXPECT_FALSE(edit->year);
}

TEST(PaperEditTexts, LeaveTheYearWhenItsTextIsEmpty)
{
    for (const QString &blank : {QString(), QStringLiteral("  ")}) {
        const auto edit = editTo(edited(QStringLiteral("On Trees"), kPaper.authors, blank));
        ASSERT_TRUE(edit);
        EXPECT_FALSE(edit->year);
        EXPECT_TRUE(edit->title);
    }
}

TEST(PaperEditTexts, RefuseAYearThatIsNotAWholeNumber)
{
    const QStringList notYears{QStringLiteral("soon"),
                               QStringLiteral("19.5"),
                               QStringLiteral("1998a"),
                               QStringLiteral("20 01"),
                               QStringLiteral("-"),
                               QStringLiteral("0x7c"),
                               QStringLiteral("99999999999999999999")};
    for (const QString &year : notYears) {
        const auto edit = editTo(edited(kPaper.title, kPaper.authors, year));
        ASSERT_FALSE(edit) << year.toStdString();
        EXPECT_EQ(edit.error().description, u"The year must be a whole number, such as 1998.");
    }
}

TEST(PaperEditTexts, KeepTheTitleWhenItsTextIsBlank)
{
    const auto edit =
        editTo(edited(QStringLiteral(" \t "), QStringLiteral("Bo Fen"), QStringLiteral("1998")));
    ASSERT_TRUE(edit);
    EXPECT_FALSE(edit->title);
    EXPECT_TRUE(edit->authors);
}

TEST(PaperEditTexts, RemoveTheAuthorsWhenTheirTextIsBlank)
{
    const auto edit = editTo(edited(kPaper.title, QStringLiteral("  "), QStringLiteral("1998")));
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->authors, QString());
}

TEST(PaperEditTexts, TellWhetherAPaperCarriesAnEdit)
{
    EXPECT_TRUE(carries(kPaper, PaperEdit{}));
    EXPECT_TRUE(carries(kPaper, PaperEdit{.title = kPaper.title, .authors = kPaper.authors, .year = 1998}));
    EXPECT_FALSE(carries(kPaper, PaperEdit{.title = QStringLiteral("Other"), .authors = {}, .year = {}}));
    EXPECT_FALSE(carries(kPaper, PaperEdit{.title = {}, .authors = QString(), .year = {}}));
    EXPECT_FALSE(carries(kPaper, PaperEdit{.title = {}, .authors = {}, .year = 1999}));
}
