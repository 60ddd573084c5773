#include "systemsearch/ItemFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// A power cut may cost the latest publications but not the file, and the log does not keep the size that the
/// first publication gave it.
constexpr const char *kTuning[] = {
    "PRAGMA synchronous = NORMAL",
    "PRAGMA journal_size_limit = 4194304",
};

constexpr const char *kSchema[] = {
    "CREATE TABLE items (\n"
    "    number INTEGER PRIMARY KEY,\n"
    "    id TEXT NOT NULL UNIQUE,\n"
    "    digest INTEGER NOT NULL,\n" // of everything that was published, to tell what is unchanged
    "    domain TEXT NOT NULL,\n"
    "    content_type TEXT NOT NULL,\n"
    "    title TEXT NOT NULL,\n"
    "    names TEXT NOT NULL,\n"    // one a line
    "    keywords TEXT NOT NULL,\n" // one a line, reserved ones included
    "    tags TEXT NOT NULL,\n"     // those of them that people may see
    "    description TEXT NOT NULL,\n"
    "    created TEXT,\n"
    "    year TEXT NOT NULL\n"
    ")",
    // Without the description, of which a search needs no index (see ItemSearch). No column sizes, because
    // ranks do not come from word counts. Prefixes of three letters leave few enough words to merge while a
    // search runs.
    "CREATE VIRTUAL TABLE words USING fts5(title, names, tags, year,\n"
    "    content='items', content_rowid='number', columnsize=0, prefix='1 2 3',\n"
    "    tokenize='unicode61 remove_diacritics 2')",
    "CREATE TRIGGER item_added AFTER INSERT ON items BEGIN\n"
    "    INSERT INTO words (rowid, title, names, tags, year)\n"
    "    VALUES (new.number, new.title, new.names, new.tags, new.year);\n"
    "END",
    "CREATE TRIGGER item_removed AFTER DELETE ON items BEGIN\n"
    "    INSERT INTO words (words, rowid, title, names, tags, year)\n"
    "    VALUES ('delete', old.number, old.title, old.names, old.tags, old.year);\n"
    "END",
    "CREATE TRIGGER item_changed AFTER UPDATE ON items BEGIN\n"
    "    INSERT INTO words (words, rowid, title, names, tags, year)\n"
    "    VALUES ('delete', old.number, old.title, old.names, old.tags, old.year);\n"
    "    INSERT INTO words (rowid, title, names, tags, year)\n"
    "    VALUES (new.number, new.title, new.names, new.tags, new.year);\n"
    "END",
};

/// Keeps other processes from making or throwing away the file meanwhile: a lock on its folder, since a lock
/// on the file would go with the file. Held for moments, so there is no waiting with a limit. Where the
/// folder cannot be locked two processes may meet, which costs a publication.
class FolderLock
{
public:
    explicit FolderLock(const QString &file)
        : m_folder(
              open(QFile::encodeName(QFileInfo(file).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (m_folder >= 0)
            flock(m_folder, LOCK_EX);
    }
    ~FolderLock()
    {
        if (m_folder >= 0)
            close(m_folder);
    }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    int m_folder;
};

Error otherVersion(const QString &path)
{
    return {QStringLiteral("ItemFile"), 1,
            QStringLiteral("The system search index is of another version of the program"), path};
}

Result<void> makeTables(SideDatabase &database)
{
    const QString version = QStringLiteral("PRAGMA user_version = %1").arg(ItemFile::kVersion);
    // The log lets searches go on during a publication.
    for (const char *sql : {"PRAGMA journal_mode = WAL", "BEGIN IMMEDIATE"}) {
        if (auto done = database.execute(QLatin1String(sql)); !done)
            return done;
    }
    for (const char *sql : kSchema) {
        if (auto done = database.execute(QLatin1String(sql)); !done)
            return done;
    }
    auto done = database.execute(version);
    return done ? database.execute(QStringLiteral("COMMIT")) : done;
}

} // namespace

ItemFile::ItemFile(const QString &path)
    : m_path(path)
{
}

Result<SideDatabase *> ItemFile::forWriting()
{
    if (!isCurrent()) {
        if (const Result<void> opened = openOrMake(); !opened)
            return opened.error();
    }
    return &*m_database;
}

Result<SideDatabase *> ItemFile::forReading()
{
    if (!isCurrent()) {
        if (const Result<void> opened = open(kReaderTimeout); !opened)
            return opened.error();
    }
    return &*m_database;
}

bool ItemFile::discardIfDamaged(const Error &error)
{
    if (!SideDatabase::isDamage(error))
        return false;
    const FolderLock lock(m_path);
    const bool isStillDamaged = isCurrent();
    close();
    if (isStillDamaged)
        removeFiles();
    return true;
}

std::optional<ItemFile::Identity> ItemFile::identity() const
{
    struct stat status = {};
    if (stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return {};
    return Identity(status.st_dev, status.st_ino);
}

bool ItemFile::isCurrent() const
{
    return m_database && m_opened == identity();
}

/// Opens a file that is there and can be used.
Result<void> ItemFile::open(std::chrono::milliseconds busyTimeout)
{
    close();
    // Before it is opened: should it be replaced in between, it will not be taken for current.
    m_opened = identity();
    Result<SideDatabase> database = SideDatabase::open(m_path, SideDatabase::Missing::Fail, busyTimeout);
    if (!database)
        return database.error();
    const Result<qint64> version = database->number(QStringLiteral("PRAGMA user_version"));
    if (!version)
        return version.error();
    if (*version != kVersion)
        return otherVersion(m_path);
    for (const char *sql : kTuning) {
        if (auto done = database->execute(QLatin1String(sql)); !done)
            return done;
    }
    m_database = std::move(*database);
    return {};
}

Result<void> ItemFile::openOrMake()
{
    if (const Result<void> opened = open(kBusyTimeout); opened)
        return opened;
    QDir().mkpath(QFileInfo(m_path).absolutePath()); // a failure shows when the file is made
    const FolderLock lock(m_path);
    // Another process may have made it by now.
    const Result<void> opened = open(kBusyTimeout);
    const bool canBeMade =
        !opened && (SideDatabase::isDamage(opened.error()) || SideDatabase::isUnopenable(opened.error()) ||
                    opened.error() == otherVersion(m_path));
    return canBeMade ? make() : opened;
}

Result<void> ItemFile::make()
{
    close();
    removeFiles();
    {
        Result<SideDatabase> made = SideDatabase::open(m_path, SideDatabase::Missing::Create, kBusyTimeout);
        if (!made)
            return made.error();
        if (const Result<void> done = makeTables(*made); !done)
            return done;
    }
    return open(kBusyTimeout);
}

void ItemFile::close()
{
    m_database.reset();
    m_opened.reset();
}

void ItemFile::removeFiles()
{
    // The log first: beside a new file it would be taken for that one's.
    for (const char *suffix : {"-wal", "-shm", ""})
        QFile::remove(m_path + QLatin1String(suffix));
}
