#include "ui/TagAlerts.h"

#include "ui/TagNameDialog.h"
#include "ui/WindowFixture.h"

#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <gtest/gtest.h>

namespace
{
class TagAlertsTest : public ::testing::Test, public WindowFixture
{
protected:
    TagAlertsTest()
    {
        addPaper(QStringLiteral("p"), QStringLiteral("Light"), {QStringLiteral("optics")});
        load();
        openWindow();
    }

    QLineEdit *field(const char *alert) { return find<QLineEdit>(find<QDialog>(alert), "tagNameField"); }

    void expectTexts(const char *alert, const QString &title, const QString &fieldName,
                     const QString &message, const QString &accept)
    {
        auto *dialog = find<QDialog>(alert);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), title);
        EXPECT_EQ(find<QLabel>(dialog, "alertTitle")->text(), title);
        EXPECT_EQ(find<QLabel>(dialog, "alertMessage")->text(), message);
        EXPECT_EQ(field(alert)->placeholderText(), fieldName);
        EXPECT_NE(buttonOf(dialog, accept), nullptr);
        EXPECT_NE(buttonOf(dialog, QStringLiteral("Cancel")), nullptr);
    }

    /// As the sidebar and the toolbar do.
    TagAlerts &alerts() { return *window->findChild<TagAlerts *>(); }
};
} // namespace

TEST_F(TagAlertsTest, NameANewTag)
{
    alerts().newTag();
    expectTexts("newTagAlert", QStringLiteral("New Tag"), QStringLiteral("Tag Name"),
                QStringLiteral("Enter a name for the new tag."), QStringLiteral("Create"));
    QTest::keyClicks(field("newTagAlert"), QStringLiteral(" waves "));
    QTest::keyClick(field("newTagAlert"), Qt::Key_Return);
    EXPECT_EQ(find<QDialog>("newTagAlert"), nullptr);
    waitUntil(vm().allTags, QStringList{QStringLiteral("optics"), QStringLiteral("waves")});
}

TEST_F(TagAlertsTest, RefuseAReservedNameAndSayWhy)
{
    alerts().newTag();
    auto *dialog = find<QDialog>("newTagAlert");
    QTest::keyClicks(field("newTagAlert"), QStringLiteral("_mine"));
    EXPECT_EQ(find<QLabel>(dialog, "tagNameProblem")->text(), tagNameProblem(QStringLiteral("_mine")));
    EXPECT_FALSE(buttonOf(dialog, QStringLiteral("Create"))->isEnabled());
    QTest::keyClick(field("newTagAlert"), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());

    field("newTagAlert")->setText(QStringLiteral("mine"));
    EXPECT_TRUE(find<QLabel>(dialog, "tagNameProblem")->text().isEmpty());
    EXPECT_TRUE(buttonOf(dialog, QStringLiteral("Create"))->isEnabled());
}

TEST_F(TagAlertsTest, DoNothingWithABlankName)
{
    alerts().newTag();
    auto *dialog = find<QDialog>("newTagAlert");
    QTest::keyClicks(field("newTagAlert"), QStringLiteral("   "));
    QTest::keyClick(field("newTagAlert"), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(buttonOf(dialog, QStringLiteral("Create"))->isEnabled());
    buttonOf(dialog, QStringLiteral("Cancel"))->click();
    EXPECT_EQ(find<QDialog>("newTagAlert"), nullptr);
    EXPECT_EQ(vm().allTags.value(), QStringList{QStringLiteral("optics")});
}

TEST_F(TagAlertsTest, RenameATag)
{
    alerts().renameTag(QStringLiteral("optics"));
    expectTexts("renameTagAlert", QStringLiteral("Rename Tag"), QStringLiteral("New Tag Name"),
                QStringLiteral("Enter a new name for \"optics\". This will update all associated papers."),
                QStringLiteral("Rename"));
    QTest::keyClicks(field("renameTagAlert"), QStringLiteral("light")); // over the selected old name
    QTest::keyClick(field("renameTagAlert"), Qt::Key_Return);
    waitUntil(vm().allTags, QStringList{QStringLiteral("light")});
    EXPECT_EQ(paper(QStringLiteral("p"))->tags, QStringList{QStringLiteral("light")});
}

TEST_F(TagAlertsTest, DeleteATagWhenThePersonAgrees)
{
    alerts().deleteTag(QStringLiteral("optics"));
    auto *box = find<QMessageBox>("deleteTagAlert");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), QStringLiteral("Delete Tag"));
    EXPECT_EQ(box->windowTitle(), QStringLiteral("Delete Tag"));
    EXPECT_EQ(
        box->informativeText(),
        QStringLiteral("Are you sure you want to delete the tag \"optics\"? This will remove it from all "
                       "papers but won't delete the papers themselves."));
    EXPECT_NE(buttonOf(box, QStringLiteral("Cancel")), nullptr);
    buttonOf(box, QStringLiteral("Delete"))->click();
    waitUntil(vm().allTags, QStringList());
    EXPECT_TRUE(paper(QStringLiteral("p")).has_value());
}

TEST_F(TagAlertsTest, KeepTheTagOnCancel)
{
    alerts().deleteTag(QStringLiteral("optics"));
    QTest::keyClick(find<QMessageBox>("deleteTagAlert"), Qt::Key_Escape);
    EXPECT_EQ(find<QMessageBox>("deleteTagAlert"), nullptr);
    EXPECT_EQ(vm().allTags.value(), QStringList{QStringLiteral("optics")});
}

TEST_F(TagAlertsTest, GiveATagToAllVisiblePapers)
{
    alerts().tagAll();
    expectTexts("tagAllAlert", QStringLiteral("Tag All"), QStringLiteral("Tag Name"),
                QStringLiteral("Enter a tag name to apply to all visible papers."), QStringLiteral("Apply"));
    QTest::keyClicks(field("tagAllAlert"), QStringLiteral("read"));
    QTest::keyClick(field("tagAllAlert"), Qt::Key_Return);
    waitUntil(vm().allTags, QStringList{QStringLiteral("optics"), QStringLiteral("read")});
}

TEST_F(TagAlertsTest, CompleteFromKnownTagsWhenTaggingAll)
{
    alerts().tagAll();
    QTest::keyClicks(field("tagAllAlert"), QStringLiteral("PTI"));
    const QCompleter *completer = field("tagAllAlert")->completer();
    ASSERT_NE(completer, nullptr);
    EXPECT_EQ(completer->completionCount(), 1);
    EXPECT_EQ(completer->currentCompletion(), QStringLiteral("optics"));
}
