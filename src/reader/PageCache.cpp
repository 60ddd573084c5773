#include "reader/PageCache.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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
    std::vector<Entry> candidates;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(candidates), [&](const Entry &entry) {
        const auto &[scale, turns, isDark] = entry.tile.style;
        return entry.tile.page == page && turns == style.turns && isDark == style.isDark &&
               scale != style.scale;
    });
    if (candidates.empty())
        return {};
    const auto scaleOf = [](const Entry &entry) {
        return entry.tile.style.scale;
    };
    const double smallest = std::ranges::min(candidates, {}, scaleOf).tile.style.scale;
    const auto badnessOf = [&](const Entry &entry) {
        return badness(scaleOf(entry), style.scale);
    };
    const double nearest = std::ranges::min(candidates, {}, badnessOf).tile.style.scale;
    std::erase_if(candidates, [&](const Entry &entry) {
        return scaleOf(entry) != smallest && scaleOf(entry) != nearest;
    });
    std::ranges::stable_sort(candidates, {}, [&](const Entry &entry) { return scaleOf(entry) == nearest; });
    for (const Entry &entry : candidates)
        find(entry.tile);
    return candidates;
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
