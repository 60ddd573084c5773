#include "ui/EditMenu.h"

#include <QApplication>
#include <QMetaMethod>

namespace
{
/// All kinds of text fields have these slots, and nothing else in common.
void callOnFocusedField(const char *slot)
{
    QWidget *field = QApplication::focusWidget();
    if (!field)
        return;
    const QMetaObject *type = field->metaObject();
    const int method = type->indexOfSlot(slot);
    if (method >= 0)
        type->method(method).invoke(field);
}
} // namespace

EditMenu::EditMenu(QWidget *parent)
    : QMenu(QStringLiteral("&Edit"), parent)
{
    addEdit(QStringLiteral("Undo"), QKeySequence::Undo, "undo()");
    addSeparator();
    addEdit(QStringLiteral("Cut"), QKeySequence::Cut, "cut()");
    addEdit(QStringLiteral("Copy"), QKeySequence::Copy, "copy()");
    addEdit(QStringLiteral("Paste"), QKeySequence::Paste, "paste()");
    addEdit(QStringLiteral("Select All"), QKeySequence::SelectAll, "selectAll()");
}

void EditMenu::addEdit(const QString &text, QKeySequence::StandardKey shortcut, const char *slot)
{
    QAction *action = addAction(text, this, [slot] { callOnFocusedField(slot); });
    action->setShortcut(shortcut);
}
