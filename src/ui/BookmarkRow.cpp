#include "ui/BookmarkRow.h"

#include "ui/ClaimKeys.h"
#include "ui/Symbols.h"
#include "ui/WrappedLabel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QToolButton>

namespace
{
constexpr int kMarginPx = 8;
constexpr int kLineGapPx = 2;
constexpr int kIconPx = 16;
constexpr qreal kRadiusPx = 6;
// A bookmark may hold whole pages; the reader shows the rest.
constexpr int kTextLines = 6;
constexpr int kLabelLines = 2;
} // namespace

BookmarkRow::BookmarkRow(const Bookmark &bookmark, const QString &filepath, OpenReaderWindow openWindow,
                         QWidget *parent)
    : QAbstractButton(parent)
    , m_bookmark(bookmark)
    , m_filepath(filepath)
    , m_openWindow(std::move(openWindow))
{
    setObjectName(QStringLiteral("bookmarkRow"));
    setAccessibleName(QString(u"Bookmark on page " % QString::number(bookmark.page) %
                              (bookmark.label.isEmpty() ? QString() : QString(u": " % bookmark.label))));
    setAccessibleDescription(bookmark.text);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);

    auto *sides = new QHBoxLayout(this);
    sides->setContentsMargins(kMarginPx, kMarginPx, kMarginPx, kMarginPx);
    auto *lines = new QVBoxLayout;
    lines->setSpacing(kLineGapPx);
    addTexts(*lines);
    sides->addLayout(lines, 1);
    sides->addWidget(makeDeleteButton(), 0, Qt::AlignVCenter);
    addContextMenu();
    // From the keyboard and from screen readers; a single click of the mouse does nothing.
    connect(this, &QAbstractButton::clicked, this, &BookmarkRow::open);
}

void BookmarkRow::addTexts(QVBoxLayout &lines)
{
    const auto addLine = [&](const QString &name, const QString &text, const QFont &lineFont, int limit) {
        auto *line = new WrappedLabel(this);
        line->setObjectName(name);
        line->setFont(lineFont);
        line->setMaximumLines(limit);
        lines.addWidget(line);
        line->setWrappedText(text);
        return line;
    };
    QFont labelFont = captionFont(font());
    labelFont.setWeight(QFont::Medium);
    QFont textFont = captionFont(font());
    textFont.setItalic(true);
    addLine(QStringLiteral("bookmarkLabel"), m_bookmark.label, labelFont, kLabelLines);
    addLine(QStringLiteral("bookmarkText"), m_bookmark.text, textFont, kTextLines);
    const QString page = u"Page " % QString::number(m_bookmark.page) % u" — double-click to open";
    addLine(QStringLiteral("bookmarkPage"), page, smallCaptionFont(font()), 0)->setTone(TextTone::Secondary);
}

QWidget *BookmarkRow::makeDeleteButton()
{
    auto *button = new QToolButton(this);
    button->setObjectName(QStringLiteral("deleteBookmark"));
    button->setIcon(symbolIcon(Symbol::Delete));
    button->setIconSize({kIconPx, kIconPx});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus); // the row has Delete
    button->setAccessibleName(QStringLiteral("Delete bookmark"));
    button->setToolTip(QStringLiteral("Delete bookmark"));
    connect(button, &QToolButton::clicked, this, &BookmarkRow::deleteRequested);
    return button;
}

void BookmarkRow::addContextMenu()
{
    auto *remove = new QAction(symbolIcon(Symbol::Delete), QStringLiteral("Delete"), this);
    connect(remove, &QAction::triggered, this, &BookmarkRow::deleteRequested);
    addAction(remove);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

QSize BookmarkRow::sizeHint() const
{
    return layout()->sizeHint();
}

void BookmarkRow::open()
{
    m_openWindow({.id = QUuid::createUuid(),
                  .url = QUrl::fromLocalFile(m_filepath),
                  .page = m_bookmark.page,
                  .paperId = m_bookmark.paperId,
                  .searchText = {},
                  .highlightText = m_bookmark.text});
}

bool BookmarkRow::event(QEvent *event)
{
    return claimKeys(event, {Qt::Key_Delete, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) ||
           QAbstractButton::event(event);
}

void BookmarkRow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete)
        Q_EMIT deleteRequested();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void BookmarkRow::mousePressEvent(QMouseEvent *) {}

void BookmarkRow::mouseReleaseEvent(QMouseEvent *) {}

void BookmarkRow::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        open();
}

void BookmarkRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = palette().color(QPalette::WindowText);
    fill.setAlphaF(underMouse() ? 0.1F : 0.05F);
    painter.setBrush(fill);
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : QPen(Qt::NoPen));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadiusPx, kRadiusPx);
}
