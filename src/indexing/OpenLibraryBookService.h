#pragma once

#include "base/Result.h"
#include "indexing/BookService.h"

class HttpClient;

/// Looks books up in Open Library.
class OpenLibraryBookService : public BookService
{
public:
    /// Time given to one look-up, an unreachable service included.
    static constexpr std::chrono::milliseconds kTimeout{2000};

    /// `baseAddress` is scheme and host, for example "https://openlibrary.org"; when it is empty, every
    /// look-up answers nothing without asking anybody. `http` must outlive the service.
    OpenLibraryBookService(HttpClient &http, const QString &baseAddress);

    /// The base address that the environment variable QUIREVAULT_OPENLIBRARY_URL names (empty to switch
    /// look-ups off), by default Open Library's own.
    static QString configuredAddress();

    std::optional<BookRecord> lookupBook(const QString &isbn, std::stop_token stop) override;

private:
    HttpClient &m_http;
    QString m_baseAddress;
};

/// The record of book `isbn` in an answer of the service: nothing when the answer does not hold one, an
/// error in the domain "OpenLibrary" when it is not JSON.
Result<std::optional<BookRecord>> parseBookAnswer(const QByteArray &answer, const QString &isbn);
