#include "updates/UpdateTransfers.h"

#include <QString>

bool isUpdateAddress(const QUrl &address)
{
    if (address.scheme() == u"https")
        return true;
    const QString host = address.host();
    return address.scheme() == u"http" && (host == u"127.0.0.1" || host == u"::1" || host == u"localhost");
}
