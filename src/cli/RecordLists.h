#pragma once

#include "store/RecordJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QList>

/// The records' own JSON forms as one array.
template <typename Record> QJsonDocument asJson(const QList<Record> &records)
{
    QJsonArray array;
    for (const Record &record : records)
        array.append(toJson(record));
    return QJsonDocument(array);
}
