#include "reader/PassageFinder.h"

#include "base/TextClasses.h"
#include "reader/FoldedText.h"
#include "reader/NearestPoint.h"

#include <QHash>
#include <algorithm>
#include <memory>
#include <vector>

namespace
{

bool isAlphanumericAt(QStringView text, qsizetype index)
{
    const QChar unit = text[index];
    if (unit.isLowSurrogate() && index > 0)
        return isAlphanumeric(QChar::surrogateToUcs4(text[index - 1], unit));
    if (unit.isHighSurrogate() && index + 1 < text.size())
        return isAlphanumeric(QChar::surrogateToUcs4(unit, text[index + 1]));
    return isAlphanumeric(unit.unicode());
}

QStringView trimmedToAlphanumerics(QStringView piece)
{
    while (!piece.isEmpty() && !isAlphanumericAt(piece, 0))
        piece = piece.mid(1);
    while (!piece.isEmpty() && !isAlphanumericAt(piece, piece.size() - 1))
        piece.chop(1);
    return piece;
}

/// Every place where a word stands on a page, in the order of the text.
struct Occurrences {
    Occurrences(QList<PDFTextRange> where, const QList<QRectF> &boxes)
        : ranges(std::move(where))
        , bounds(boxes)
        , nearest(centresOf(boxes))
    {
    }

    static QList<QPointF> centresOf(const QList<QRectF> &boxes)
    {
        QList<QPointF> centres;
        for (const QRectF &box : boxes)
            centres.append(box.center());
        return centres;
    }

    QList<PDFTextRange> ranges;
    QList<QRectF> bounds;
    NearestPoint nearest;
};

/// Words of the passage that stand on the page near one of the first one's occurrences.
struct Chain {
    QList<PDFTextRange> members;
    double score = 0; ///< width and height of the rectangle around them
};

class Search
{
public:
    Search(const QString &passage, const PDFPageText &page, const std::stop_token &stop);
    std::optional<Chain> best() const;

private:
    std::shared_ptr<const Occurrences> occurrencesOf(const QString &word) const;
    std::optional<Chain> chainFrom(qsizetype anchor, const std::optional<Chain> &best) const;

    const PDFPageText &m_page;
    FoldedText m_text;
    const std::stop_token &m_stop;
    std::vector<std::shared_ptr<const Occurrences>>
        m_words; ///< those that the page has; some may be the same
};

Search::Search(const QString &passage, const PDFPageText &page, const std::stop_token &stop)
    : m_page(page)
    , m_text(page.string())
    , m_stop(stop)
{
    QHash<QString, std::shared_ptr<const Occurrences>> known;
    for (const QString &word : passageWords(passage)) {
        if (m_stop.stop_requested())
            return;
        const QString folded = FoldedText(word).string();
        auto place = known.find(folded);
        if (place == known.end())
            place = known.insert(folded, occurrencesOf(folded));
        if (!(*place)->ranges.isEmpty())
            m_words.push_back(*place);
    }
}

std::shared_ptr<const Occurrences> Search::occurrencesOf(const QString &word) const
{
    QList<PDFTextRange> ranges;
    QList<QRectF> boxes;
    const QString &text = m_text.string();
    for (qsizetype at = word.isEmpty() ? -1 : text.indexOf(word); at >= 0;
         at = text.indexOf(word, at + word.size())) {
        const PDFTextRange range{m_text.originalStart(at), m_text.originalEnd(at + word.size())};
        const QRectF bounds = m_page.bounds(range);
        if (bounds.isNull())
            continue; // text that stands nowhere cannot be shown
        ranges.append(range);
        boxes.append(bounds);
    }
    return std::make_shared<Occurrences>(ranges, boxes);
}

std::optional<Chain> Search::best() const
{
    std::optional<Chain> best;
    if (m_words.empty())
        return best;
    for (qsizetype anchor = 0; anchor < m_words.front()->ranges.size(); ++anchor) {
        if (m_stop.stop_requested())
            return std::nullopt;
        if (auto chain = chainFrom(anchor, best))
            best = std::move(chain);
    }
    return best;
}

/// The chain of one anchor when it is better than `best`.
std::optional<Chain> Search::chainFrom(qsizetype anchor, const std::optional<Chain> &best) const
{
    const Occurrences &first = *m_words.front();
    QRectF around = first.bounds[anchor];
    const QPointF centre = around.center();
    Chain chain{{first.ranges[anchor]}, around.width() + around.height()};
    int missing = 0;
    for (auto word = m_words.begin() + 1; word != m_words.end(); ++word) {
        const NearestPoint::Found near = (*word)->nearest.nearestTo(centre, kPassageReach);
        if (near.index < 0) {
            if (++missing > 1)
                return std::nullopt;
            continue;
        }
        chain.members.append((*word)->ranges[near.index]);
        around |= (*word)->bounds[near.index];
        chain.score = around.width() + around.height();
        if (best && chain.score >= best->score)
            return std::nullopt; // it only grows, and of equal ones the earlier wins
    }
    return best && chain.score >= best->score ? std::nullopt : std::optional(chain);
}

} // namespace

QStringList passageWords(const QString &passage)
{
    QStringList words;
    for (qsizetype at = 0; at < passage.size() && words.size() < kMostPassageWords;) {
        qsizetype end = at;
        while (end < passage.size() && !passage[end].isSpace())
            ++end;
        const QStringView word = trimmedToAlphanumerics(QStringView(passage).mid(at, end - at));
        if (word.toUcs4().size() > 2)
            words.append(word.toString());
        at = end + 1;
    }
    return words;
}

std::optional<PDFSelection> findPassage(const QString &passage, qint64 pageIndex, const PDFPageText &page,
                                        const std::stop_token &stop)
{
    const std::optional<Chain> chain = Search(passage, page, stop).best();
    if (!chain)
        return std::nullopt;
    PDFSelection selection;
    for (const PDFTextRange &member : chain->members)
        selection.add(PDFSelection(pageIndex, page, member));
    return selection;
}
