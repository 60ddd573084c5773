// What a reader window does.
#include "reader/BookmarkAlert.h"
#include "reader/MessagePage.h"
#include "reader/PDFKitView.h"
#include "reader/PDFViewerWindow.h"
#include "reader/PasswordPage.h"
#include "reader/ReaderActions.h"
#include "reader/ReaderDocument.h"
#include "reader/ReaderLayout.h"
#include "reader/ReaderSearchField.h"
#include "reader/ReaderSidebar.h"
#include "reader/ReaderToolBar.h"
#include "reader/ThemeIcon.h"
#include "store/NativeLibraryService.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <qcorofuture.h>

void PDFViewerWindow::showWhatCanWait()
{
    if (!std::exchange(m_pagePatience, nullptr))
        return;
    findPaper();
    m_actions->showIcons();
    QApplication::setWindowIcon(programIcon());
}

void PDFViewerWindow::showState()
{
    const DocumentOpening::State state = m_opening->state;
    switch (state.stage) {
    case DocumentOpening::Stage::Opening:
        return; // what is shown stays until there is something to say
    case DocumentOpening::Stage::Open:
        return showDocument();
    case DocumentOpening::Stage::Locked:
        return showPassword(state.problem);
    case DocumentOpening::Stage::Missing:
        return showMissing(state.problem);
    case DocumentOpening::Stage::Failed:
        return showFailure(state.problem);
    }
}

void PDFViewerWindow::showDocument()
{
    m_controller->load(m_opening->document());
    showOnly(m_view);
    if (!m_hasShownDocument)
        m_controller->navigateFirst();
    m_hasShownDocument = true;
}

void PDFViewerWindow::showFailure(const QString &problem)
{
    if (!m_failurePage) {
        m_failurePage = new MessagePage(ReaderSymbol::Warning, m_pages);
        m_failurePage->setObjectName(QStringLiteral("failurePage"));
        m_failurePage->setHeading(QStringLiteral("This document cannot be shown"));
        auto *tryAgain = m_failurePage->addButton(QStringLiteral("tryAgain"), QStringLiteral("Try Again"));
        connect(tryAgain, &QPushButton::clicked, this, [this] { m_opening->open(); });
        m_failurePage->setFocusProxy(tryAgain);
        m_pages->addWidget(m_failurePage);
    }
    m_failurePage->setPath(m_opening->path);
    m_failurePage->setProblem(problem);
    showOnly(m_failurePage);
}

void PDFViewerWindow::showMissing(const QString &problem)
{
    if (!m_missingPage) {
        m_missingPage = new MessagePage(ReaderSymbol::MissingFile, m_pages);
        m_missingPage->setObjectName(QStringLiteral("missingPage"));
        m_missingPage->setHeading(QStringLiteral("The file is not there any more"));
        auto *locate = m_missingPage->addButton(QStringLiteral("locateFile"), QStringLiteral("Locate File…"));
        auto *tryAgain = m_missingPage->addButton(QStringLiteral("lookAgain"), QStringLiteral("Try Again"));
        connect(locate, &QPushButton::clicked, this, &PDFViewerWindow::askWhereFileIs);
        connect(tryAgain, &QPushButton::clicked, this, [this] { m_opening->open(); });
        m_missingPage->setFocusProxy(locate);
        m_pages->addWidget(m_missingPage);
    }
    m_missingPage->setPath(m_opening->path);
    m_missingPage->setProblem(problem);
    showOnly(m_missingPage);
}

void PDFViewerWindow::showPassword(const QString &problem)
{
    if (!m_passwordPage) {
        m_passwordPage = new PasswordPage(m_pages);
        connect(m_passwordPage, &PasswordPage::entered, m_opening.get(), &DocumentOpening::unlock);
        connect(m_passwordPage, &PasswordPage::cancelled, this, &QWidget::close);
        m_pages->addWidget(m_passwordPage);
    }
    m_passwordPage->setPath(m_opening->path);
    showOnly(m_passwordPage);
    m_passwordPage->ask(problem);
}

void PDFViewerWindow::showOnly(QWidget *page)
{
    const bool hadFocus = m_pages->isAncestorOf(focusWidget()) || !focusWidget();
    m_pages->setCurrentWidget(page);
    if (page != m_view)
        showWhatCanWait(); // no page will come for which it would have to
    if (hadFocus)
        page->setFocus();
}

