#pragma once

#include "store/SideDatabase.h"

#include <QString>
#include <optional>
#include <sys/types.h>
#include <utility>

/// The file in which the published items are kept for the search provider: a small database of its own, so
/// that a search never waits for the library, nor the library for a search. It holds nothing that the
/// library does not: a file that is damaged, or of another version of the program, is thrown away and filled
/// anew by the next publication.
///
/// Several processes may use the file at once. Use one object from one thread at a time.
class ItemFile
{
public:
    /// Raise it when the tables change: files of another number are thrown away.
    static constexpr int kVersion = 1;
    /// How long a statement waits for another process that writes. Chosen: longer than a first publication of
    /// 100,000 papers takes, and no longer than the end of a command may wait for it.
    static constexpr std::chrono::milliseconds kBusyTimeout{10'000};
    /// The same for a search, which must never wait long; with a write-ahead log readers do not wait.
    static constexpr std::chrono::milliseconds kReaderTimeout{100};

    explicit ItemFile(const QString &path);

    const QString &path() const { return m_path; }

    /// The file, opened and made if it has to be. Valid until the next call.
    Result<SideDatabase *> forWriting();
    /// The file, opened. Fails where there is none, or none of this version.
    Result<SideDatabase *> forReading();

    /// Throws the file away if `error`, which came from using it, says that it is damaged. Answers whether it
    /// did.
    bool discardIfDamaged(const Error &error);

private:
    using Identity = std::pair<dev_t, ino_t>;

    std::optional<Identity> identity() const;
    /// Whether what is open is what lies at the path: another process may have replaced it.
    bool isCurrent() const;
    Result<void> open(std::chrono::milliseconds busyTimeout);
    Result<void> openOrMake();
    Result<void> make();
    void close();
    void removeFiles();

    QString m_path;
    std::optional<SideDatabase> m_database;
    std::optional<Identity> m_opened;
};
