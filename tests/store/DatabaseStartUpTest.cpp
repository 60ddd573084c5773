#include "store/Database.h"
#include "support/Printing.h"
#include "support/RawDatabase.h"
#include "support/StatementRecorder.h"
#include "support/TemporaryFolder.h"

namespace
{
constexpr const char *kOldPapers =
    "CREATE TABLE papers (id TEXT PRIMARY KEY, title TEXT, authors TEXT, year INTEGER, filepath TEXT, "
    "cover_path TEXT, date_indexed TEXT, page_count INTEGER, chunk_count INTEGER DEFAULT 0);"
    "INSERT INTO papers (id, title, filepath) VALUES ('a', 'Alpha', '/a.pdf');";
constexpr const char *kOldChunks = "CREATE TABLE chunks (text TEXT);";
constexpr const char *kOldTagDefinitions = "CREATE TABLE tag_definitions (name TEXT PRIMARY KEY);";

// The schema as the file keeps it.
const auto kPapers = QStringLiteral("CREATE TABLE papers (\n"
                                    "    id TEXT PRIMARY KEY,\n"
                                    "    title TEXT,\n"
                                    "    authors TEXT,\n"
                                    "    year INTEGER,\n"
                                    "    filepath TEXT,\n"
                                    "    cover_path TEXT,\n"
                                    "    date_indexed TEXT,\n"
                                    "    page_count INTEGER,\n"
                                    "    chunk_count INTEGER DEFAULT 0,\n"
                                    "    content_hash TEXT\n"
                                    ")");
const auto kUpgradedPapers =
    QStringLiteral("CREATE TABLE papers (id TEXT PRIMARY KEY, title TEXT, authors TEXT, year INTEGER, "
                   "filepath TEXT, cover_path TEXT, date_indexed TEXT, page_count INTEGER, "
                   "chunk_count INTEGER DEFAULT 0, content_hash TEXT)");
const auto kHashIndex = QStringLiteral("CREATE INDEX idx_papers_content_hash ON papers(content_hash)");
const auto kTags = QStringLiteral("CREATE TABLE tags (paper_id TEXT, tag TEXT, PRIMARY KEY(paper_id, tag), "
                                  "FOREIGN KEY(paper_id) REFERENCES papers(id) ON DELETE CASCADE)");
const auto kTagDefinitions = QStringLiteral("CREATE TABLE tag_definitions (name TEXT PRIMARY KEY)");
const auto kBookmarks = QStringLiteral(
    "CREATE TABLE bookmarks (id TEXT PRIMARY KEY, paper_id TEXT, text TEXT, page INTEGER, label TEXT, "
    "created_at TEXT, FOREIGN KEY(paper_id) REFERENCES papers(id) ON DELETE CASCADE)");
const auto kFullText = QStringLiteral(
    "CREATE VIRTUAL TABLE fts_papers USING fts5(paper_id UNINDEXED, page_num UNINDEXED, content, "
    "tokenize='unicode61')");

/// The statement that creates what the file keeps as `schema`.
QString creating(QString schema)
{
    for (const auto kind : {QLatin1String("CREATE VIRTUAL TABLE "), QLatin1String("CREATE TABLE "),
                            QLatin1String("CREATE INDEX ")}) {
        if (schema.startsWith(kind))
            return schema.insert(kind.size(), QLatin1String("IF NOT EXISTS "));
    }
    return schema;
}

/// A library file as an earlier program left it.
QString oldLibrary(const TemporaryFolder &folder, const QByteArray &sql, int version)
{
    const QString path = folder.path(QStringLiteral("library.db"));
    RawDatabase raw(path);
    raw.run(sql.constData());
    raw.run(qPrintable(QStringLiteral("PRAGMA user_version = %1").arg(version)));
    return path;
}

QString schemaOf(const QString &path, const char *name)
{
    const QByteArray sql = QByteArray("SELECT sql FROM sqlite_master WHERE name = '") + name + "'";
    return RawDatabase(path).text(sql.constData());
}

QStringList columnsOfPapers(const QString &path)
{
    return RawDatabase(path).texts("SELECT name FROM pragma_table_info('papers')");
}

QString versionOf(const QString &path)
{
    return RawDatabase(path).text("PRAGMA user_version");
}

SqlValue pragma(Database &database, const char *name)
{
    const auto rows = database.query(QStringLiteral("PRAGMA %1").arg(QLatin1String(name)));
    const QLatin1String column(name);
    if (const auto number = rows->first().integer(column))
        return *number;
    return rows->first().text(column).value_or(QString());
}
} // namespace

