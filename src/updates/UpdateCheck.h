#pragma once

#include "base/Result.h"
#include "updates/AppcastItem.h"

#include <QList>
#include <optional>
#include <stop_token>

class HttpClient;
struct InstalledProgram;
struct UpdateTimeouts;

/// The newest of `items` that is for this system; none when that is no newer than `program`.
std::optional<AppcastItem> newestUpdate(const QList<AppcastItem> &items, const InstalledProgram &program);

/// Asks the feed at `feed` for the newest version that can be downloaded; none when `program` is up to date.
/// Blocks. Fails as `HttpClient::stream` and `parseAppcast` do, and when the newest version is not signed
/// (NotSigned), this build could not check it (NoKey), or its length is none (BadLength): an older one in its
/// place would only hide that.
Result<std::optional<AppcastItem>> findUpdate(HttpClient &http, const QUrl &feed,
                                              const InstalledProgram &program, const UpdateTimeouts &timeouts,
                                              std::stop_token stop = {});
