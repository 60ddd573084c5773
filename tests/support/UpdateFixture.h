#pragma once

#include "platform/CurlHttpClient.h"
#include "support/FeedText.h"
#include "support/LoopbackServer.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"
#include "updates/InstalledProgram.h"

#include <QMap>
#include <functional>

/// A program of version 1.0, and a server on this machine with the feed and the packages of newer ones.
class UpdateFixture
{
public:
    // The server is on this machine, whatever proxy the environment names for others.
    UpdateFixture() { qputenv("no_proxy", "*"); }

    /// What the server answers at a path: whole answers, "404" for all that is not here.
    QMap<QByteArray, QByteArray> answers;
    /// Called before a request is answered; may answer it itself and then says so.
    std::function<bool(const LoopbackServer::Connection &)> intercept = [](const auto &) {
        return false;
    };

    void offer(const FeedItem &item) { answers["/feed.xml"] = httpAnswer("200 OK", feedOf(item.text())); }
    /// Puts these bytes on the server and offers them in the feed, signed.
    FeedItem offerPackage(const QByteArray &package)
    {
        answers["/package.deb"] = httpAnswer("200 OK", package);
        const FeedItem item = itemFor(package, server.address(QStringLiteral("/package.deb")), key);
        offer(item);
        return item;
    }

    QString feedAddress() const { return server.address(QStringLiteral("/feed.xml")); }

    SigningKey key;
    InstalledProgram program{.version = *DottedVersion::fromText(QStringLiteral("1.0")),
                             .system = *DottedVersion::fromText(QStringLiteral("2.36")),
                             .key = Ed25519PublicKey::fromBase64(key.publicKeyBase64())};
    CurlHttpClient http;
    TemporaryFolder folder;
    LoopbackServer server{[this](const LoopbackServer::Connection &connection) {
        if (intercept(connection))
            return;
        const QByteArray path = connection.request().split(' ').value(1);
        connection.send(answers.value(path, httpAnswer("404 Not Found", "no")));
    }};
};
