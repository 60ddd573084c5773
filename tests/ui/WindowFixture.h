#pragma once

#include "app/LibraryCommands.h"
#include "support/ViewModelFixture.h"
#include "ui/ContentView.h"
#include "ui/CoverCache.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

/// The library window over a view model that the test drives by hand.
struct WindowFixture : ViewModelFixture {
    ~WindowFixture() { window.reset(); }

    /// Shows a window in place of the one that is there, and gives it the focus.
    ContentView &openWindow()
    {
        window.reset();
        window = std::make_unique<ContentView>(ContentView::Collaborators{
            .vm = vm(),
            .commands = commands,
            .covers = covers,
            .preferences = preferences,
            .openWindow = [this](const PDFOpenRequest &request) { opened.append(request); },
            .isQuitting = [this] { return isQuitting; },
        });
        window->show();
        QApplication::setActiveWindow(window.get());
        return *window;
    }

    /// The window's part, or one of its dialogs, of that name; null when there is none, or it is closed.
    template <typename Widget> Widget *find(const char *name)
    {
        const auto found = window->findChildren<Widget *>(QLatin1String(name));
        for (Widget *widget : found) {
            if (!widget->isHidden())
                return widget;
        }
        return nullptr;
    }
    template <typename Widget> Widget *find(QWidget *parent, const char *name)
    {
        return parent->findChild<Widget *>(QLatin1String(name));
    }

    QList<PDFOpenRequest> opened;
    bool isQuitting = false;
    int quits = 0; ///< how often the program was asked to end
    LibraryCommands commands{{[] {}, [] {}, [] {},
                              [this] {
                                  ++quits;
                              }}};
    CoverCache covers;
    std::unique_ptr<ContentView> window;
};

/// The button with the text, of a message box or a dialog.
inline QAbstractButton *buttonOf(QWidget *dialog, const QString &text)
{
    const auto buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->text() == text && !button->isHidden())
            return button;
    }
    return nullptr;
}

/// The texts of a menu's entries, separators as "-".
inline QStringList textsOf(const QMenu *menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}
