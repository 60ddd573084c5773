#pragma once

#include <QObject>
#include <QPointer>
#include <QProperty>
#include <functional>

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

    /// Whether the window may close now. When not, the person is being asked, and `closeAgain` is called once
    /// they agree: only the latest, as the window may be asked to close for more than one reason.
    bool mayClose(std::function<void()> closeAgain);

private:
    void ask();

    LibraryViewModel &m_vm;
    QWidget *m_window;
    QPointer<QMessageBox> m_box;
    std::function<void()> m_closeAgain;
    bool m_isConfirmed = false;
    QPropertyNotifier m_observer;
};
