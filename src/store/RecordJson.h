#pragma once

#include "base/Result.h"
#include "store/Bookmark.h"
#include "store/Paper.h"
#include "store/Passage.h"
#include "store/SearchResult.h"

#include <QJsonObject>

// The JSON forms of the records. A paper without a year has no "year" key.

QJsonObject toJson(const Paper &paper);
QJsonObject toJson(const SearchResult &result);
QJsonObject toJson(const Passage &passage);
QJsonObject toJson(const Bookmark &bookmark);

inline constexpr int kMissingKey = 1;
inline constexpr int kWrongType = 2;

/// The record in `object`; unknown keys are passed over. A missing key or a value of the wrong type fails
/// the whole record: domain "RecordJson", the codes above, the key in the reason.
template <typename Record> Result<Record> fromJson(const QJsonObject &object);
template <> Result<Paper> fromJson<Paper>(const QJsonObject &object);
template <> Result<SearchResult> fromJson<SearchResult>(const QJsonObject &object);
template <> Result<Passage> fromJson<Passage>(const QJsonObject &object);
template <> Result<Bookmark> fromJson<Bookmark>(const QJsonObject &object);
