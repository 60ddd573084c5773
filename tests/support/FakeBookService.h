#pragma once

#include "indexing/BookService.h"

#include <QMap>
#include <QStringList>
#include <mutex>

/// Knows the books that a test gives it. Ask from any thread.
class FakeBookService : public BookService
{
public:
    QMap<QString, BookRecord> books;
    /// The ISBNs that were asked for.
    QStringList asked;

    std::optional<BookRecord> lookupBook(const QString &isbn, std::stop_token) override
    {
        const std::scoped_lock lock(m_mutex);
        asked.append(isbn);
        return books.contains(isbn) ? std::optional(books.value(isbn)) : std::nullopt;
    }

private:
    std::mutex m_mutex;
};
