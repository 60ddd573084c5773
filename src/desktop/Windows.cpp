#include "desktop/Windows.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPointer>

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

} // namespace

OpenedWindow showLibraryWindow(const ContentView::Collaborators &collaborators)
{
    auto *window = new ContentView(collaborators);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    return opened(window);
}

OpenedWindow openInDefaultViewer(const PDFOpenRequest &request)
{
    QDesktopServices::openUrl(request.url);
    return {};
}

void showUpdateResult(const QString &result)
{
    auto *message = new QMessageBox(QMessageBox::Information, QStringLiteral("Check for Updates"), result,
                                    QMessageBox::Ok, QApplication::activeWindow());
    message->setObjectName(QStringLiteral("updateResult"));
    message->setAttribute(Qt::WA_DeleteOnClose);
    message->open();
}
