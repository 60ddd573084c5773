#include "store/BookmarkEvents.h"

#include <QMetaObject>

BookmarkEvents &BookmarkEvents::shared()
{
    static BookmarkEvents events;
    return events;
}

void BookmarkEvents::post(const QString &paperId)
{
    const Change change{paperId, QUuid::createUuid()};
    // Automatic connection: a direct call on the object's own thread, a queued one from any other.
    QMetaObject::invokeMethod(this, [this, change] { m_lastChange = change; });
}
