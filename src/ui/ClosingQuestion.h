#pragma once

#include <QObject>
#include <QPointer>
#include <QProperty>

class LibraryViewModel;
class QMessageBox;
class QWidget;

/// Asks whether a window may close while an import runs. An import that ends meanwhile takes the question
/// back.
class ClosingQuestion : public QObject
{
    Q_OBJECT

public:
    ClosingQuestion(LibraryViewModel &vm, QWidget *window);

    /// Whether the window may close now. When not, the person is being asked, and may close it later.
    bool mayClose();

private:
    void ask();

    LibraryViewModel &m_vm;
    QWidget *m_window;
    QPointer<QMessageBox> m_box;
    bool m_isConfirmed = false;
    QPropertyNotifier m_observer;
};
