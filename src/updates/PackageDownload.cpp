#include "updates/PackageDownload.h"

#include "platform/HttpClient.h"
#include "platform/NewFile.h"
#include "updates/UpdateError.h"

#include <array>

namespace
{
Error badLength(const AppcastItem &item, const QString &reason)
{
    return updateError(UpdateErrorCode::BadLength,
                       u"The package of version " + item.displayVersion + u" was refused", reason);
}

Result<void> receive(HttpClient &http, const AppcastItem &item, const UpdateTimeouts &timeouts, NewFile &file,
                     const PackageDownload::Progress &progress, std::stop_token stop)
{
    const auto take = [&](const QByteArray &piece) -> Result<void> {
        if (file.sizeBytes() + piece.size() > item.sizeBytes)
            return badLength(item, QStringLiteral("it is longer than the feed says"));
        Result<void> written = file.write(piece);
        if (written)
            progress(file.sizeBytes());
        return written;
    };
    const Result<void> received = http.stream({.url = item.url,
                                               .timeout = timeouts.package,
                                               .stallTimeout = timeouts.stall,
                                               .mayAsk = isUpdateAddress,
                                               .take = take},
                                              stop);
    if (received && file.sizeBytes() != item.sizeBytes)
        return badLength(item, QStringLiteral("it ends too early"));
    return received;
}
} // namespace

Result<QString> PackageDownload::run(const AppcastItem &item, const Progress &progress,
                                     std::stop_token stop) const
{
    Result<NewFile> file = NewFile::begin(folder);
    if (!file)
        return file.error();
    const Result<void> received = receive(http, item, timeouts, *file, progress, stop);
    if (!received)
        return received.error();
    // What the disk has is checked, not what the network brought.
    const Result<QByteArray> content = file->content();
    if (!content)
        return content.error();
    if (!key.verifies(*content, item.signature))
        return updateError(UpdateErrorCode::WrongSignature,
                           u"The package of version " + item.displayVersion + u" was refused",
                           QStringLiteral("its signature is not that of its makers"));
    if (stop.stop_requested())
        return cancelledError();
    return file->keepAs(u"quirevault-" + item.version.text(), packageEnding(item.url));
}

QString packageEnding(const QUrl &url)
{
    static constexpr std::array kEndings{".deb", ".rpm",    ".flatpak", ".AppImage",
                                         ".zip", ".tar.gz", ".tar.xz",  ".tar.zst"};
    for (const char *ending : kEndings) {
        if (url.path().endsWith(QLatin1String(ending), Qt::CaseInsensitive))
            return QLatin1String(ending);
    }
    return {};
}
