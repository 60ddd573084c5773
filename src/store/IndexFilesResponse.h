#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

/// What became of a batch of files.
struct IndexFilesResponse {
    QStringList indexed;           ///< ids of the papers, in the order in which they were done
    QMap<QString, QString> errors; ///< error text by path of each file that failed

    friend bool operator==(const IndexFilesResponse &, const IndexFilesResponse &) = default;
};
