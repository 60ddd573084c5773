#pragma once

#include "base/Result.h"
#include "platform/Ed25519.h"
#include "updates/AppcastItem.h"
#include "updates/UpdateTransfers.h"

#include <QString>
#include <functional>
#include <stop_token>

class HttpClient;

/// The longest package that is downloaded. Chosen: ten times what one has with all that it needs, and it has
/// to fit into memory while its signature is checked.
inline constexpr qint64 kMaxPackageBytes = 512 * 1024 * 1024;

/// Downloads packages, and keeps none but those that the holder of the key signed.
struct PackageDownload {
    HttpClient &http;
    Ed25519PublicKey key;
    QString folder; ///< for packages; made where it is missing
    UpdateTimeouts timeouts;

    /// Hears on the calling thread how many bytes have arrived.
    using Progress = std::function<void(qint64 receivedBytes)>;

    /// Downloads the package of `item` and answers the path of its file, which is named after the version and
    /// replaces nothing. Blocks. Fails as `HttpClient::stream` and `NewFile` do; with BadLength or
    /// WrongSignature when it is not the package that was announced. Of what fails, nothing stays.
    Result<QString> run(const AppcastItem &item, const Progress &progress, std::stop_token stop = {}) const;
};

/// How the file of a package at `url` ends, such as ".deb"; empty when it is none that is known. The rest of
/// the address has no say in what the file is called.
QString packageEnding(const QUrl &url);
