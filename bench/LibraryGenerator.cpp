#include "LibraryGenerator.h"

#include "GeneratedCovers.h"
#include "Vocabulary.h"
#include "platform/Sha256.h"
#include "store/DatabaseManager.h"

#include <QDir>
#include <cctype>
#include <random>

namespace
{

/// Raise it when what is generated changes, so that old libraries are not taken for new ones.
constexpr int kGeneration = 2;

struct GeneratedPaper {
    QString id;
    QString title;
    QString authors;
    QString path;
    QString coverPath = QLatin1String(""); ///< not null: the column holds a text
    qint64 year = 0;
    QStringList tags;
    QList<Chunk> pages;
};

QByteArray capitalised(QByteArray word)
{
    word[0] = static_cast<char>(std::toupper(word[0]));
    return word;
}

/// Writes papers, one after another, by a seed of its own.
class Writer
{
public:
    explicit Writer(qint64 pagesPerPaper)
        : m_pagesPerPaper(pagesPerPaper)
    {
    }

    GeneratedPaper nextPaper();

private:
    QByteArray nextWord();
    QByteArray sentence(std::uint64_t words);
    QByteArray page();
    QString name();

    const qint64 m_pagesPerPaper;
    const Vocabulary m_vocabulary;
    std::mt19937_64 m_random{2};
    QList<QByteArray> m_subject; ///< words that the paper at hand is about
    qint64 m_papers = 0;
};

QByteArray Writer::nextWord()
{
    constexpr std::uint64_t kSubjectPercent = 12;
    constexpr std::uint64_t kNumberPercent = 2; // they give an index its longest tail of words
    const std::uint64_t percent = m_random() % 100;
    if (percent < kSubjectPercent)
        return m_subject[static_cast<qsizetype>(m_random() % static_cast<std::uint64_t>(m_subject.size()))];
    if (percent < kSubjectPercent + kNumberPercent)
        return QByteArray::number(static_cast<qulonglong>(m_random() % 100'000));
    return m_vocabulary.anyWord(m_random());
}

QByteArray Writer::sentence(std::uint64_t words)
{
    QByteArray text = capitalised(nextWord());
    for (; words > 1; --words) {
        text += m_random() % 12 == 0 ? ", " : " ";
        text += nextWord();
    }
    return text + ". ";
}

QByteArray Writer::page()
{
    QByteArray text;
    for (std::uint64_t words = 250 + m_random() % 151; words > 0;) {
        const std::uint64_t length = std::min<std::uint64_t>(words, 8 + m_random() % 20);
        text += sentence(length);
        words -= length;
    }
    return text;
}

QString Writer::name()
{
    return QString::fromLatin1(capitalised(m_vocabulary.subjectWord(m_random())));
}

GeneratedPaper Writer::nextPaper()
{
    constexpr int kSubjectWords = 40;
    m_subject.clear();
    while (m_subject.size() < kSubjectWords)
        m_subject.append(m_vocabulary.subjectWord(m_random()));

    GeneratedPaper paper;
    paper.path = QStringLiteral("/papers/%1.pdf").arg(++m_papers, 7, 10, QLatin1Char('0'));
    paper.id = sha256Hex(paper.path.toUtf8()).left(32);
    paper.title = name() + u' ' + QString::fromLatin1(m_subject[0] + " of " + m_subject[1]);
    paper.authors = name() + u", " + name();
    paper.year = 1980 + static_cast<qint64>(m_random() % 45);
    paper.tags = {name(), name(), QStringLiteral("Collection %1").arg(m_papers % 12)};
    for (qint64 index = 0; index < m_pagesPerPaper; ++index)
        paper.pages.append({.text = page(), .pageNum = index + 1, .index = index});
    return paper;
}

Result<void> insert(Database &database, const GeneratedPaper &paper)
{
    const auto inserted = database.execute(
        QStringLiteral(
            "INSERT INTO papers (id, title, authors, year, filepath, cover_path, date_indexed, page_count, "
            "chunk_count, content_hash) VALUES (?, ?, ?, ?, ?, ?, '2026-01-01T00:00:00Z', ?, ?, ?)"),
        {paper.id, paper.title, paper.authors, paper.year, paper.path, paper.coverPath,
         qint64(paper.pages.size()), qint64(paper.pages.size()), sha256Hex(paper.id.toUtf8())});
    if (!inserted)
        return inserted;
    if (auto rows = database.insertChunks(paper.id, paper.pages); !rows)
        return rows;
    return database.replaceTags(paper.id, paper.tags);
}

/// Writes one batch of papers in one transaction.
Result<void> insertBatch(DatabaseManager &db, const QList<GeneratedPaper> &papers)
{
    const auto writeAll = [papers](Database &database) {
        return inTransaction(database, [&]() -> Result<void> {
            for (const GeneratedPaper &paper : papers) {
                if (auto inserted = insert(database, paper); !inserted)
                    return inserted;
            }
            return {};
        });
    };
    return db.perform(Urgency::Background, writeAll).result();
}

/// Fills the library in `made`; covers are named by the place where it will lie in the end.
Result<void> fill(const QString &made, const QString &home, const LibraryShape &shape)
{
    constexpr qsizetype kPapersPerTransaction = 250;
    DatabaseManager db(made + u"/Quirevault/library.db");
    Writer writer(shape.pagesPerPaper);
    QStringList ids;
    QList<GeneratedPaper> batch;
    for (qint64 left = shape.papers; left > 0; --left) {
        GeneratedPaper paper = writer.nextPaper();
        ids.append(paper.id);
        if (shape.hasCovers)
            paper.coverPath = home + u"/Quirevault/covers/" + paper.id + u".jpg";
        batch.append(paper);
        if (batch.size() < kPapersPerTransaction && left > 1)
            continue;
        if (auto inserted = insertBatch(db, batch); !inserted)
            return inserted;
        batch.clear();
    }
    return shape.hasCovers ? writeGeneratedCovers(made + u"/Quirevault/covers", ids) : Result<void>();
}

} // namespace

Result<QString> generatedLibrary(const QString &folder, const LibraryShape &shape)
{
    const QString name = QStringLiteral("%1-papers-of-%2%3-%4")
                             .arg(shape.papers)
                             .arg(shape.pagesPerPaper)
                             .arg(shape.hasCovers ? QLatin1String("-with-covers") : QLatin1String())
                             .arg(kGeneration);
    const QString home = folder + u'/' + name;
    if (QDir(home).exists())
        return home;
    // Made beside its place and moved there when whole: an interrupted run leaves nothing that looks done.
    const QString unfinished = home + u".unfinished";
    QDir(unfinished).removeRecursively();
    if (auto filled = fill(unfinished, home, shape); !filled)
        return filled.error();
    if (!QDir().rename(unfinished, home)) {
        return Error{.domain = QStringLiteral("LibraryGenerator"),
                     .code = 1,
                     .description = QStringLiteral("The generated library could not be put in place"),
                     .reason = home};
    }
    return home;
}