void PDFViewerWindow::askWhereFileIs()
{
    auto *dialog = new QFileDialog(this, QStringLiteral("Locate File"),
                                   QFileInfo(m_opening->path.value()).absolutePath(),
                                   QStringLiteral("PDF files (*.pdf *.PDF);;All files (*)"));
    dialog->setObjectName(QStringLiteral("locateDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, m_opening.get(), &DocumentOpening::locate);
    dialog->open();
}

QCoro::Task<> PDFViewerWindow::findPaper()
{
    const QPointer self(this);
    const QUrl file = m_request.url;
    const auto looking = m_request.paperId ? m_services.library.paperById(*m_request.paperId)
                                           : m_services.library.paperByFilepath(m_request.url.toLocalFile());
    const Result<std::optional<Paper>> found = co_await looking;
    if (!self || m_request.url != file || !found || !*found)
        co_return;
    const Paper &paper = **found;
    m_paperTitle = paper.title;
    showTitle();
    if (m_request.paperId)
        co_return;
    m_original.paperId = paper.id;
    PDFOpenRequest request = m_request;
    request.paperId = paper.id;
    m_opening->paperId = paper.id;
    changeRequest(request);
    m_controller->setRequest(m_original); // where it is to arrive, not where it is by now
}

void PDFViewerWindow::showTitle()
{
    const QString name = QFileInfo(m_opening->path.value()).fileName();
    setWindowTitle(m_paperTitle.isEmpty() ? name : m_paperTitle);
}

void PDFViewerWindow::changeRequest(const PDFOpenRequest &request)
{
    if (request == m_request)
        return;
    m_request = request;
    Q_EMIT requestChanged(m_request);
}

void PDFViewerWindow::rememberPage(qint64 pageNumber)
{
    if (!m_hasShownDocument)
        return; // it has not arrived yet
    PDFOpenRequest request = m_request;
    request.page = pageNumber;
    // The passage is on the page that was asked for; on another one it would be looked for in vain.
    const bool isThere = pageNumber == m_original.page.value_or(1);
    request.highlightText = isThere ? m_original.highlightText : std::nullopt;
    changeRequest(request);
}

void PDFViewerWindow::moveTo(const QString &path)
{
    PDFOpenRequest request = m_request;
    request.url = QUrl::fromLocalFile(path);
    changeRequest(request);
    showTitle();
}

void PDFViewerWindow::showHitMarks()
{
    QList<qint64> pages;
    for (const PDFSearchResult &hit : m_controller->searchResults.value())
        pages.append(hit.pageIndex);
    m_view->setHitMarks(pages, m_controller->currentHit);
}

void PDFViewerWindow::find()
{
    m_toolBar->show(); // it hides on the full screen
    m_toolBar->searchField().setFocus(Qt::ShortcutFocusReason);
    m_toolBar->searchField().selectAll();
}

void PDFViewerWindow::searchTextChanged()
{
    if (m_controller->searchText.value().isEmpty())
        return;
    m_sidebar->showPane(ReaderSidebar::Pane::Search);
    if (m_toolBar->searchField().hasFocus())
        m_actions->sidebar->setChecked(true); // who types wants to see the hits
}

void PDFViewerWindow::askForBookmark()
{
    QString hint;
    if (!m_controller->isInLibrary)
        hint = QStringLiteral("Only papers of the library keep bookmarks.");
    else if (!m_controller->hasSelection)
        hint = QStringLiteral("No text is selected.");
    auto *alert = new BookmarkAlert(hint, this);
    connect(alert, &BookmarkAlert::saved, m_controller.get(), &PDFViewerController::bookmarkSelection);
    alert->open();
}

void PDFViewerWindow::setFullScreen(bool isFull)
{
    menuBar()->setVisible(!isFull);
    m_toolBar->setVisible(!isFull);
    setWindowState(windowState().setFlag(Qt::WindowFullScreen, isFull));
}

void PDFViewerWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) // perhaps by the desktop
        m_actions->fullScreen->setChecked(isFullScreen());
}

void PDFViewerWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_actions->fullScreen->isChecked())
        m_actions->fullScreen->setChecked(false);
    else
        QMainWindow::keyPressEvent(event);
}

void PDFViewerWindow::closeEvent(QCloseEvent *event)
{
    m_layout->save();
    Q_EMIT closed(m_request.id);
    QMainWindow::closeEvent(event);
}
