#include "app/LibraryViewModel.h"

#include "support/ViewModelFixture.h"

class LibraryViewModelTest : public testing::Test, protected ViewModelFixture
{
};

TEST_F(LibraryViewModelTest, ShowsEveryPaperInTheStoresOrder)
{
    addPaper(QStringLiteral("2"), QStringLiteral("beta"));
    addPaper(QStringLiteral("1"), QStringLiteral("Alpha"));
    load();
    EXPECT_EQ(idsOf(vm().papers), (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
    EXPECT_EQ(vm().filteredPapers.value(), vm().papers.value());
    EXPECT_FALSE(vm().isLoading);
}
