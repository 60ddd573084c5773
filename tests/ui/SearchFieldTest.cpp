#include "ui/SearchField.h"

#include "ui/LibraryGrid.h"
#include "ui/Symbols.h"
#include "ui/WindowFixture.h"

#include <QAction>
#include <gtest/gtest.h>

namespace
{
class SearchFieldTest : public ::testing::Test, public WindowFixture
{
protected:
    SearchFieldTest()
    {
        addPaper(QStringLiteral("p"), QStringLiteral("Light"));
        load();
        openWindow();
        field = find<SearchField>("searchField");
    }

    bool isFocusInGrid() const
    {
        const auto *grid = window->findChild<LibraryGrid *>();
        return grid == QApplication::focusWidget() || grid->isAncestorOf(QApplication::focusWidget());
    }

    SearchField *field = nullptr;
};
} // namespace

TEST_F(SearchFieldTest, SaysWhatCanBeTyped)
{
    EXPECT_EQ(field->placeholderText(),
              QStringLiteral("Search text, or filter with author: title: filename: year:"));
    EXPECT_TRUE(field->isClearButtonEnabled());
    EXPECT_FALSE(field->accessibleName().isEmpty());
}

TEST_F(SearchFieldTest, IsAsWideAsTheContent)
{
    const auto *content = window->findChild<QWidget *>(QStringLiteral("libraryView"));
    EXPECT_GT(field->width(), content->width() - 40);
}

TEST_F(SearchFieldTest, HoldsTheQueryInBothDirections)
{
    QTest::keyClicks(field, QStringLiteral("waves"));
    EXPECT_EQ(vm().queryText.value(), QStringLiteral("waves"));
    vm().queryText = QStringLiteral("author:maxwell");
    EXPECT_EQ(field->text(), QStringLiteral("author:maxwell"));
}

TEST_F(SearchFieldTest, KeepsTheCursorWhileTyping)
{
    QTest::keyClicks(field, QStringLiteral("waes"));
    QTest::keyClick(field, Qt::Key_Left);
    QTest::keyClick(field, Qt::Key_Left);
    QTest::keyClicks(field, QStringLiteral("v"));
    EXPECT_EQ(field->cursorPosition(), 3);
    EXPECT_EQ(vm().queryText.value(), QStringLiteral("waves"));
}

TEST_F(SearchFieldTest, TakesFocusAndSelectsAllWhenAsked)
{
    vm().queryText = QStringLiteral("waves");
    ASSERT_FALSE(field->hasFocus());
    vm().requestSearchFocus();
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(field->selectedText(), QStringLiteral("waves"));
}

TEST_F(SearchFieldTest, ClearsOnEscapeAndGivesTheFocusBackToTheGrid)
{
    vm().requestSearchFocus();
    QTest::keyClicks(field, QStringLiteral("author:x"));
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(vm().queryText.value(), QString());
    EXPECT_TRUE(isFocusInGrid());
}

TEST_F(SearchFieldTest, MovesIntoTheGridOnDown)
{
    vm().requestSearchFocus();
    QTest::keyClick(field, Qt::Key_Down);
    EXPECT_TRUE(isFocusInGrid());
}
