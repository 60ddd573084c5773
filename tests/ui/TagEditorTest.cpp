#include "ui/PanelFixture.h"
#include "ui/TagChip.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

class TagEditorTest : public PanelFixture
{
protected:
    QStringList shownTags()
    {
        QStringList tags;
        for (const TagChip *chip : panel->findChildren<TagChip *>()) {
            if (!chip->isHidden())
                tags.append(chip->label());
        }
        tags.sort();
        return tags;
    }
    void waitForTags(const QStringList &tags)
    {
        waitForPaper([&](const Paper &paper) { return paper.tags == tags; });
    }
    void enter(const QString &text)
    {
        type("tagField", text);
        QTest::keyClick(find("tagField"), Qt::Key_Return);
    }
    QString fieldText() { return find<QLineEdit>("tagField")->text(); }
    QStringList completions(const QString &typed)
    {
        QCompleter &completer = *find<QLineEdit>("tagField")->completer();
        completer.setCompletionPrefix(typed);
        QStringList found;
        for (int row = 0; row < completer.completionCount(); ++row) {
            completer.setCurrentRow(row);
            found.append(completer.currentCompletion());
        }
        return found;
    }
};

TEST_F(TagEditorTest, ShowsAChipForEachTagButTheReservedOnes)
{
    showPaper({QStringLiteral("_currently_reading"), QStringLiteral("graphs"), QStringLiteral("trees")});
    EXPECT_EQ(shownTags(), (QStringList{QStringLiteral("graphs"), QStringLiteral("trees")}));
}

TEST_F(TagEditorTest, RemovesATagByItsButton)
{
    showPaper({QStringLiteral("graphs"), QStringLiteral("trees")});
    auto *remove = find("tag graphs")->findChild<QToolButton *>();
    EXPECT_EQ(remove->accessibleName(), u"Remove tag graphs");
    QTest::mouseClick(remove, Qt::LeftButton);
    waitForTags({QStringLiteral("trees")});
    EXPECT_EQ(shownTags(), QStringList{QStringLiteral("trees")});
    EXPECT_EQ(stored().tags, QStringList{QStringLiteral("trees")});
}

