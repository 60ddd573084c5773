#include "ui/BookmarksTab.h"

#include "store/BookmarkEvents.h"
#include "ui/BookmarkRow.h"
#include "ui/WrappedLabel.h"

#include <QVBoxLayout>

namespace
{
constexpr int kMarginPx = 16;
constexpr int kSpacingPx = 8;

WrappedLabel *makeLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *label = new WrappedLabel(parent);
    label->setObjectName(name);
    label->setWrappedText(text);
    return label;
}
} // namespace

BookmarksTab::BookmarksTab(LibraryViewModel &vm, BookmarkEvents &events, OpenReaderWindow openWindow,
                           QWidget *parent)
    : QScrollArea(parent)
    , m_vm(vm)
    , m_events(events)
    , m_openWindow(std::move(openWindow))
{
    setObjectName(QStringLiteral("bookmarks"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto *column = new QWidget(this);
    auto *heading = makeLabel(QStringLiteral("bookmarksHeading"), QStringLiteral("Bookmarks"), column);
    heading->setFont(headingFont(font()));
    m_empty = makeLabel(QStringLiteral("noBookmarks"), QStringLiteral("No bookmarks yet"), column);
    m_empty->setTone(TextTone::Secondary);
    auto *sections = new QVBoxLayout(column);
    sections->setContentsMargins(kMarginPx, kMarginPx, kMarginPx, kMarginPx);
    sections->setSpacing(kSpacingPx);
    sections->addWidget(heading);
    sections->addWidget(m_empty);
    m_rows = new QVBoxLayout;
    m_rows->setSpacing(kSpacingPx);
    sections->addLayout(m_rows);
    sections->addStretch();
    setWidget(column);
    m_observers.push_back(vm.bookmarks.addNotifier([this] { showBookmarks(); }));
    m_observers.push_back(events.bindableLastChange().addNotifier([this] { loadAfterChange(); }));
}

void BookmarksTab::setPaper(const Paper &paper)
{
    const bool isSame = paper.id == m_paper.id && paper.filepath == m_paper.filepath;
    m_paper = paper;
    if (isSame)
        return;
    m_isLoaded = false;
    showBookmarks();
    if (isVisible())
        load();
}

void BookmarksTab::showEvent(QShowEvent *event)
{
    QScrollArea::showEvent(event);
    if (!m_isLoaded)
        load();
}

void BookmarksTab::load()
{
    m_isLoaded = true;
    m_vm.loadBookmarks(m_paper.id);
}

void BookmarksTab::loadAfterChange()
{
    const auto change = m_events.lastChange();
    if (m_isLoaded && change && change->paperId == m_paper.id)
        load();
}

void BookmarksTab::showBookmarks()
{
    QList<Bookmark> bookmarks = m_vm.bookmarks;
    // What another paper's load left behind is not shown.
    bookmarks.removeIf([this](const Bookmark &bookmark) { return bookmark.paperId != m_paper.id; });
    m_empty->setVisible(bookmarks.isEmpty());
    const int focused = takeRows();
    for (const Bookmark &bookmark : std::as_const(bookmarks)) {
        BookmarkRow *row = makeRow(bookmark);
        m_rows->addWidget(row);
        row->show(); // a child added to a visible parent else shows, and takes the focus, only later
    }
    if (focused >= 0 && m_rows->count() > 0)
        m_rows->itemAt(qMin(focused, m_rows->count() - 1))->widget()->setFocus(Qt::OtherFocusReason);
}

// Answers which row had the focus, or -1. A row may be at work on the very event that led here, so it goes
// later.
int BookmarksTab::takeRows()
{
    int focused = -1;
    for (int i = 0; m_rows->count() > 0; ++i) {
        const std::unique_ptr<QLayoutItem> item(m_rows->takeAt(0));
        if (item->widget()->hasFocus())
            focused = i;
        item->widget()->hide();
        item->widget()->deleteLater();
    }
    return focused;
}

BookmarkRow *BookmarksTab::makeRow(const Bookmark &bookmark)
{
    auto *row = new BookmarkRow(bookmark, m_paper.filepath, m_openWindow, widget());
    connect(row, &BookmarkRow::deleteRequested, this, [this, id = bookmark.id] { m_vm.deleteBookmark(id); });
    return row;
}
