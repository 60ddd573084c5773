#include "pdf/PDFPageText.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
double gap(double first, double last, double value)
{
    return std::max({first - value, value - last, 0.0});
}

double distance(const QRectF &box, QPointF point)
{
    return std::hypot(gap(box.left(), box.right(), point.x()), gap(box.top(), box.bottom(), point.y()));
}

/// Characters without width have boxes too, which QRectF takes for nothing when it unites.
QRectF united(const QRectF &a, const QRectF &b)
{
    if (a.isNull())
        return b;
    QRectF whole;
    whole.setCoords(std::min(a.left(), b.left()), std::min(a.top(), b.top()), std::max(a.right(), b.right()),
                    std::max(a.bottom(), b.bottom()));
    return whole;
}

/// Whether a box goes on where a rectangle of the same line ends: not more than a character away.
bool continues(const QRectF &rectangle, const QRectF &box)
{
    const double reach = std::max(box.width(), box.height());
    return box.left() - rectangle.right() <= reach && rectangle.left() - box.right() <= reach &&
           box.top() - rectangle.bottom() <= reach && rectangle.top() - box.bottom() <= reach;
}
} // namespace

PDFPageText::PDFPageText(const QString &text, const QList<QRectF> &boxes)
    : m_text(text)
    , m_boxes(boxes)
{
    Q_ASSERT(text.size() == boxes.size());
}

PDFTextRange PDFPageText::clamped(PDFTextRange range) const
{
    const qsizetype start = std::clamp<qsizetype>(range.start, 0, m_text.size());
    return {start, std::clamp(range.end, start, m_text.size())};
}

QString PDFPageText::string(PDFTextRange range) const
{
    const PDFTextRange inside = clamped(range);
    return m_text.mid(inside.start, inside.end - inside.start);
}

QRectF PDFPageText::bounds(PDFTextRange range) const
{
    const PDFTextRange inside = clamped(range);
    QRectF whole;
    for (qsizetype i = inside.start; i < inside.end; ++i) {
        if (!m_boxes[i].isNull())
            whole = united(whole, m_boxes[i]);
    }
    return whole;
}

QList<QRectF> PDFPageText::lineRectangles(PDFTextRange range) const
{
    const PDFTextRange inside = clamped(range);
    QList<QRectF> rectangles;
    QRectF current;
    const auto finish = [&] {
        if (!current.isNull())
            rectangles.append(current);
        current = {};
    };
    for (qsizetype i = inside.start; i < inside.end; ++i) {
        if (m_boxes[i].isNull()) {
            finish();
            continue;
        }
        if (!current.isNull() && !continues(current, m_boxes[i]))
            finish();
        current = united(current, m_boxes[i]);
    }
    finish();
    return rectangles;
}

std::optional<qsizetype> PDFPageText::characterAt(QPointF point) const
{
    // The boxes of close lines overlap: the one whose middle is nearer holds the point.
    std::optional<qsizetype> found;
    double nearest = 0;
    for (qsizetype i = 0; i < m_boxes.size(); ++i) {
        if (m_boxes[i].isNull() || !m_boxes[i].contains(point))
            continue;
        const double away = std::abs(m_boxes[i].center().y() - point.y());
        if (!found || away < nearest) {
            found = i;
            nearest = away;
        }
    }
    return found;
}

std::optional<qsizetype> PDFPageText::nearestIn(PDFTextRange range, QPointF point) const
{
    std::optional<qsizetype> found;
    double nearest = 0;
    for (qsizetype i = range.start; i < range.end; ++i) {
        if (m_boxes[i].isNull())
            continue;
        const double away = distance(m_boxes[i], point);
        if (!found || away < nearest) {
            found = i;
            nearest = away;
        }
    }
    return found;
}

