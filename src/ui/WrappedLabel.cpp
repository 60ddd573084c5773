#include "ui/WrappedLabel.h"

#include "ui/WrappedText.h"

#include <QPainter>

WrappedLabel::WrappedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    // Not a fixed height: a layout would take that of the proposed width for the limit at every width.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void WrappedLabel::setWrappedText(const QString &text)
{
    setText(text);
    setVisible(!text.isEmpty());
    updateToolTip();
    updateGeometry();
}

void WrappedLabel::setMaximumLines(int lines)
{
    m_maximumLines = lines;
    updateGeometry();
}

void WrappedLabel::setTone(TextTone tone)
{
    m_tone = tone;
    update();
}

WrappedText WrappedLabel::wrapped() const
{
    return {.text = text(), .font = font(), .maximumLines = m_maximumLines, .direction = layoutDirection()};
}

int WrappedLabel::heightForWidth(int width) const
{
    return wrapped().heightForWidth(width);
}

QSize WrappedLabel::sizeHint() const
{
    constexpr int kWidth = 200; // what a narrow panel has room for; layouts ask heightForWidth
    return {kWidth, heightForWidth(kWidth)};
}

QSize WrappedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 4, fontMetrics().lineSpacing()};
}

void WrappedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(textColor(palette(), m_tone));
    wrapped().draw(painter, rect());
}

void WrappedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    updateToolTip();
}

void WrappedLabel::updateToolTip()
{
    setToolTip(wrapped().fits(width()) ? QString() : Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal));
}
