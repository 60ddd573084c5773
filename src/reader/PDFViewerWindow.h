#pragma once

#include "reader/DocumentOpening.h"
#include "reader/PDFViewerController.h"
#include "reader/ReaderServices.h"

#include <QMainWindow>
#include <memory>
#include <vector>

class MessagePage;
class PDFKitView;
class PasswordPage;
class PrintFlow;
class QSplitter;
class QStackedWidget;
class ReaderActions;
class ReaderLayout;
class ReaderSidebar;
class ReaderToolBar;

/// A window that shows one PDF. It is there at once; its document comes when it is open, and what stands in
/// the way is said in its place. Deletes itself when it is closed.
///
/// Its parts are made in PDFViewerWindow.cpp; what it does lies in PDFViewerWindowCommands.cpp.
class PDFViewerWindow : public QMainWindow
{
    Q_OBJECT

public:
    PDFViewerWindow(const PDFOpenRequest &request, ReaderServices services);
    ~PDFViewerWindow() override;

    /// What would open this window again as it stands: its page, file and paper may have changed.
    const PDFOpenRequest &request() const { return m_request; }

    PDFViewerController &controller() { return *m_controller; }
    PDFKitView &view() { return *m_view; }
    DocumentOpening &opening() { return *m_opening; }
    ReaderActions &actions() { return *m_actions; }

    /// Takes what came while the main thread did something else: the open document, the sizes of its pages.
    /// Else they would wait for their events, and pictures for them.
    void takeWhatCame();

Q_SIGNALS:
    /// For the session.
    void requestChanged(const PDFOpenRequest &request);
    void closed(const QUuid &requestId);

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeParts();
    void connectActions();
    void connectView();
    void observe();

    void showWhatCanWait();
    void showState();
    void showDocument();
    void showFailure(const QString &problem);
    void showMissing(const QString &problem);
    void showPassword(const QString &problem);
    void showOnly(QWidget *page);
    void showHitMarks();
    void showTitle();
    QCoro::Task<> findPaper();
    void changeRequest(const PDFOpenRequest &request);
    void rememberPage(qint64 pageNumber);
    void moveTo(const QString &path);

    void askForBookmark();
    void askWhereFileIs();
    void find();
    void searchTextChanged();
    void setFullScreen(bool isFull);

    ReaderServices m_services;
    PDFOpenRequest m_original; ///< as it was opened
    PDFOpenRequest m_request;  ///< as it is now
    QString m_paperTitle;
    bool m_hasShownDocument = false;

    std::unique_ptr<DocumentOpening> m_opening;
    PDFKitView *m_view;
    std::unique_ptr<PDFViewerController> m_controller;
    ReaderActions *m_actions = nullptr;
    ReaderToolBar *m_toolBar = nullptr;
    ReaderSidebar *m_sidebar = nullptr;
    QSplitter *m_splitter = nullptr;
    QStackedWidget *m_pages = nullptr;
    MessagePage *m_failurePage = nullptr;
    MessagePage *m_missingPage = nullptr;
    PasswordPage *m_passwordPage = nullptr;
    PrintFlow *m_printFlow = nullptr;
    std::unique_ptr<ReaderLayout> m_layout;
    std::unique_ptr<PendingCall> m_pagePatience; ///< none once what can wait for the page is shown
    std::vector<QPropertyNotifier> m_observers;
};

/// Opens a window for `request` and shows it; its document comes in the background. A request without a paper
/// gets the library's paper of that file, if there is one.
PDFViewerWindow *openPDFViewerWindow(const PDFOpenRequest &request, const ReaderServices &services);
