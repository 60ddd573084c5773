#include "ui/EmptyState.h"

#include "reader/Fonts.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace
{
/// Side of the symbol: large enough to be seen first, and a size that icon themes draw for.
constexpr int kSymbolPx = 48;

QLabel *centredLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}
} // namespace

EmptyState::EmptyState(const Texts &texts, QWidget *parent)
    : QWidget(parent)
    , m_picture(new QLabel(this))
    , m_title(centredLabel(QStringLiteral("emptyStateTitle"), this))
    , m_text(centredLabel(QStringLiteral("emptyStateText"), this))
{
    m_title->setFont(boldFont(font(), 1.4));
    m_text->setForegroundRole(QPalette::PlaceholderText);
    m_picture->setAlignment(Qt::AlignCenter);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 24, 24, 24);
    layout->setSpacing(8);
    layout->addStretch(2);
    layout->addWidget(m_picture);
    layout->addWidget(m_title);
    layout->addWidget(m_text);
    layout->addStretch(3); // a little above the middle looks like the middle
    setTexts(texts);
}

void EmptyState::setTexts(const Texts &texts)
{
    m_title->setText(texts.title);
    m_text->setText(texts.text);
    m_text->setVisible(!texts.text.isEmpty());
    m_symbol = texts.symbol;
    drawSymbol();
    setAccessibleName(texts.title);
    setAccessibleDescription(texts.text);
}

void EmptyState::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        drawSymbol();
}

void EmptyState::drawSymbol()
{
    m_picture->setVisible(m_symbol.has_value());
    if (m_symbol)
        m_picture->setPixmap(symbolIcon(*m_symbol).pixmap(QSize(kSymbolPx, kSymbolPx), devicePixelRatioF()));
}
