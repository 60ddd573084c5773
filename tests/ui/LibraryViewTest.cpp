#include "ui/LibraryView.h"

#include "ui/EmptyState.h"
#include "ui/LibraryGrid.h"
#include "ui/SearchResultsView.h"
#include "ui/WindowFixture.h"

#include <QLabel>
#include <gtest/gtest.h>

namespace
{
class LibraryViewTest : public ::testing::Test, public WindowFixture
{
protected:
    LibraryViewTest() { openWindow(); }

    void expectEmptyState(const QString &title, const QString &text)
    {
        auto *state = find<EmptyState>("libraryEmptyState");
        ASSERT_NE(state, nullptr);
        EXPECT_EQ(find<QLabel>(state, "emptyStateTitle")->text(), title);
        EXPECT_EQ(find<QLabel>(state, "emptyStateText")->text(), text);
        EXPECT_EQ(state->accessibleName(), title);
    }
    template <typename View> bool isShown() const { return window->findChild<View *>()->isVisible(); }
};
} // namespace

TEST_F(LibraryViewTest, InvitesToImportWithoutPapers)
{
    expectEmptyState(QStringLiteral("No Papers"), QStringLiteral("Index a folder of PDFs to get started."));
}

TEST_F(LibraryViewTest, SaysThatTheLibraryIsLoading)
{
    vm().isLoading = true;
    expectEmptyState(QStringLiteral("Loading library…"), QString());
    vm().isLoading = false;
    expectEmptyState(QStringLiteral("No Papers"), QStringLiteral("Index a folder of PDFs to get started."));
}

TEST_F(LibraryViewTest, KeepsTheGridWhileItsPapersLoadAgain)
{
    addPaper(QStringLiteral("p"), QStringLiteral("Light"));
    load();
    EXPECT_TRUE(isShown<LibraryGrid>());
    vm().isLoading = true;
    EXPECT_TRUE(isShown<LibraryGrid>());
}

TEST_F(LibraryViewTest, SaysWhenNoPaperPassesTheFilter)
{
    addPaper(QStringLiteral("p"), QStringLiteral("Light"));
    load();
    vm().queryText = QStringLiteral("author:nobody");
    expectEmptyState(QStringLiteral("No Matches"), QStringLiteral("No papers match your filter."));
    vm().queryText = QString();
    EXPECT_TRUE(isShown<LibraryGrid>());
}

TEST_F(LibraryViewTest, SaysNoMatchesForAQueryOverAnEmptyLibrary)
{
    vm().queryText = QStringLiteral("light");
    expectEmptyState(QStringLiteral("No Matches"), QStringLiteral("No papers match your filter."));
}

TEST_F(LibraryViewTest, ShowsTheResultsWhileAQueryIsInForce)
{
    addPaper(QStringLiteral("p"), QStringLiteral("Light"));
    load();
    vm().isSearching = true;
    EXPECT_TRUE(isShown<SearchResultsView>());
    EXPECT_FALSE(isShown<LibraryGrid>());
    vm().isSearching = false;
    EXPECT_TRUE(isShown<LibraryGrid>());
}
