#include "ui/LibraryView.h"

#include "app/LibraryViewModel.h"
#include "ui/EmptyState.h"
#include "ui/LibraryGrid.h"
#include "ui/SearchField.h"
#include "ui/SearchResultsView.h"

#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace
{
const EmptyState::Texts &loading()
{
    static const EmptyState::Texts texts{QStringLiteral("Loading library…"), {}, {}};
    return texts;
}

const EmptyState::Texts &noMatches()
{
    static const EmptyState::Texts texts{
        QStringLiteral("No Matches"), QStringLiteral("No papers match your filter."), Symbol::DocumentSearch};
    return texts;
}

const EmptyState::Texts &noPapers()
{
    static const EmptyState::Texts texts{QStringLiteral("No Papers"),
                                         QStringLiteral("Index a folder of PDFs to get started."),
                                         Symbol::Document};
    return texts;
}
} // namespace

LibraryView::LibraryView(LibraryViewModel &vm, CoverCache &covers, const OpenReaderWindow &openWindow,
                         QWidget *parent)
    : QWidget(parent)
    , m_vm(vm)
    , m_searchField(new SearchField(vm, this))
    , m_content(new QStackedWidget(this))
    , m_grid(new LibraryGrid(vm, covers, openWindow, m_content))
    , m_results(new SearchResultsView(vm, covers, openWindow, m_content))
    , m_emptyState(new EmptyState(noPapers(), m_content))
{
    setObjectName(QStringLiteral("libraryView"));
    m_emptyState->setObjectName(QStringLiteral("libraryEmptyState"));
    m_emptyState->setBackgroundRole(QPalette::Base); // as the grid's
    m_emptyState->setAutoFillBackground(true);
    m_content->addWidget(m_grid);
    m_content->addWidget(m_results);
    m_content->addWidget(m_emptyState);
    layOut();
    connect(m_searchField, &SearchField::leaving, this, &LibraryView::focusContent);
    observe();
    showContent();
}

QList<PaperGrid *> LibraryView::grids() const
{
    return {m_grid->cards(), m_results->cards()};
}

void LibraryView::layOut()
{
    auto *searchBar = new QVBoxLayout;
    searchBar->setContentsMargins(12, 8, 12, 8);
    searchBar->addWidget(m_searchField);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(searchBar);
    layout->addWidget(m_content, 1);
}

void LibraryView::observe()
{
    const auto show = [this] {
        showContent();
    };
    m_observers.push_back(m_vm.isSearching.addNotifier(show));
    m_observers.push_back(m_vm.isLoading.addNotifier(show));
    m_observers.push_back(m_vm.filteredPapers.addNotifier(show));
    m_observers.push_back(m_vm.queryText.addNotifier(show));
}

void LibraryView::showContent()
{
    if (m_vm.isSearching) {
        m_content->setCurrentWidget(m_results);
        return;
    }
    if (!m_vm.filteredPapers.value().isEmpty()) {
        m_content->setCurrentWidget(m_grid);
        return;
    }
    const bool isWaiting = m_vm.isLoading && m_vm.papers.value().isEmpty();
    const bool hasQuery = !m_vm.queryText.value().trimmed().isEmpty();
    m_emptyState->setTexts(isWaiting ? loading() : hasQuery ? noMatches() : noPapers());
    m_content->setCurrentWidget(m_emptyState);
}

void LibraryView::focusContent()
{
    m_content->currentWidget()->setFocus(Qt::OtherFocusReason);
}

void LibraryView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape || m_vm.queryText.value().isEmpty())
        return QWidget::keyPressEvent(event);
    m_vm.queryText = QString();
    focusContent();
}
