#include "ui/SearchResultsView.h"

#include "app/LibraryViewModel.h"
#include "reader/Fonts.h"
#include "search/PaperFilter.h"
#include "search/ParsedQuery.h"
#include "ui/CoverCache.h"
#include "ui/EmptyState.h"
#include "ui/PaperGrid.h"

#include <QLabel>
#include <QProgressBar>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace
{
/// Between the top and what is shown in place of results.
constexpr int kPlaceholderTop = 80;

/// A page that shows `content` at its top, in the middle.
QWidget *makePage(QWidget *content)
{
    auto *page = new QWidget;
    page->setAutoFillBackground(true);
    page->setBackgroundRole(QPalette::Base);
    content->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, kPlaceholderTop, 0, 0);
    layout->addWidget(content);
    layout->addStretch();
    return page;
}

QWidget *makeBusyIndicator()
{
    auto *progress = new QProgressBar;
    progress->setRange(0, 0);
    progress->setTextVisible(false);
    progress->setFixedSize(160, 6);
    progress->setAccessibleName(QStringLiteral("Searching…"));
    auto *indicator = new QWidget;
    auto *layout = new QVBoxLayout(indicator);
    layout->setContentsMargins({});
    layout->setSpacing(10);
    layout->addWidget(progress, 0, Qt::AlignHCenter);
    layout->addWidget(new QLabel(QStringLiteral("Searching…")), 0, Qt::AlignHCenter);
    return indicator;
}

QLabel *makeHeading()
{
    auto *heading = new QLabel(QStringLiteral("Search Results"));
    heading->setFont(boldFont(heading->font(), 1.4));
    heading->setContentsMargins(20, 16, 20, 0);
    heading->setAutoFillBackground(true);
    heading->setBackgroundRole(QPalette::Base);
    return heading;
}
} // namespace

Paper paperIn(const SearchResult &result)
{
    return {.id = result.paperId,
            .title = result.title,
            .authors = {},
            .year = std::nullopt,
            .pageCount = 0,
            .coverPath = result.coverPath,
            .filepath = result.filepath,
            .tags = {}};
}

PaperCard cardForResult(const SearchResult &result, const Paper *listed)
{
    PaperCard card;
    card.paper = listed ? *listed : paperIn(result);
    if (result.passages.isEmpty())
        return card;
    card.passage = result.passages.first().text;
    card.passagePage = result.passages.first().page;
    card.morePassages = int(result.passages.size()) - 1;
    return card;
}

QList<PaperCard> cardsForResults(const QList<SearchResult> &results, const QList<Paper> &papers)
{
    const QHash<QString, const Paper *> listed = papersOf(results, papers);
    QList<PaperCard> cards;
    cards.reserve(results.size());
    for (const SearchResult &result : results)
        cards.append(cardForResult(result, listed.value(result.paperId)));
    return cards;
}

PDFOpenRequest openRequestForResult(const SearchResult &result, const QString &fullText)
{
    const Passage passage =
        result.passages.isEmpty() ? Passage{.text = fullText, .page = 1} : result.passages.first();
    return {.id = QUuid::createUuid(),
            .url = QUrl::fromLocalFile(result.filepath),
            .page = passage.page,
            .paperId = result.paperId,
            .searchText = fullText,
            .highlightText = QString(passage.text).remove(QStringLiteral("...")).trimmed()};
}

SearchResultsView::SearchResultsView(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                                     QWidget *parent)
    : QWidget(parent)
    , m_vm(vm)
    , m_nothingFound(new EmptyState({}))
    , m_grid(new PaperGrid(vm, covers, CardKind::SearchResult))
{
    setObjectName(QStringLiteral("searchResultsView"));
    addPages();
    forwardInput(std::move(openWindow));
    observe();
    showResults();
    showSelection();
    showState();
}

void SearchResultsView::addPages()
{
    m_busy = makePage(makeBusyIndicator());
    m_busy->setObjectName(QStringLiteral("searching"));
    m_nothing = makePage(m_nothingFound);
    m_nothing->setObjectName(QStringLiteral("nothingFound"));
    m_grid->setObjectName(QStringLiteral("results"));
    m_grid->setAccessibleName(QStringLiteral("Search Results"));
    m_grid->setAnimatesChanges(true);
    setFocusProxy(m_grid);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(makeHeading());
    m_pages = new QStackedLayout;
    layout->addLayout(m_pages, 1);
    for (QWidget *page : {m_busy, m_nothing, static_cast<QWidget *>(m_grid)})
        m_pages->addWidget(page);
}

void SearchResultsView::forwardInput(OpenReaderWindow openWindow)
{
    connect(m_grid, &PaperGrid::selected, this, [this](int row) {
        m_vm.select(row < 0 ? std::nullopt : std::optional(m_grid->papers().paper(row)));
    });
    connect(m_grid, &PaperGrid::opened, this, [this, openWindow = std::move(openWindow)](int row) {
        const QList<SearchResult> results = m_vm.filteredSearchResults;
        if (row < results.size())
            openWindow(openRequestForResult(results.at(row), ParsedQuery(m_vm.queryText).fullText));
    });
}

void SearchResultsView::observe()
{
    m_observers.push_back(m_vm.filteredSearchResults.addNotifier([this] { showResults(); }));
    m_observers.push_back(m_vm.papers.addNotifier([this] { showResults(); }));
    m_observers.push_back(m_vm.queryText.addNotifier([this] { showState(); }));
    m_observers.push_back(m_vm.isLoading.addNotifier([this] { showState(); }));
    m_observers.push_back(m_vm.selectedPaper.addNotifier([this] { showSelection(); }));
}

void SearchResultsView::showResults()
{
    m_grid->papers().setCards(cardsForResults(m_vm.filteredSearchResults, m_vm.papers));
    showState();
}

void SearchResultsView::showSelection()
{
    const std::optional<Paper> selected = m_vm.selectedPaper;
    m_grid->selectPaper(selected ? selected->id : QString());
}

void SearchResultsView::showState()
{
    const QString fullText = ParsedQuery(m_vm.queryText).fullText;
    m_grid->setQuery(fullText);
    m_nothingFound->setTexts({.title = u"Nothing found for \"" + fullText + u"\"",
                              .text = QStringLiteral("No page of your papers holds these words."),
                              .symbol = Symbol::DocumentSearch});
    QWidget *page = m_grid;
    if (m_vm.isLoading)
        page = m_busy;
    else if (m_grid->papers().rowCount() == 0)
        page = m_nothing;
    m_pages->setCurrentWidget(page);
}
