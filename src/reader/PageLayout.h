#pragma once

#include <QRectF>
#include <QSizeF>
#include <QtGlobal>
#include <map>
#include <optional>
#include <vector>

/// Pages from `first` up to and including `last`; none when `last` is less.
struct PageRange {
    qint64 first = 0;
    qint64 last = -1;

    bool contains(qint64 page) const { return page >= first && page <= last; }
    friend bool operator==(const PageRange &, const PageRange &) = default;
};

/// Where every page lies in one continuous vertical flow: arithmetic, not a walk over pages.
///
/// The flow is measured in pixels that do not depend on the screen's density; its x axis starts on the line
/// through the middle of all pages, its y axis at the top. `scale` is pixels of the flow a point; the gaps do
/// not grow with it. Page sizes become known bit by bit: until then a page has the size of the first one that
/// became known. Memory follows what is known, never what a document claims to have.
class PageLayout
{
public:
    /// Above the first page, between two pages and below the last one. Chosen.
    static constexpr double kGap = 12;
    /// Sizes are asked for and summed up in blocks of so many pages.
    static constexpr qint64 kBlockPages = 64;

    explicit PageLayout(qint64 pageCount = 0);

    qint64 pageCount() const { return m_pageCount; }
    /// Whether anything is known of any page, be it that its size cannot be had.
    bool hasSizes() const { return !m_blocks.empty(); }
    bool isKnown(qint64 page) const;

    /// Sizes in points of the pages from `first` on; a page without one keeps the assumed size.
    void learn(qint64 first, const std::vector<std::optional<QSizeF>> &sizes);

    /// Turns all pages by quarters, clockwise.
    void setTurns(int turns);
    int turns() const { return m_turns; }

    /// In points, turned.
    QSizeF size(qint64 page) const;
    QSizeF unturnedSize(qint64 page) const;

    /// Of the widest page that is known, in points.
    double greatestWidth() const { return m_greatestWidth; }

    QRectF rect(qint64 page, double scale) const;
    double height(double scale) const;
    /// The page at `y`, or the one whose lower edge is the next above it; only for a flow with pages.
    qint64 pageAt(double y, double scale) const;
    /// The pages that have a part between the two.
    PageRange pagesBetween(double top, double bottom, double scale) const;

private:
    struct Block {
        std::vector<std::optional<QSizeF>> sizes;
        std::vector<bool> isKnown;
        std::vector<double> extraBefore; ///< within the block, by page; one more than there are pages
        double blocksExtraBefore = 0;    ///< of all blocks above
    };

    QSizeF turned(QSizeF size) const;
    double top(qint64 page, double scale) const;
    /// How many points the pages above `page` are higher than if all had the assumed size.
    double extraAbove(qint64 page) const;
    const Block *blockOf(qint64 page) const;
    void sumUp();

    qint64 m_pageCount;
    int m_turns = 0;
    std::optional<QSizeF> m_assumedSize; ///< unturned
    std::map<qint64, Block> m_blocks;    ///< those of which something is known
    double m_greatestWidth = 0;
};
