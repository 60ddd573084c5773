#pragma once

#include <QMenu>

/// The commands of text editing. Each works on the text field that has focus, and does nothing without one.
class EditMenu : public QMenu
{
    Q_OBJECT

public:
    explicit EditMenu(QWidget *parent = nullptr);

private:
    void addEdit(const QString &text, QKeySequence::StandardKey shortcut, const char *slot);
};
