#include "reader/PageCache.h"

#include <algorithm>
#include <cmath>

namespace
{
/// How badly a picture drawn at `scale` stands in for one at `wanted`: what is too small is blurred.
double badness(double scale, double wanted)
{
    const double octaves = std::log2(scale / wanted);
    return octaves < 0 ? -2 * octaves : octaves;
}
} // namespace

PageCache::PageCache(qsizetype limitBytes)
    : m_limitBytes(limitBytes)
{
}

void PageCache::clear()
{
    m_entries.clear();
    m_bytes = 0;
}

void PageCache::insert(const PageTile &tile, const QImage &picture)
{
    if (const auto old = entryOf(tile); old != m_entries.end()) {
        m_bytes -= old->picture.sizeInBytes();
        m_entries.erase(old);
    }
    if (picture.sizeInBytes() > m_limitBytes)
        return;
    makeRoom(picture.sizeInBytes());
    m_entries.push_front({tile, picture});
    m_bytes += picture.sizeInBytes();
}

bool PageCache::contains(const PageTile &tile) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry &e) { return e.tile == tile; });
}

const QImage *PageCache::find(const PageTile &tile)
{
    const auto found = entryOf(tile);
    if (found == m_entries.end())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, found);
    return &found->picture;
}

std::vector<PageCache::Entry> PageCache::standIns(qint64 page, const PageStyle &style)
{
    const auto couldStandIn = [&](const PageTile &tile) {
        return tile.page == page && tile.style.turns == style.turns && tile.style.isDark == style.isDark &&
               tile.style.scale != style.scale;
    };
    std::optional<double> best;
    for (const Entry &entry : m_entries) {
        const double scale = entry.tile.style.scale;
        if (couldStandIn(entry.tile) && (!best || badness(scale, style.scale) < badness(*best, style.scale)))
            best = scale;
    }
    std::vector<Entry> found;
    for (const Entry &entry : m_entries) {
        if (couldStandIn(entry.tile) && entry.tile.style.scale == best)
            found.push_back(entry);
    }
    for (const Entry &entry : found)
        find(entry.tile);
    return found;
}

PageCache::Entries::iterator PageCache::entryOf(const PageTile &tile)
{
    return std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry &e) { return e.tile == tile; });
}

void PageCache::makeRoom(qsizetype bytes)
{
    while (m_bytes + bytes > m_limitBytes) {
        m_bytes -= m_entries.back().picture.sizeInBytes();
        m_entries.pop_back();
    }
}