TEST(DatabaseStartUp, RunsItsStatementsInTheirOrderOnANewFile)
{
    const TemporaryFolder folder;
    StatementRecorder statements;
    {
        const Database database(folder.path(QStringLiteral("library.db")));
    }

    // The column cannot be added before there is a table, which is why that statement never starts.
    const QStringList expected{
        QStringLiteral("PRAGMA journal_mode=WAL;"),
        QStringLiteral("PRAGMA synchronous=NORMAL;"),
        QStringLiteral("PRAGMA cache_size=10000;"),
        QStringLiteral("PRAGMA foreign_keys=ON;"),
        QStringLiteral("PRAGMA user_version"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS tag_definitions (name TEXT PRIMARY KEY);"),
        QStringLiteral("PRAGMA user_version = 7;"),
        QStringLiteral("DROP TABLE IF EXISTS chunks;"),
        QStringLiteral("VACUUM;"),
        QStringLiteral("PRAGMA user_version = 8;"),
        QStringLiteral("PRAGMA user_version = 9;"),
        creating(kPapers),
        creating(kHashIndex),
        creating(kTags),
        creating(kTagDefinitions),
        creating(kBookmarks),
        creating(kFullText) + u';',
    };
    // SQLite records what it runs for VACUUM and for the full-text table's own tables as well.
    QStringList seen = statements.all();
    seen.removeIf([&expected](const QString &sql) { return !expected.contains(sql); });
    EXPECT_EQ(seen, expected);
}

/// A file to start on, and what `papers` reads like afterwards.
struct StartingFile {
    const char *name;
    int version; ///< 0: there is no file yet
    QByteArray sql;
    QString papers;
};

class StartingOn : public ::testing::TestWithParam<StartingFile>
{
protected:
    void SetUp() override
    {
        if (GetParam().version > 0)
            oldLibrary(folder, GetParam().sql, GetParam().version);
    }

    TemporaryFolder folder;
    QString path = folder.path(QStringLiteral("library.db"));
};

TEST_P(StartingOn, EndsWithVersionNineAndExactlyItsSchema)
{
    {
        const Database database(path);
    }
    EXPECT_EQ(versionOf(path), u"9");
    // Without the index's own tables and the indexes that SQLite makes for primary keys.
    QStringList schema = RawDatabase(path).texts(
        "SELECT sql FROM sqlite_master WHERE name NOT GLOB 'fts_papers_*' AND sql IS NOT NULL");
    QStringList expected{GetParam().papers, kHashIndex, kTags, kTagDefinitions, kBookmarks, kFullText};
    schema.sort();
    expected.sort();
    EXPECT_EQ(schema, expected);
}

TEST_P(StartingOn, KeepsThePapersThatWereThere)
{
    {
        const Database database(path);
    }
    EXPECT_EQ(RawDatabase(path).texts("SELECT id || title || filepath FROM papers"),
              GetParam().version > 0 ? QStringList{QStringLiteral("aAlpha/a.pdf")} : QStringList());
}

TEST_P(StartingOn, TunesTheConnection)
{
    Database database(path);
    EXPECT_EQ(pragma(database, "journal_mode"), SqlValue(QStringLiteral("wal")));
    EXPECT_EQ(pragma(database, "synchronous"), SqlValue(qint64(1)));
    EXPECT_EQ(pragma(database, "cache_size"), SqlValue(qint64(10000)));
    EXPECT_EQ(pragma(database, "foreign_keys"), SqlValue(qint64(1)));
    const auto timeout = database.query(QStringLiteral("PRAGMA busy_timeout"));
    EXPECT_EQ(timeout->first().integer(QLatin1String("timeout")), 5000);
}

INSTANTIATE_TEST_SUITE_P(
    DatabaseStartUp, StartingOn,
    ::testing::Values(StartingFile{"NoFile", 0, {}, kPapers},
                      StartingFile{"Version6", 6, QByteArray(kOldPapers) + kOldChunks, kUpgradedPapers},
                      StartingFile{"Version7", 7, QByteArray(kOldPapers) + kOldChunks + kOldTagDefinitions,
                                   kUpgradedPapers},
                      StartingFile{"Version8", 8, QByteArray(kOldPapers) + kOldTagDefinitions,
                                   kUpgradedPapers}),
    [](const auto &file) { return std::string(file.param.name); });

TEST(DatabaseStartUp, TakesTheOldChunksOutOfAVersionSevenFile)
{
    const TemporaryFolder folder;
    const QString path =
        oldLibrary(folder,
                   (QByteArray(kOldPapers) + "CREATE TABLE chunks (text TEXT);"
                                             "INSERT INTO chunks VALUES (randomblob(100000));"),
                   7);
    const auto pages = [&path] {
        return RawDatabase(path).text("PRAGMA page_count").toInt();
    };
    const int before = pages();
    {
        const Database database(path);
    }
    EXPECT_EQ(schemaOf(path, "chunks"), QString());
    EXPECT_EQ(RawDatabase(path).text("PRAGMA freelist_count"), u"0") << "vacuumed";
    EXPECT_LT(pages(), before + 15) << "the new tables are small, the old chunks were 25 pages";
    EXPECT_EQ(versionOf(path), u"9");
    EXPECT_TRUE(columnsOfPapers(path).contains(QStringLiteral("content_hash")));
}

TEST(DatabaseStartUp, AddsOnlyTheContentHashToAVersionEightFile)
{
    const TemporaryFolder folder;
    const QString path = oldLibrary(folder, QByteArray(kOldPapers) + "CREATE TABLE chunks (text TEXT);", 8);
    {
        const Database database(path);
    }
    EXPECT_EQ(versionOf(path), u"9");
    EXPECT_EQ(columnsOfPapers(path).last(), u"content_hash");
    EXPECT_EQ(schemaOf(path, "chunks"), u"CREATE TABLE chunks (text TEXT)");
    EXPECT_EQ(schemaOf(path, "idx_papers_content_hash"),
              u"CREATE INDEX idx_papers_content_hash ON papers(content_hash)");
}

TEST(DatabaseStartUp, RunsNoMigrationOnAVersionNineFile)
{
    const TemporaryFolder folder;
    const QString path = oldLibrary(folder, "CREATE TABLE chunks (text TEXT)", 9);
    StatementRecorder statements;
    {
        const Database database(path);
    }
    for (const char *step : {"PRAGMA user_version =", "DROP", "VACUUM", "ALTER"})
        EXPECT_EQ(statements.beginningWith(QLatin1String(step)), QStringList());
    EXPECT_EQ(schemaOf(path, "chunks"), u"CREATE TABLE chunks (text TEXT)");
}

TEST(DatabaseStartUp, KeepsTheVersionAndTheRowsOfANewerFile)
{
    const TemporaryFolder folder;
    const QString path = oldLibrary(folder,
                                    QByteArray(kOldPapers) +
                                        "CREATE TABLE chunks (text TEXT); INSERT INTO chunks VALUES ('c');"
                                        "CREATE TABLE tags (paper_id TEXT, tag TEXT, colour TEXT);"
                                        "INSERT INTO tags VALUES ('a', 'Tag', 'red');",
                                    10);
    {
        const Database database(path);
    }
    EXPECT_EQ(versionOf(path), u"10");
    EXPECT_EQ(RawDatabase(path).texts("SELECT id || title || filepath FROM papers"),
              QStringList{QStringLiteral("aAlpha/a.pdf")});
    EXPECT_EQ(RawDatabase(path).texts("SELECT paper_id || tag || colour FROM tags"),
              QStringList{QStringLiteral("aTagred")});
    EXPECT_EQ(RawDatabase(path).texts("SELECT text FROM chunks"), QStringList{QStringLiteral("c")});
    EXPECT_FALSE(columnsOfPapers(path).contains(QStringLiteral("content_hash")));
}

TEST(DatabaseStartUp, CanRunAgainOnWhatItMade)
{
    const TemporaryFolder folder;
    const QString path = folder.path(QStringLiteral("library.db"));
    {
        const Database database(path);
    }
    const QStringList schema = RawDatabase(path).texts("SELECT sql FROM sqlite_master ORDER BY name");
    {
        const Database database(path);
    }
    EXPECT_EQ(RawDatabase(path).texts("SELECT sql FROM sqlite_master ORDER BY name"), schema);
}