PDFTextRange PDFPageText::lineBeside(PDFTextRange line, QPointF point) const
{
    const QRectF column = bounds(line);
    PDFTextRange found = line;
    double nearest = std::numeric_limits<double>::infinity();
    for (qsizetype start = 0; start < m_text.size();) {
        const PDFTextRange other = lineAt(start);
        const QRectF box = bounds(other);
        const double away = std::abs(box.center().y() - point.y());
        const bool isBeside = !box.isNull() && box.top() <= point.y() && point.y() <= box.bottom();
        if (isBeside && box.left() <= column.right() && column.left() <= box.right() && away < nearest) {
            found = other;
            nearest = away;
        }
        start = other.end + 1;
    }
    return found;
}

std::optional<qsizetype> PDFPageText::nearestCharacter(QPointF point) const
{
    if (const std::optional<qsizetype> hit = characterAt(point))
        return hit;
    const std::optional<qsizetype> nearest = nearestIn({0, m_text.size()}, point);
    return nearest ? nearestIn(lineBeside(lineAt(*nearest), point), point) : nearest;
}

qsizetype PDFPageText::characterStart(qsizetype index) const
{
    return index > 0 && m_text[index].isLowSurrogate() ? index - 1 : index;
}

qsizetype PDFPageText::characterEnd(qsizetype index) const
{
    const bool isPair = m_text[index].isHighSurrogate() && index + 1 < m_text.size();
    return isPair ? index + 2 : index + 1;
}

QPointF PDFPageText::directionAt(qsizetype index) const
{
    const auto standsAt = [this](qsizetype i) {
        return i >= 0 && i < m_boxes.size() && !m_boxes[i].isNull();
    };
    const auto centre = [this](qsizetype i) {
        return m_boxes[i].center();
    };
    const qsizetype next = characterEnd(index);
    if (standsAt(next) && centre(next) != centre(index))
        return centre(next) - centre(index);
    if (standsAt(index - 1) && centre(index - 1) != centre(index))
        return centre(index) - centre(index - 1);
    return {1, 0};
}

qsizetype PDFPageText::caretAt(QPointF point) const
{
    const std::optional<qsizetype> nearest = nearestCharacter(point);
    if (!nearest)
        return 0;
    const qsizetype character = characterStart(*nearest);
    const bool isBehindMiddle =
        QPointF::dotProduct(point - m_boxes[character].center(), directionAt(character)) > 0;
    return isBehindMiddle ? characterEnd(character) : character;
}

PDFTextRange PDFPageText::lineAt(qsizetype index) const
{
    if (m_text.isEmpty())
        return {};
    const qsizetype inside = std::clamp<qsizetype>(index, 0, m_text.size() - 1);
    const qsizetype before = inside == 0 ? -1 : m_text.lastIndexOf(u'\n', inside - 1);
    const qsizetype end = m_text.indexOf(u'\n', inside);
    return {before + 1, end < 0 ? m_text.size() : end};
}

PDFTextRange PDFPageText::wordAt(qsizetype index) const
{
    const PDFTextRange line = lineAt(index);
    if (line.isEmpty())
        return line;
    const qsizetype inside = std::clamp(index, line.start, line.end - 1) - line.start;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, m_text.constData() + line.start,
                               line.end - line.start);
    finder.setPosition(inside);
    const qsizetype start = finder.isAtBoundary() ? inside : finder.toPreviousBoundary();
    finder.setPosition(inside);
    const qsizetype end = finder.toNextBoundary();
    return {line.start + start, end < 0 ? line.end : line.start + end};
}

PDFTextRange PDFPageText::unitAt(qsizetype index, PDFTextUnit unit) const
{
    return unit == PDFTextUnit::Word ? wordAt(index) : lineAt(index);
}

PDFTextRange PDFPageText::rangeBetween(QPointF from, QPointF to, PDFTextUnit unit) const
{
    if (unit == PDFTextUnit::Character) {
        const auto [start, end] = std::minmax({caretAt(from), caretAt(to)});
        return {start, end};
    }
    const std::optional<qsizetype> first = nearestCharacter(from);
    const std::optional<qsizetype> last = nearestCharacter(to);
    if (!first || !last)
        return {};
    const PDFTextRange a = unitAt(*first, unit);
    const PDFTextRange b = unitAt(*last, unit);
    return {std::min(a.start, b.start), std::max(a.end, b.end)};
}
