#pragma once

#include <QString>

/// A failure as a value. Callers branch on `domain` and `code`; `description` and `reason` are for people.
struct Error {
    QString domain;      ///< who failed: "DatabaseManager", "PDFIndexer"...
    int code = 0;        ///< what failed, as the domain numbers it
    QString description; ///< what happened, a fixed text for each code where the domain defines one
    QString reason;      ///< why, when more is known; empty otherwise

    /// The whole sentence to show: the description, then the reason when there is one.
    QString message() const { return reason.isEmpty() ? description : description + u": " + reason; }

    friend bool operator==(const Error &, const Error &) = default;
};

/// The failure of work that a stop token ended; every layer reports it in this one form.
Error cancelledError();
bool isCancelled(const Error &error);
