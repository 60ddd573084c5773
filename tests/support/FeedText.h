#pragma once

#include "support/SigningKey.h"

#include <QByteArray>
#include <QString>

/// An item of an update feed as its makers write it; empty parts are left out.
struct FeedItem {
    QByteArray version = "2.0";
    QByteArray url = "https://updates.example/quirevault_2.0_amd64.deb";
    QByteArray length = "1000";
    QByteArray signature = QByteArray(64, 's').toBase64();
    QByteArray more = {}; ///< elements beside the enclosure

    QByteArray text() const
    {
        QByteArray text = "<item><title>Version " + version + "</title>" + more;
        if (!version.isEmpty())
            text += "<q:version>" + version + "</q:version>";
        text += "<enclosure type=\"application/octet-stream\" url=\"" + url + '"';
        if (!length.isEmpty())
            text += " length=\"" + length + '"';
        if (!signature.isEmpty())
            text += " q:edSignature=\"" + signature + '"';
        return text + "/></item>";
    }
};

inline QByteArray feedOf(const QByteArray &items)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<rss version=\"2.0\" "
           "xmlns:q=\"https://quirevault.org/ns/appcast\"><channel><title>Quirevault</title>" +
           items + "</channel></rss>";
}

/// The item that offers these bytes, signed.
inline FeedItem itemFor(const QByteArray &package, const QString &url, const SigningKey &key)
{
    return {.url = url.toUtf8(),
            .length = QByteArray::number(package.size()),
            .signature = key.signatureOf(package).toBase64()};
}
