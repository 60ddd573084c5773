#pragma once

#include <QDialog>

/// Lists the keys that work in the library window.
class ShortcutsWindow : public QDialog
{
    Q_OBJECT

public:
    explicit ShortcutsWindow(QWidget *parent = nullptr);
};
