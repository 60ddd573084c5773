#include "updates/UpdateCheck.h"

#include "platform/HttpClient.h"
#include "updates/Appcast.h"
#include "updates/InstalledProgram.h"
#include "updates/PackageDownload.h"
#include "updates/UpdateError.h"
#include "updates/UpdateTransfers.h"

namespace
{
bool isSuitable(const AppcastItem &item, const InstalledProgram &program)
{
    const bool isForThisSystem = item.operatingSystem.isEmpty() || item.operatingSystem == u"linux";
    return isForThisSystem && item.minimumSystem <= program.system && item.version > program.version;
}

Result<QByteArray> fetchFeed(HttpClient &http, const QUrl &address, const UpdateTimeouts &timeouts,
                             std::stop_token stop)
{
    QByteArray feed;
    const HttpStream request{.url = address,
                             .timeout = timeouts.feed,
                             .stallTimeout = timeouts.stall,
                             .mayAsk = isUpdateAddress,
                             .take = [&feed](const QByteArray &piece) -> Result<void> {
                                 if (feed.size() + piece.size() > kMaxFeedBytes)
                                     return updateError(UpdateErrorCode::BadFeed,
                                                        QStringLiteral("The update feed is too long"));
                                 feed.append(piece);
                                 return {};
                             }};
    const Result<void> fetched = http.stream(request, stop);
    return fetched ? Result<QByteArray>(feed) : fetched.error();
}

/// Whether it can be downloaded at all.
Result<void> checkOffer(const AppcastItem &item, const InstalledProgram &program)
{
    const QString version = u"Version " + item.displayVersion;
    if (item.signature.isEmpty())
        return updateError(UpdateErrorCode::NotSigned, version + u" is there, but refused: it is not signed");
    if (item.sizeBytes <= 0 || item.sizeBytes > kMaxPackageBytes)
        return updateError(UpdateErrorCode::BadLength,
                           version + u" is there, but refused: the feed tells no acceptable length of it");
    if (!program.key)
        return updateError(UpdateErrorCode::NoKey,
                           version + u" is there, but this build has no key to check it with. Get it where "
                                     u"you got this one");
    return {};
}
} // namespace

std::optional<AppcastItem> newestUpdate(const QList<AppcastItem> &items, const InstalledProgram &program)
{
    std::optional<AppcastItem> newest;
    for (const AppcastItem &item : items) {
        if (isSuitable(item, program) && (!newest || item.version > newest->version))
            newest = item;
    }
    return newest;
}

Result<std::optional<AppcastItem>> findUpdate(HttpClient &http, const QUrl &feed,
                                              const InstalledProgram &program, const UpdateTimeouts &timeouts,
                                              std::stop_token stop)
{
    const Result<QByteArray> text = fetchFeed(http, feed, timeouts, stop);
    if (!text)
        return text.error();
    const Result<QList<AppcastItem>> items = parseAppcast(*text);
    if (!items)
        return items.error();
    const std::optional<AppcastItem> update = newestUpdate(*items, program);
    const Result<void> isOffered = update ? checkOffer(*update, program) : Result<void>();
    return isOffered ? Result<std::optional<AppcastItem>>(update) : isOffered.error();
}
