#pragma once

#include <QString>
#include <optional>

/// What the search field says: filters on a paper's fields, and the free text that is left.
struct ParsedQuery {
    ParsedQuery() = default;
    /// Never fails. Keys of filters are known in any case; values keep theirs.
    explicit ParsedQuery(const QString &text);

    QString fullText; ///< the words that are no filters, joined by single blanks; may be empty
    std::optional<QString> title;
    std::optional<QString> author;
    std::optional<QString> filename;
    std::optional<qint64> year;

    bool hasFieldFilters() const { return title || author || filename || year; }

    friend bool operator==(const ParsedQuery &, const ParsedQuery &) = default;
};
