#pragma once

#include <QString>
#include <QStringList>
#include <optional>

/// What a book-metadata service knows of one book.
struct BookRecord {
    QString title;              ///< empty when unknown
    QString authors;            ///< names joined with ", "; empty when unknown
    std::optional<qint64> year; ///< of publication
    QStringList subjects;

    friend bool operator==(const BookRecord &, const BookRecord &) = default;
};
