#pragma once

#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

/// One paper of the library with its tags. Identified by `id`.
struct Paper {
    QString id;
    QString title;
    QString authors; ///< one free text, not a list; empty when unknown
    std::optional<qint64> year;
    qint64 pageCount = 0; ///< 0 when unknown
    QString coverPath;    ///< empty when there is none
    QString filepath;
    QStringList tags; ///< in the order in which the store delivered them

    friend bool operator==(const Paper &, const Paper &) = default;
};

// A long list of papers grows by moving memory.
Q_DECLARE_TYPEINFO(Paper, Q_RELOCATABLE_TYPE);

/// Covers every field: a paper must not be edited while it is a key.
size_t qHash(const Paper &paper, size_t seed = 0);
