#pragma once

#include "base/Result.h"
#include "store/Paper.h"

#include <QHashFunctions>
#include <QList>
#include <QString>
#include <optional>

class NativeLibraryService;
class Preferences;

/// What the sidebar can select.
struct SidebarItem {
    enum class Kind { Tag, All, CurrentlyReading, RecentlyImported };

    Kind kind = Kind::All;
    QString tag; ///< the name, of a tag; else empty

    static SidebarItem ofTag(const QString &name) { return {Kind::Tag, name}; }

    bool isTag() const { return kind == Kind::Tag; }
    friend bool operator==(const SidebarItem &, const SidebarItem &) = default;
};

size_t qHash(const SidebarItem &item, size_t seed = 0);

/// The tag that the item's papers carry; absent when the item is not about a tag (all papers, or the
/// recently imported ones, which are chosen by date).
std::optional<QString> tagFilter(const SidebarItem &item);

/// The papers of the item in the store's order. The recently imported ones are those of the last import that
/// the preferences know of. Blocks.
Result<QList<Paper>> papersOf(const SidebarItem &item, NativeLibraryService &library,
                              const Preferences &preferences);
