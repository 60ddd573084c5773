#include "desktop/Windows.h"

#include "app/SessionManager.h"
#include "reader/PDFViewerWindow.h"
#include "ui/UpdateWindow.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <utility>

namespace
{

OpenedWindow opened(QWidget *widget)
{
    const QPointer window(widget);
    return {.isOpen = [window] { return window && window->isVisible(); },
            .bringForward =
                [window] {
                    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
                    window->raise();
                    window->activateWindow();
                },
            .close =
                [window] {
                    return window->close();
                }};
}

/// Null while there is none.
QWidget *libraryWindow()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (qobject_cast<ContentView *>(window))
            return window;
    }
    return nullptr;
}

} // namespace

OpenedWindow showLibraryWindow(const ContentView::Collaborators &collaborators)
{
    auto *window = new ContentView(collaborators);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    return opened(window);
}

OpenedWindow showReaderWindow(const PDFOpenRequest &request, const ReaderServices &services,
                              SessionManager &sessions, const std::function<bool()> &isQuitting)
{
    PDFViewerWindow *window = openPDFViewerWindow(request, services);
    // Of a window that opens again the session still holds what was known before.
    sessions.update(window->request());
    QObject::connect(window, &PDFViewerWindow::requestChanged, window,
                     [&sessions](const PDFOpenRequest &changed) { sessions.update(changed); });
    QObject::connect(window, &PDFViewerWindow::closed, window,
                     [&sessions, isQuitting, window](const QUuid &id) {
                         if (isQuitting())
                             return;
                         // What it still awaits may not list it again.
                         QObject::disconnect(window, &PDFViewerWindow::requestChanged, nullptr, nullptr);
                         sessions.unregister(id);
                     });
    return opened(window);
}

void askToReopen(std::function<void(bool reopen)> answer)
{
    auto *question = new QMessageBox(
        QMessageBox::Question, QStringLiteral("Open Papers Again"),
        QStringLiteral("Quirevault ended unexpectedly twice, soon after it had opened the papers of the last "
                       "session. Open them once more?"),
        QMessageBox::NoButton, libraryWindow());
    question->setObjectName(QStringLiteral("askToReopen"));
    question->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton *open = question->addButton(QStringLiteral("Open Again"), QMessageBox::AcceptRole);
    question->addButton(QStringLiteral("Leave Closed"), QMessageBox::RejectRole);
    QObject::connect(
        question, &QMessageBox::buttonClicked, question,
        [open, answer = std::move(answer)](const QAbstractButton *chosen) { answer(chosen == open); });
    question->open();
}

void showUpdates(Updater &updater, Updater::Attention attention)
{
    QWidget *library = libraryWindow();
    showUpdateWindow(updater, attention, library ? library : QApplication::activeWindow());
}
