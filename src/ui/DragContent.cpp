#include "ui/DragContent.h"

#include "ui/PaperListModel.h"

#include <QMimeData>
#include <QUrl>

bool isCardDrag(const QMimeData *data)
{
    return data->hasFormat(QLatin1String(kPaperIdsMimeType));
}

QStringList draggedPaperIds(const QMimeData *data)
{
    return QString::fromUtf8(data->data(QLatin1String(kPaperIdsMimeType))).split(u'\n', Qt::SkipEmptyParts);
}

QStringList draggedLocations(const QMimeData *data)
{
    // A card offers its file to other programs; dropped back here it is still a card.
    if (isCardDrag(data))
        return {};
    QStringList locations;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            locations.append(url.toLocalFile());
    }
    return locations;
}
