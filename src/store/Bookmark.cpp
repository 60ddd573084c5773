#include "store/Bookmark.h"

#include <QUuid>

QString newBookmarkId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}
