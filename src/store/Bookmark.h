#pragma once

#include <QString>

/// One saved passage of a paper. Identified by `id`.
struct Bookmark {
    QString id;
    QString paperId;
    QString text;
    qint64 page = 1;   ///< 1-based
    QString label;     ///< empty when the user left it blank
    QString createdAt; ///< as stored: UTC, whole seconds

    friend bool operator==(const Bookmark &, const Bookmark &) = default;
};

/// A new random id in the form in which bookmarks store it: upper case, with hyphens, 36 characters.
QString newBookmarkId();
