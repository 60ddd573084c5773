#include "ui/PaperDetailPanel.h"

#include "app/DesktopFileOpener.h"
#include "store/BookmarkEvents.h"
#include "ui/BookmarksTab.h"
#include "ui/DetailsView.h"
#include "ui/EmptyState.h"

#include <QTabWidget>

namespace
{
EmptyState *makeEmptyState(QWidget *parent)
{
    return new EmptyState({.title = QStringLiteral("Select a Paper"),
                           .text = QStringLiteral("Choose a paper from the library to see details."),
                           .symbol = Symbol::Document},
                          parent);
}
} // namespace

PaperDetailPanel::Surroundings PaperDetailPanel::Surroundings::ofTheProcess()
{
    static const SystemClock clock;
    return {DesktopFileOpener::shared(), clock, BookmarkEvents::shared()};
}

PaperDetailPanel::PaperDetailPanel(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                                   QWidget *parent, Surroundings with)
    : QStackedWidget(parent)
    , m_vm(vm)
    , m_details(new DetailsView({vm, covers, with.files, with.clock}))
    , m_bookmarks(new BookmarksTab(vm, with.bookmarkEvents, std::move(openWindow)))
    , m_tabs(new QTabWidget(this))
    , m_paperObserver(vm.selectedPaper.addNotifier([this] { showSelectedPaper(); }))
{
    setObjectName(QStringLiteral("paperDetailPanel"));
    m_tabs->setAccessibleName(QStringLiteral("Details and bookmarks"));
    setAccessibleName(QStringLiteral("Paper details"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_details, QStringLiteral("Details"));
    m_tabs->addTab(m_bookmarks, QStringLiteral("Bookmarks"));
    addWidget(makeEmptyState(this));
    addWidget(m_tabs);
    showSelectedPaper();
}

void PaperDetailPanel::showSelectedPaper()
{
    const std::optional<Paper> paper = m_vm.selectedPaper;
    if (paper) {
        m_details->setPaper(*paper);
        m_bookmarks->setPaper(*paper);
        setCurrentWidget(m_tabs);
    } else {
        m_details->dropEdit();
        setCurrentIndex(0);
    }
}

void PaperDetailPanel::beginEditing()
{
    if (currentWidget() != m_tabs)
        return;
    m_tabs->setCurrentWidget(m_details);
    m_details->beginEditing();
}

void PaperDetailPanel::focusTagField()
{
    if (currentWidget() != m_tabs)
        return;
    m_tabs->setCurrentWidget(m_details);
    m_details->focusTagField();
}