TEST_F(TagEditorTest, RemovesTagsByTheKeyboardAndFocusesTheNeighbour)
{
    showPaper({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    find("tag b")->setFocus();
    QTest::keyClick(find("tag b"), Qt::Key_Delete);
    waitForTags({QStringLiteral("a"), QStringLiteral("c")});
    EXPECT_EQ(QApplication::focusWidget(), find("tag c"));
    QTest::keyClick(find("tag c"), Qt::Key_Backspace);
    waitForTags({QStringLiteral("a")});
    EXPECT_EQ(QApplication::focusWidget(), find("tag a"));
    QTest::keyClick(find("tag a"), Qt::Key_Delete);
    waitForTags({});
    EXPECT_EQ(QApplication::focusWidget(), find("tagField"));
}

TEST_F(TagEditorTest, KeepsDeleteFromTheWindowsShortcuts)
{
    showPaper({QStringLiteral("a")});
    QKeyEvent question(QEvent::ShortcutOverride, Qt::Key_Delete, Qt::NoModifier);
    question.ignore();
    QApplication::sendEvent(find("tag a"), &question);
    EXPECT_TRUE(question.isAccepted());
    QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_F, Qt::ControlModifier);
    other.ignore();
    QApplication::sendEvent(find("tag a"), &other);
    EXPECT_FALSE(other.isAccepted());
}

TEST_F(TagEditorTest, AddsTheTrimmedNameOnReturn)
{
    showPaper();
    enter(QStringLiteral("  graph theory "));
    waitForTags({QStringLiteral("graph theory")});
    EXPECT_EQ(shownTags(), QStringList{QStringLiteral("graph theory")});
    EXPECT_EQ(fieldText(), QString());
}

TEST_F(TagEditorTest, RefusesABlankName)
{
    showPaper();
    enter(QStringLiteral("   "));
    EXPECT_EQ(fieldText(), QString());
    EXPECT_FALSE(find("tagFieldProblem")->isVisible());
    waitFor(vm().loadTags());
    EXPECT_EQ(stored().tags, QStringList());
}

TEST_F(TagEditorTest, RefusesAReservedNameAndSaysWhy)
{
    showPaper();
    enter(QStringLiteral(" _mine"));
    EXPECT_TRUE(find("tagFieldProblem")->isVisible());
    EXPECT_EQ(find<QLabel>("tagFieldProblem")->text(), tagNameProblem(QStringLiteral("_mine")));
    EXPECT_EQ(find("tagField")->accessibleDescription(), tagNameProblem(QStringLiteral("_mine")));
    EXPECT_EQ(fieldText(), u" _mine");
    waitFor(vm().loadTags());
    EXPECT_EQ(stored().tags, QStringList());
    enter(QStringLiteral("mine"));
    EXPECT_FALSE(find("tagFieldProblem")->isVisible());
    waitForTags({QStringLiteral("mine")});
}

TEST_F(TagEditorTest, CompletesFromTheTagsThatThePaperLacksIgnoringCase)
{
    addPaper(QStringLiteral("q"), QStringLiteral("Other"),
             {QStringLiteral("Graphs"), QStringLiteral("grammar"), QStringLiteral("_currently_reading")});
    showPaper({QStringLiteral("graphic")});
    EXPECT_EQ(completions(QStringLiteral("GRA")),
              (QStringList{QStringLiteral("Graphs"), QStringLiteral("grammar")}));
    EXPECT_EQ(completions(QStringLiteral("_")), QStringList());
}

TEST_F(TagEditorTest, AddsACompletionThatIsChosenByKeysOnce)
{
    addPaper(QStringLiteral("q"), QStringLiteral("Other"), {QStringLiteral("Graphs")});
    showPaper();
    panel->focusTagField();
    type("tagField", QStringLiteral("gr"));
    QAbstractItemView *popup = find<QLineEdit>("tagField")->completer()->popup();
    ASSERT_TRUE(popup->isVisible());
    QTest::keyClick(popup, Qt::Key_Down);
    QTest::keyClick(popup, Qt::Key_Return);
    waitForTags({QStringLiteral("Graphs")});
    EXPECT_EQ(fieldText(), QString());
    EXPECT_FALSE(popup->isVisible());
}

TEST_F(TagEditorTest, AddsWhatIsTypedWhenNoCompletionIsChosen)
{
    addPaper(QStringLiteral("q"), QStringLiteral("Other"), {QStringLiteral("Graphs")});
    showPaper();
    type("tagField", QStringLiteral("gr"));
    QTest::keyClick(find<QLineEdit>("tagField")->completer()->popup(), Qt::Key_Return);
    waitForTags({QStringLiteral("gr")});
    EXPECT_EQ(fieldText(), QString());
}

TEST_F(TagEditorTest, EmptiesTheFieldOnEscape)
{
    showPaper();
    type("tagField", QStringLiteral("gr"));
    QTest::keyClick(find("tagField"), Qt::Key_Escape);
    EXPECT_EQ(fieldText(), QString());
}

TEST_F(TagEditorTest, DropsWhatIsTypedWhenAnotherPaperIsSelected)
{
    showPaper();
    type("tagField", QStringLiteral("gr"));
    waitFor(vm().addTag(QStringLiteral("p"), QStringLiteral("new")));
    EXPECT_EQ(fieldText(), u"gr");
    vm().select(addPaper(QStringLiteral("q"), QStringLiteral("Other")));
    EXPECT_EQ(fieldText(), QString());
}

TEST_F(TagEditorTest, TakesTheFocusFromTheWindowsCommand)
{
    show({});
    panel->focusTagField();
    showPaper();
    panel->focusTagField();
    EXPECT_EQ(QApplication::focusWidget(), find("tagField"));
}

TEST_F(TagEditorTest, CutsALongNameShortAndTellsItInTheToolTip)
{
    const QString name = QString(200, u'x');
    showPaper({name});
    const auto *chip = panel->findChild<TagChip *>();
    EXPECT_LE(chip->width(), 200);
    EXPECT_TRUE(chip->toolTip().contains(name));
    EXPECT_EQ(chip->accessibleName(), QString(u"tag " % name));
}
