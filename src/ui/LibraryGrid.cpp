#include "ui/LibraryGrid.h"

#include "app/LibraryViewModel.h"
#include "ui/CoverCache.h"
#include "ui/PaperGrid.h"

#include <QScrollBar>
#include <QVBoxLayout>

PDFOpenRequest openRequestForPaper(const Paper &paper)
{
    return {.id = QUuid::createUuid(),
            .url = QUrl::fromLocalFile(paper.filepath),
            .page = std::nullopt,
            .paperId = paper.id,
            .searchText = std::nullopt,
            .highlightText = std::nullopt};
}

LibraryGrid::LibraryGrid(LibraryViewModel &vm, CoverCache &covers, OpenReaderWindow openWindow,
                         QWidget *parent)
    : QWidget(parent)
    , m_vm(vm)
    , m_grid(new PaperGrid(vm, covers, CardKind::Paper, this))
{
    setObjectName(QStringLiteral("libraryGrid"));
    m_grid->setObjectName(QStringLiteral("papers"));
    m_grid->setAccessibleName(QStringLiteral("Papers"));
    setFocusProxy(m_grid);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_grid);

    connect(m_grid, &PaperGrid::selected, this, [this](int row) {
        m_vm.select(row < 0 ? std::nullopt : std::optional(m_grid->papers().paper(row)));
    });
    connect(m_grid, &PaperGrid::opened, this,
            [this, openWindow](int row) { openWindow(openRequestForPaper(m_grid->papers().paper(row))); });

    m_observers.push_back(m_vm.filteredPapers.addNotifier([this] { showPapers(); }));
    m_observers.push_back(m_vm.selectedPaper.addNotifier([this] { showSelection(); }));
    m_observers.push_back(m_vm.scrollToId.addNotifier([this] { scrollToWanted(); }));
    m_observers.push_back(m_vm.isLoading.addNotifier([this] {
        if (!m_vm.isLoading)
            m_grid->recheckFiles();
        scrollToWanted();
    }));
    showPapers();
    showSelection();
}

void LibraryGrid::showPapers()
{
    Subject subject{m_vm.currentSidebarItem, ParsedQuery(m_vm.queryText)};
    subject.filters.fullText.clear();
    m_grid->papers().setPapers(m_vm.filteredPapers);
    if (std::exchange(m_shown, subject) != subject)
        m_grid->verticalScrollBar()->setValue(0);
    scrollToWanted();
}

void LibraryGrid::showSelection()
{
    const std::optional<Paper> selected = m_vm.selectedPaper;
    m_grid->selectPaper(selected ? selected->id : QString());
}

void LibraryGrid::scrollToWanted()
{
    const std::optional<QString> wanted = m_vm.scrollToId;
    if (!wanted)
        return;
    // A paper that is yet to be loaded is waited for.
    if (m_grid->scrollToPaper(*wanted) || !m_vm.isLoading)
        m_vm.scrollToId = std::nullopt;
}
