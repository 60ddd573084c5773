#include "screenshots/ReaderScenes.h"

#include "pdf/PDFDocument.h"
#include "platform/Preferences.h"
#include "reader/PDFKitView.h"
#include "reader/ReaderActions.h"
#include "reader/ReaderSidebar.h"
#include "screenshots/DarkPalette.h"
#include "screenshots/SampleArticle.h"
#include "search/NativeSearchService.h"
#include "store/BookmarkEvents.h"
#include "store/NativeLibraryService.h"
#include "support/PdfBuilder.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QSplitter>

namespace
{
constexpr QSize kWindowSize(1100, 860);
}

ReaderScenes::ReaderScenes(Stage &stage, Camera &camera)
    : m_stage(stage)
    , m_camera(camera)
    , m_article(stage.addPaper(writeSampleArticle(stage.folder())))
    , m_services{.library = stage.services().library(),
                 .bookmarkEvents = BookmarkEvents::shared(),
                 .searchInPaper =
                     [&stage](const QString &paperId, const QString &query) {
                         return stage.services().search().searchInPaper(paperId, query);
                     },
                 .clock = stage.services().clock(),
                 .preferences = stage.services().preferences()}
{
    m_stage.window().hide();
}

ReaderScenes::~ReaderScenes()
{
    delete m_window;
}

void ReaderScenes::takeReading()
{
    open(articleRequest());
    take("reader-paper");
    search(QStringLiteral("rarer words"));
    take("reader-hits");
    m_window->actions().nextHit->trigger();
    m_window->actions().nextHit->trigger();
    take("reader-hit-current");
    m_window->actions().darkMode->setChecked(true);
    take("reader-dark-pages-hit");

    PDFOpenRequest passage = articleRequest();
    passage.page = 5;
    passage.highlightText = QLatin1String(kSampleArticlePassage);
    open(passage);
    take("reader-dark-pages-arrival");
    m_window->actions().darkMode->setChecked(false);
    take("reader-arrival");
}

void ReaderScenes::takeRest()
{
    takeBookmarks();
    takeShapes();
    takeTroubles();
    takeDarkDesktop();
}

void ReaderScenes::takeBookmarks()
{
    open(articleRequest());
    m_window->findChild<ReaderSidebar *>()->showPane(ReaderSidebar::Pane::Bookmarks);
    take("reader-bookmarks-none");
    selectLine(2, 150);
    m_window->controller().bookmarkSelection(QStringLiteral("What they remember"));
    selectLine(2, 280);
    m_window->controller().bookmarkSelection(QString());
    selectLine(5, 180);
    m_window->controller().bookmarkSelection(
        QStringLiteral("A label that says far more than there is room for beside the page"));
    take("reader-bookmarks");
    m_window->actions().bookmarkSelection->trigger();
    take("reader-bookmark-prompt");
    part<QDialog>("bookmarkAlert")->reject();
    const QPoint middle = m_window->view().viewport()->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle,
                            m_window->view().viewport()->mapToGlobal(middle));
    QCoreApplication::sendEvent(m_window->view().viewport(), &event);
    take("reader-menu");
    while (QWidget *popup = QApplication::activePopupWidget())
        popup->close();
}

void ReaderScenes::takeShapes()
{
    open(articleRequest());
    ReaderActions &actions = m_window->actions();
    actions.darkMode->setChecked(true);
    take("reader-dark-pages");
    selectLine(0, 400);
    take("reader-dark-pages-selection");
    actions.darkMode->setChecked(false);
    take("reader-selection");
    actions.rotateRight->trigger();
    take("reader-rotated");
    actions.rotateLeft->trigger();
    actions.fitPage->trigger();
    take("reader-fit-page");
    for (int i = 0; i < 6; ++i)
        actions.zoomIn->trigger();
    take("reader-zoomed");
    actions.fitWidth->trigger();
    actions.fullScreen->setChecked(true);
    take("reader-full-screen");
    actions.fullScreen->setChecked(false);
    m_window->resize(640, 720);
    take("reader-narrow");
    actions.sidebar->setChecked(false);
    take("reader-narrow-no-sidebar");
    actions.sidebar->setChecked(true);
    m_window->resize(kWindowSize);
}

