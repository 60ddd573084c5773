#pragma once

#include <QStringList>

/// The tags of a paper for which `computed` was worked out from `base` while other hands made its tags
/// `current`: what they added is kept, what they took away stays away. The order is that of `computed`, then
/// of `current`.
QStringList mergedTags(const QStringList &base, const QStringList &computed, const QStringList &current);
