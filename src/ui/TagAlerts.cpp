#include "ui/TagAlerts.h"

#include "app/LibraryViewModel.h"
#include "ui/Alert.h"
#include "ui/TagNameDialog.h"

TagAlerts::TagAlerts(LibraryViewModel &vm, QWidget *window)
    : QObject(window)
    , m_vm(vm)
    , m_window(window)
{
}

void TagAlerts::newTag()
{
    auto *dialog = new TagNameDialog({.title = QStringLiteral("New Tag"),
                                      .field = QStringLiteral("Tag Name"),
                                      .message = QStringLiteral("Enter a name for the new tag."),
                                      .accept = QStringLiteral("Create")},
                                     m_window);
    dialog->setObjectName(QStringLiteral("newTagAlert"));
    connect(dialog, &TagNameDialog::chosen, this, [this](const QString &name) { m_vm.createTag(name); });
    dialog->open();
}

void TagAlerts::renameTag(const QString &name)
{
    auto *dialog = new TagNameDialog(
        {.title = QStringLiteral("Rename Tag"),
         .field = QStringLiteral("New Tag Name"),
         .message = u"Enter a new name for \"" + name + u"\". This will update all associated papers.",
         .accept = QStringLiteral("Rename")},
        m_window);
    dialog->setObjectName(QStringLiteral("renameTagAlert"));
    dialog->setName(name);
    connect(dialog, &TagNameDialog::chosen, this,
            [this, name](const QString &newName) { m_vm.renameTag(name, newName); });
    dialog->open();
}

void TagAlerts::deleteTag(const QString &name)
{
    QMessageBox *box =
        Alert::make({.name = QStringLiteral("deleteTagAlert"),
                     .title = QStringLiteral("Delete Tag"),
                     .message = u"Are you sure you want to delete the tag \"" + name +
                                u"\"? This will remove it from all papers but won't delete the "
                                u"papers themselves."},
                    QMessageBox::Question, m_window);
    Alert::askBeforeDestroying(box, QStringLiteral("Delete"), [this, name] { m_vm.deleteTag(name); });
    box->open();
}

void TagAlerts::tagAll()
{
    auto *dialog =
        new TagNameDialog({.title = QStringLiteral("Tag All"),
                           .field = QStringLiteral("Tag Name"),
                           .message = QStringLiteral("Enter a tag name to apply to all visible papers."),
                           .accept = QStringLiteral("Apply")},
                          m_window);
    dialog->setObjectName(QStringLiteral("tagAllAlert"));
    dialog->offerCompletions(m_vm.visibleTags);
    connect(dialog, &TagNameDialog::chosen, this,
            [this](const QString &name) { m_vm.tagVisiblePapers(name); });
    dialog->open();
}
