#pragma once

#include "base/Result.h"
#include "updates/AppcastItem.h"

#include <QByteArray>
#include <QList>

/// The longest feed that is read, and the most elements in one. Chosen: a feed of a hundred versions with
/// long notes has a tenth of either.
inline constexpr qsizetype kMaxFeedBytes = 1024 * 1024;
inline constexpr int kMaxFeedElements = 10'000;
/// The most attributes, counted by their equals signs: each of an element is compared with all its others.
/// Measured: one element with so many takes half a second, one that fills the longest feed about a minute.
inline constexpr qsizetype kMaxFeedAttributes = 10'000;
/// Release notes are cut here: some 1,300 words. Measured: Markdown of twice as many characters, chosen to
/// hurt, holds the window up for 3 seconds.
inline constexpr qsizetype kMaxNotesCharacters = 8 * 1024;

/// The versions that a feed offers, in its order.
///
/// A feed is RSS 2.0. Of each `item` in its `channel` these are read; all else is passed over:
/// - `version`, and for people `shortVersionString`, as elements or as attributes of the enclosure;
/// - `minimumSystemVersion`;
/// - `description`: the notes, plain text unless its attribute `format` is "markdown";
/// - `enclosure` with `url`, `length`, `edSignature` (Ed25519 in base64 over the file's bytes) and `os`.
/// What is not RSS's own may be in any namespace. Items whose versions cannot be compared, or that have no
/// enclosure, are left out.
///
/// Fails with BadFeed in the domain "Updater" on what is not well-formed to its end, exceeds the limits, or
/// declares a document type: nothing that could define an entity is read at all.
Result<QList<AppcastItem>> parseAppcast(const QByteArray &feed);
