#pragma once

#include <QString>

/// Marks the papers of the Currently Reading list; hidden wherever tags are listed.
inline constexpr char kCurrentlyReadingTag[] = "_currently_reading";
/// The tag of a paper that retagging left without any other visible tag.
inline constexpr char kUntaggedTag[] = "Untagged";

/// Names beginning with "_" belong to the program and are hidden from tag lists.
inline bool isReservedTag(const QString &name)
{
    return name.startsWith(u'_');
}
