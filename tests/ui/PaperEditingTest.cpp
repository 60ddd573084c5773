#include "ui/PanelFixture.h"

#include <QLabel>
#include <QLineEdit>

class PaperEditingTest : public PanelFixture
{
protected:
    void edit()
    {
        showPaper();
        click("Edit Info");
    }
    bool isEditing() { return find("paperEditor")->isVisible(); }
    void refuseWrites()
    {
        library.run(QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON papers "
                                   "BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
    }
    /// Lets every answer of the library that is under way arrive.
    void settle() { waitFor(vm().loadPapers()); }
};

TEST_F(PaperEditingTest, FillsTheFieldsAndBeginsInTheFirst)
{
    edit();
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(find<QLineEdit>("editTitle")->text(), u"On Graphs");
    EXPECT_EQ(find<QLineEdit>("editAuthors")->text(), u"Ada Moss");
    EXPECT_EQ(find<QLineEdit>("editYear")->text(), u"1998");
    EXPECT_EQ(QApplication::focusWidget(), find("editTitle"));
    EXPECT_EQ(find("editTitle")->accessibleName(), u"Title");
    EXPECT_EQ(find("editAuthors")->accessibleName(), u"Authors");
    EXPECT_EQ(find("editYear")->accessibleName(), u"Year");
    EXPECT_FALSE(find("title")->isVisible());
}

TEST_F(PaperEditingTest, SavesWhatReturnIsPressedOn)
{
    edit();
    type("editTitle", QStringLiteral("On Trees"));
    type("editYear", QStringLiteral("2001"));
    QTest::keyClick(find("editYear"), Qt::Key_Return);
    waitForPaper([](const Paper &paper) { return paper.title == u"On Trees"; });
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(find<QLabel>("title")->text(), u"On Trees");
    EXPECT_TRUE(find("title")->isVisible());
    EXPECT_EQ(stored().year, 2001);
    EXPECT_EQ(stored().authors, u"Ada Moss");
}

TEST_F(PaperEditingTest, SavesByTheButton)
{
    edit();
    type("editAuthors", QStringLiteral("Bo Fen"));
    click("saveEdit");
    waitForPaper([](const Paper &paper) { return paper.authors == u"Bo Fen"; });
    EXPECT_FALSE(isEditing());
}

TEST_F(PaperEditingTest, CancelsByEscapeAndByTheButton)
{
    edit();
    type("editTitle", QStringLiteral("On Trees"));
    QTest::keyClick(find("editTitle"), Qt::Key_Escape);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(QApplication::focusWidget(), find("Edit Info"));
    click("Edit Info");
    EXPECT_EQ(find<QLineEdit>("editTitle")->text(), u"On Graphs");
    type("editTitle", QStringLiteral("On Trees"));
    click("cancelEdit");
    EXPECT_FALSE(isEditing());
    settle();
    EXPECT_EQ(stored().title, u"On Graphs");
}

TEST_F(PaperEditingTest, CancelsWhenReturnIsPressedOnThatButton)
{
    edit();
    type("editTitle", QStringLiteral("On Trees"));
    QTest::keyClick(find("cancelEdit"), Qt::Key_Return);
    EXPECT_FALSE(isEditing());
    settle();
    EXPECT_EQ(stored().title, u"On Graphs");
}

TEST_F(PaperEditingTest, MarksAYearThatIsNotAWholeNumberAndSavesNothing)
{
    edit();
    type("editTitle", QStringLiteral("On Trees"));
    type("editYear", QStringLiteral("soon"));
    QTest::keyClick(find("editTitle"), Qt::Key_Return);
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(find<QLabel>("editYearProblem")->text(), u"The year must be a whole number, such as 1998.");
    EXPECT_TRUE(find("editYearProblem")->isVisible());
    EXPECT_EQ(find("editYear")->accessibleDescription(), u"The year must be a whole number, such as 1998.");
    EXPECT_EQ(QApplication::focusWidget(), find("editYear"));
    settle();
    EXPECT_EQ(stored().title, u"On Graphs");
    type("editYear", QStringLiteral("2001"));
    EXPECT_FALSE(find("editYearProblem")->isVisible());
    EXPECT_EQ(find("editYear")->accessibleDescription(), QString());
}

TEST_F(PaperEditingTest, LeavesTheYearAndTheTitleWhenTheirFieldsAreBlank)
{
    edit();
    type("editTitle", QStringLiteral("  "));
    type("editYear", {});
    type("editAuthors", {});
    click("saveEdit");
    waitForPaper([](const Paper &paper) { return paper.authors.isEmpty(); });
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(stored().title, u"On Graphs");
    EXPECT_EQ(stored().year, 1998);
    EXPECT_EQ(find<QLabel>("title")->text(), u"On Graphs");
}

TEST_F(PaperEditingTest, EndsWithoutWritingWhenNothingChanged)
{
    edit();
    refuseWrites();
    click("saveEdit");
    EXPECT_FALSE(isEditing());
    settle();
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(PaperEditingTest, GoesOnThroughAReloadOfThePaper)
{
    edit();
    type("editTitle", QStringLiteral("On Tre"));
    waitFor(vm().addTag(QStringLiteral("p"), QStringLiteral("new")));
    ASSERT_EQ(vm().selectedPaper.value()->tags, QStringList{QStringLiteral("new")});
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(find<QLineEdit>("editTitle")->text(), u"On Tre");
}

TEST_F(PaperEditingTest, IsDroppedUnwrittenWhenAnotherPaperIsSelected)
{
    edit();
    type("editTitle", QStringLiteral("On Trees"));
    vm().select(addPaper(QStringLiteral("q"), QStringLiteral("Other")));
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(find<QLabel>("title")->text(), u"Other");
    EXPECT_TRUE(find("title")->isVisible());
    settle();
    EXPECT_EQ(stored().title, u"On Graphs");
    EXPECT_EQ(paper(QStringLiteral("q"))->title, u"Other");
}

TEST_F(PaperEditingTest, IsDroppedWhenNoPaperIsSelected)
{
    edit();
    const Paper shown = *vm().selectedPaper.value();
    vm().select(std::nullopt);
    vm().select(shown);
    EXPECT_FALSE(isEditing());
}

TEST_F(PaperEditingTest, KeepsTheFieldsWhenTheLibraryCannotWrite)
{
    edit();
    refuseWrites();
    type("editTitle", QStringLiteral("On Trees"));
    QTest::keyClick(find("editTitle"), Qt::Key_Return);
    waitUntil(vm().errorMessage, [](const auto &message) { return message.has_value(); });
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(find<QLineEdit>("editTitle")->text(), u"On Trees");
}

TEST_F(PaperEditingTest, BeginsFromTheWindowsCommandAndNeedsAPaper)
{
    show({});
    panel->beginEditing();
    EXPECT_FALSE(isEditing());
    showPaper();
    panel->beginEditing();
    EXPECT_TRUE(isEditing());
}

TEST_F(PaperEditingTest, BeganAgainKeepsWhatWasTyped)
{
    edit();
    type("editTitle", QStringLiteral("On Tre"));
    panel->beginEditing();
    EXPECT_EQ(find<QLineEdit>("editTitle")->text(), u"On Tre");
}
