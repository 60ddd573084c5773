#pragma once

#include "indexing/BookRecord.h"

#include <optional>
#include <stop_token>

/// Where books are looked up by ISBN. Call from any thread.
class BookService
{
public:
    virtual ~BookService() = default;

    /// The record of a book, or nothing. Never fails: what goes wrong is logged. Blocks, for two seconds at
    /// most; `stop` ends it early.
    virtual std::optional<BookRecord> lookupBook(const QString &isbn, std::stop_token stop) = 0;
};
