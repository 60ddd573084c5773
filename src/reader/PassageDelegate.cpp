#include "reader/PassageDelegate.h"

#include "reader/Fonts.h"
#include "reader/PassageRow.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace
{
constexpr int kMargin = 8;
constexpr int kGap = 2;
/// Lines of a passage that are shown; the tool tip has all of it. Chosen: a snippet of ten words fits.
constexpr int kMostLines = 4;
constexpr int kMarkWidth = 3;

const PassageRow &rowOf(const QModelIndex &index)
{
    return static_cast<const PassageListModel *>(index.model())->row(index);
}

QFont smaller(const QFont &font)
{
    return scaledFont(font, 0.9);
}

QFont titleFont(QFont font)
{
    font.setWeight(QFont::Medium);
    return font;
}

QList<QTextLayout::FormatRange> formatsOf(const PassageRow &row)
{
    QList<QTextLayout::FormatRange> formats;
    int start = 0;
    for (const SnippetSpan &span : row.text) {
        QTextCharFormat format;
        format.setFontWeight(span.isMatch ? QFont::Bold : QFont::Normal);
        format.setFontItalic(row.isItalic);
        formats.append({start, int(span.text.size()), format});
        start += int(span.text.size());
    }
    return formats;
}

/// The first lines of the passage, broken to `width`. Answers their height.
qreal layOut(QTextLayout &layout, const PassageRow &row, int width)
{
    QTextOption wrapping(Qt::AlignLeading);
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapping);
    layout.setText(row.plainText().replace(u'\n', u' ')); // a line end would be a line of its own
    layout.setFormats(formatsOf(row));
    layout.beginLayout();
    qreal height = 0;
    for (int i = 0; i < kMostLines; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

int widthOf(const QStyleOptionViewItem &option)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    return std::max(40, (view ? view->viewport()->width() : option.rect.width()) - 2 * kMargin);
}
} // namespace

QSize PassageDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const PassageRow &row = rowOf(index);
    const int width = widthOf(option);
    QTextLayout layout({}, option.font);
    const qreal text = layOut(layout, row, width);
    const int title = row.title.isEmpty() ? 0 : QFontMetrics(titleFont(option.font)).height() + kGap;
    const int place = QFontMetrics(smaller(option.font)).height() + kGap;
    return {width, 2 * kMargin + title + int(std::ceil(text)) + place};
}

void PassageDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    const PassageRow &row = rowOf(index);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QStyle &style = *option.widget->style();
    painter->save();
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
    if (row.isCurrent)
        painter->fillRect(QRect(option.rect.left(), option.rect.top(), kMarkWidth, option.rect.height()),
                          option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight));

    QRect rest = option.rect.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QColor color = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    painter->setPen(color);
    if (!row.title.isEmpty()) {
        painter->setFont(titleFont(option.font));
        const QFontMetrics metrics = painter->fontMetrics();
        painter->drawText(rest, Qt::AlignLeading | Qt::AlignTop,
                          metrics.elidedText(row.title, Qt::ElideRight, rest.width()));
        rest.setTop(rest.top() + metrics.height() + kGap);
    }
    QTextLayout layout({}, option.font);
    const qreal height = layOut(layout, row, rest.width());
    layout.draw(painter, rest.topLeft());
    rest.setTop(rest.top() + int(std::ceil(height)) + kGap);

    QColor faint = color;
    faint.setAlphaF(isSelected ? 0.85F : 0.7F);
    painter->setPen(faint);
    painter->setFont(smaller(option.font));
    painter->drawText(rest, Qt::AlignLeading | Qt::AlignTop, row.place);
    if (option.state.testFlag(QStyle::State_HasFocus) &&
        option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(option);
        style.drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
    }
    painter->restore();
}