void ReaderScenes::takeTroubles()
{
    const QString folder = m_stage.folder() + u"/Papers/a-folder-with-a-rather-long-name/drafts";
    openFile(folder + u"/gone-since-the-last-session.pdf");
    take("reader-missing");

    QFile locked(m_stage.folder() + u"/locked.pdf");
    if (locked.open(QIODevice::WriteOnly))
        locked.write(PdfBuilder().page({QStringLiteral("secret")}).lock(PdfLock::NeedsPassword).build());
    locked.close();
    openFile(locked.fileName());
    take("reader-password");
    m_window->opening().unlock(QStringLiteral("a guess"));
    take("reader-password-wrong");

    m_services.makeDocument = [](const QString &) {
        return std::make_unique<ReaderDocument>(
            [](const std::optional<QString> &, std::stop_token) -> Result<std::unique_ptr<PDFDocument>> {
                return pdfError(PDFErrorCode::EngineFailed, QStringLiteral("it has ended"));
            });
    };
    open(articleRequest());
    take("reader-failure");
    m_services.makeDocument = engineReaderDocument;

    openFile(m_stage.files().first()); // opened as a file, and found to be a paper
    openFile([this] {
        QFile apart(m_stage.folder() + u"/apart.pdf");
        if (apart.open(QIODevice::WriteOnly))
            apart.write(PdfBuilder().page({QStringLiteral("A letter that is no paper.")}).build());
        return apart.fileName();
    }());
    take("reader-no-outline");
    m_window->findChild<ReaderSidebar *>()->showPane(ReaderSidebar::Pane::Search);
    take("reader-not-in-library");
}

void ReaderScenes::takeDarkDesktop()
{
    const QPalette light = QApplication::palette();
    QApplication::setPalette(darkPalette());
    PDFOpenRequest passage = articleRequest();
    passage.page = 5;
    passage.highlightText = QLatin1String(kSampleArticlePassage);
    passage.searchText = QStringLiteral("rarer words");
    open(passage);
    take("reader-dark-desktop");
    m_window->actions().darkMode->setChecked(true);
    take("reader-dark-desktop-dark-pages");
    m_window->actions().darkMode->setChecked(false);
    openFile(m_stage.folder() + u"/gone.pdf");
    take("reader-dark-desktop-missing");
    QApplication::setPalette(light);
}

PDFOpenRequest ReaderScenes::articleRequest() const
{
    return {
        .id = QUuid::createUuid(), .url = QUrl::fromLocalFile(m_article.filepath), .paperId = m_article.id};
}

void ReaderScenes::open(const PDFOpenRequest &request)
{
    if (m_window)
        m_window->close(); // keeps its dark pages
    delete m_window;       // at once: outside of event handlers none would be deleted later
    m_window = openPDFViewerWindow(request, m_services);
    m_window->resize(kWindowSize);
    m_window->findChild<QSplitter *>()->setSizes(
        {ReaderSidebar::kWidth, kWindowSize.width() - ReaderSidebar::kWidth}); // the screen may be small
    m_window->activateWindow();
    while (m_window->opening().state.value().stage == DocumentOpening::Stage::Opening)
        Camera::settle(20);
    Camera::settle(200); // for the first jump
}

void ReaderScenes::untilSharp()
{
    while (m_window->view().isVisible() && !m_window->view().isSharp())
        Camera::settle(20);
}

void ReaderScenes::search(const QString &words)
{
    part<QLineEdit>("readerSearchField")->setText(words);
    m_window->controller().performSearch();
    while (m_window->controller().isSearching)
        Camera::settle(20);
}

void ReaderScenes::selectLine(qint64 pageIndex, double fromTop)
{
    PDFKitView &view = m_window->view();
    view.setCurrentSelection(std::nullopt, PDFView::Animate::No);
    view.goToPage(pageIndex);
    while (!view.currentSelection()) {
        view.startSelection({pageIndex, QPointF(100, fromTop)}, PDFTextUnit::Line);
        view.extendSelection({pageIndex, QPointF(100, fromTop + 14)});
        Camera::settle(20);
    }
}

void ReaderScenes::take(const char *name)
{
    Camera::settle(100);
    untilSharp();
    m_camera.take(m_window, QLatin1String(name));
}
