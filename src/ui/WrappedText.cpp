#include "ui/WrappedText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

namespace
{

// More than fits on a line of any screen. A bookmark may hold a whole chapter, and laying that out to show
// its beginning would hold the window up.
constexpr int kCharactersALine = 800;

// The texts of the lines, in order.
QStringList linesOf(const WrappedText &wrapped, const QString &text, int width,
                    QTextOption::WrapMode mode = QTextOption::WrapAtWordBoundaryOrAnywhere)
{
    if (text.isEmpty())
        return {};
    QTextLayout layout(text, wrapped.font);
    QTextOption option;
    option.setWrapMode(mode);
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    QStringList lines;
    const auto isFull = [&] {
        return wrapped.maximumLines > 0 && lines.size() > wrapped.maximumLines;
    };
    for (QTextLine line = layout.createLine(); line.isValid() && !isFull(); line = layout.createLine()) {
        line.setLineWidth(qMax(1, width));
        lines.append(text.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines;
}

bool isTooLong(const WrappedText &wrapped, const QStringList &lines)
{
    return wrapped.maximumLines > 0 && lines.size() > wrapped.maximumLines;
}

// Beginning and end with an ellipsis between, in the lines that there are.
QStringList elidedInTheMiddle(const WrappedText &wrapped, int width)
{
    const QFontMetrics metrics(wrapped.font);
    // A line that breaks anywhere leaves up to a character of its width empty.
    for (int room = wrapped.maximumLines * width; room > 0; room -= metrics.maxWidth()) {
        const QString elided = metrics.elidedText(wrapped.text, Qt::ElideMiddle, room);
        const QStringList lines = linesOf(wrapped, elided, width, QTextOption::WrapAnywhere);
        if (!isTooLong(wrapped, lines))
            return lines;
    }
    return {};
}

QString layoutText(const WrappedText &wrapped)
{
    if (wrapped.elide == Qt::ElideMiddle)
        return wrapped.text;
    QString text = wrapped.maximumLines > 0 ? wrapped.text.left(kCharactersALine * (wrapped.maximumLines + 1))
                                            : wrapped.text;
    return text.replace(u'\n', QChar::LineSeparator);
}

QStringList shownLines(const WrappedText &wrapped, int width)
{
    QStringList lines = linesOf(wrapped, layoutText(wrapped), width);
    if (!isTooLong(wrapped, lines))
        return lines;
    if (wrapped.elide == Qt::ElideMiddle)
        return elidedInTheMiddle(wrapped, width);
    // The line after the last one that shows gives the ellipsis something to stand for.
    const QString last = lines.takeLast();
    const QString rest = lines.last() + last;
    lines.last() = QFontMetrics(wrapped.font).elidedText(rest, Qt::ElideRight, width);
    return lines;
}

} // namespace

int WrappedText::heightForWidth(int width) const
{
    return static_cast<int>(shownLines(*this, width).size()) * QFontMetrics(font).lineSpacing();
}

bool WrappedText::fits(int width) const
{
    return !isTooLong(*this, linesOf(*this, layoutText(*this), width));
}

void WrappedText::draw(QPainter &painter, const QRect &bounds) const
{
    painter.setFont(font);
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const int lineHeight = QFontMetrics(font).lineSpacing();
    // Absolute: the window says on which side lines begin, the text in which order its words run.
    const auto alignment =
        QStyle::visualAlignment(direction, Qt::AlignLeft) | Qt::AlignVCenter | Qt::AlignAbsolute;
    QRect row(bounds.topLeft(), QSize(bounds.width(), lineHeight));
    for (const QString &line : shownLines(*this, bounds.width())) {
        painter.drawText(row, static_cast<int>(alignment) | Qt::TextSingleLine, line.trimmed());
        row.translate(0, lineHeight);
    }
}
