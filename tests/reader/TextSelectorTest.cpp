#include "reader/TextSelector.h"

#include "support/FakePages.h"

#include <gtest/gtest.h>

namespace
{
class TextSelectorTest : public testing::Test
{
protected:
    TextSelectorTest()
    {
        contents.setText(0, placedLines({QStringLiteral("first words"), QStringLiteral("of a page")}));
        contents.setText(1, placedLines({QStringLiteral("all of it")}));
        contents.setText(2, placedLines({QStringLiteral("last words"), QStringLiteral("stay out")}));
    }

    /// Before the character `column` of the line `row`.
    static TextSelector::Place place(qint64 page, int row, double column)
    {
        return {page, {50 + 10 * column, 110 + 20.0 * row}};
    }

    QString selected() const
    {
        const std::optional<PDFSelection> selection = selector.selection();
        return selection ? selection->string() : QString();
    }

    PageContents contents;
    TextSelector selector{contents};
};
} // namespace

TEST_F(TextSelectorTest, SelectsCharactersFromOnePointToAnother)
{
    selector.start(place(0, 0, 6), PDFTextUnit::Character);
    EXPECT_EQ(selector.selection(), std::nullopt);
    selector.extend(place(0, 1, 2));
    EXPECT_EQ(selected(), QStringLiteral("words\nof"));
    selector.extend(place(0, 0, 2));
    EXPECT_EQ(selected(), QStringLiteral("rst "));
}

TEST_F(TextSelectorTest, SelectsWholeWords)
{
    selector.start(place(0, 0, 8), PDFTextUnit::Word);
    EXPECT_EQ(selected(), QStringLiteral("words"));
    selector.extend(place(0, 0, 1));
    EXPECT_EQ(selected(), QStringLiteral("first words"));
}

TEST_F(TextSelectorTest, SelectsWholeLines)
{
    selector.start(place(0, 1, 3), PDFTextUnit::Line);
    EXPECT_EQ(selected(), QStringLiteral("of a page"));
}

TEST_F(TextSelectorTest, SelectsAcrossPagesInEitherDirection)
{
    selector.start(place(0, 1, 5), PDFTextUnit::Character);
    selector.extend(place(2, 0, 4));
    const QString downwards = selected();
    EXPECT_TRUE(downwards.startsWith(QStringLiteral("page\n"))) << downwards.toStdString();
    EXPECT_TRUE(downwards.contains(QStringLiteral("all of it")));
    EXPECT_TRUE(downwards.endsWith(QStringLiteral("last")));
    selector.start(place(2, 0, 4), PDFTextUnit::Character);
    selector.extend(place(0, 1, 5));
    EXPECT_EQ(selected(), downwards);
}

TEST_F(TextSelectorTest, SelectsWholeWordsAcrossPages)
{
    selector.start(place(0, 1, 6), PDFTextUnit::Word);
    selector.extend(place(1, 0, 1));
    EXPECT_EQ(selected().simplified(), QStringLiteral("page all"));
}

TEST_F(TextSelectorTest, TakesTextsInAsTheyArrive)
{
    contents.clear();
    selector.start(place(0, 0, 0), PDFTextUnit::Character);
    selector.extend(place(0, 0, 5));
    EXPECT_EQ(selector.selection(), std::nullopt);
    contents.setText(0, placedLines({QStringLiteral("first words")}));
    EXPECT_EQ(selected(), QStringLiteral("first"));
}

TEST_F(TextSelectorTest, SelectsEverything)
{
    selector.selectAll(3);
    EXPECT_EQ(selector.pages(), (PageRange{0, 2}));
    EXPECT_TRUE(selected().startsWith(QStringLiteral("first words\nof a page")));
    EXPECT_TRUE(selected().contains(QStringLiteral("stay out")));
    selector.selectAll(0);
    EXPECT_EQ(selector.selection(), std::nullopt);
}

TEST_F(TextSelectorTest, HasWhatWasSet)
{
    const PDFSelection given(1, *contents.text(1), {4, 6});
    selector.set(given);
    EXPECT_TRUE(selector.isGiven());
    EXPECT_EQ(selector.selection(), given);
    EXPECT_EQ(selector.rectanglesOn(1), given.lineRectangles(1));
    selector.clear();
    EXPECT_EQ(selector.selection(), std::nullopt);
}

TEST_F(TextSelectorTest, ExtendsWhatWasSetFromItsStart)
{
    selector.set(PDFSelection(0, *contents.text(0), {6, 11}));
    selector.extend(place(0, 1, 2));
    EXPECT_EQ(selected(), QStringLiteral("words\nof"));
}

TEST_F(TextSelectorTest, StartsWhereItIsExtendedFirst)
{
    selector.extend(place(0, 0, 2));
    EXPECT_EQ(selector.selection(), std::nullopt);
    selector.extend(place(0, 0, 5));
    EXPECT_EQ(selected(), QStringLiteral("rst"));
}
