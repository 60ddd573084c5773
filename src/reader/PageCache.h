#pragma once

#include "reader/PageTile.h"

#include <QImage>
#include <list>
#include <vector>

/// Bytes of page pictures kept: four 4K screens in 32-bit colour.
inline constexpr qsizetype kPageCacheBytes = qsizetype(4) * 3840 * 2160 * 4;

/// The pictures of pages that were drawn; those not looked at for longest go first. Never holds more bytes
/// than its limit, not for a moment.
class PageCache
{
public:
    struct Entry {
        PageTile tile;
        QImage picture;
    };

    explicit PageCache(qsizetype limitBytes = kPageCacheBytes);

    qsizetype limitBytes() const { return m_limitBytes; }
    qsizetype bytes() const { return m_bytes; }

    void clear();
    /// Takes a picture unless it alone is beyond the limit.
    void insert(const PageTile &tile, const QImage &picture);
    bool contains(const PageTile &tile) const;
    /// Looks at a picture; null when there is none. Valid until the next insertion.
    const QImage *find(const PageTile &tile);
    /// Looks at the pictures of `page` that stand in until those in `style` are there, in the order in which
    /// to paint them: of the smallest scale, which are likely to show the whole page, then of the nearest,
    /// larger ones preferred.
    std::vector<Entry> standIns(qint64 page, const PageStyle &style);

private:
    using Entries = std::list<Entry>;

    Entries::iterator entryOf(const PageTile &tile);
    void makeRoom(qsizetype bytes);

    qsizetype m_limitBytes;
    qsizetype m_bytes = 0;
    Entries m_entries; ///< the one looked at last first; tens, so nothing is indexed
};
