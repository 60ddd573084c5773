#include "indexing/PDFIndexer.h"

#include "base/Clock.h"
#include "indexing/BookService.h"
#include "indexing/Chunker.h"
#include "indexing/CoverStore.h"
#include "indexing/DocumentReader.h"
#include "indexing/MetadataExtraction.h"
#include "indexing/PaperWriter.h"
#include "indexing/TopicTags.h"
#include "platform/InputFile.h"
#include "platform/Sha256.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"

#include <QFile>
#include <utility>

namespace
{
/// Words of a document, from its start, that are searched for an ISBN.
constexpr qint64 kISBNWords = 1000;

Error indexerError(PDFIndexerErrorCode code, const QString &description, const QString &reason = {})
{
    return {QStringLiteral("PDFIndexer"), static_cast<int>(code), description, reason};
}

Error cannotLoad(const QString &reason)
{
    return indexerError(PDFIndexerErrorCode::CannotLoad, QStringLiteral("Failed to load PDF"), reason);
}

Error cannotLoad(const Error &cause)
{
    return isCancelled(cause) ? cause : cannotLoad(cause.message());
}

QString paperIdFor(const QString &path)
{
    return sha256Hex(path.toUtf8()).left(32);
}

/// Knows whether a run's cover is new and takes such a one back from the folder: when reading fails or the
/// run is cancelled, when the file changed meanwhile, and when its content turned out to be another paper's.
/// A cover stays when the transaction fails: it harms nobody, and the next import of the file writes it anew.
class CoverGuard
{
public:
    CoverGuard(const CoverStore &covers, const QString &paperId)
        : m_covers(covers)
        , m_paperId(paperId)
        , m_isNew(!covers.hasCover(paperId))
    {
    }
    CoverGuard(const CoverGuard &) = delete;
    CoverGuard &operator=(const CoverGuard &) = delete;

    void takeBack() const
    {
        if (m_isNew)
            m_covers.removeCover(m_paperId);
    }

private:
    const CoverStore &m_covers;
    QString m_paperId;
    bool m_isNew;
};

/// What is read of a file.
struct FileContent {
    PDFAttributes attributes;
    QString coverPath;
    DocumentContent document;
};

/// One file on its way into the library.
class Run
{
public:
    Run(PDFIndexer::Collaborators &with, const InputFile &file, std::stop_token stop)
        : m_with(with)
        , m_file(file)
        , m_stop(std::move(stop))
    {
    }

    Result<Paper> index();

private:
    Result<Paper> asKnown(const Paper &paper);
    Result<Paper> indexNew(std::optional<QString> contentHash);
    Result<FileContent> readFile(const QString &id);
    Result<Paper> store(const NewPaper &added, const CoverGuard &cover);
    Result<Paper> readBack(const QString &id);
    PaperMetadata metadataFor(const PDFAttributes &attributes, const PaperText &text);

    PDFIndexer::Collaborators &m_with;
    const InputFile &m_file;
    std::stop_token m_stop;
};

Result<Paper> Run::index()
{
    std::optional<QString> contentHash = sha256HexOfFile(m_file.descriptor(), m_stop);
    if (m_stop.stop_requested())
        return cancelledError();
    if (contentHash) {
        const Result<std::optional<Paper>> known = m_with.library.paperByContentHash(*contentHash).result();
        if (!known)
            return known.error();
        if (*known)
            return asKnown(**known);
    }
    return indexNew(std::move(contentHash));
}

/// The library's paper of this content, whose file may be the one in hand, a copy of it, or gone.
Result<Paper> Run::asKnown(const Paper &paper)
{
    if (paper.filepath == m_file.path() || QFile::exists(paper.filepath))
        return paper;
    return m_with.library.updateFilepath(paper.id, m_file.path()).result();
}

Result<Paper> Run::indexNew(std::optional<QString> contentHash)
{
    const QString id = paperIdFor(m_file.path());
    const CoverGuard cover(m_with.covers, id);
    const Result<FileContent> file = readFile(id);
    if (!file) {
        cover.takeBack();
        return file.error();
    }

    const PaperText &text = file->document.text;
    const PaperMetadata metadata = metadataFor(file->attributes, text);
    const Paper paper{
        .id = id,
        .title = metadata.title,
        .authors = metadata.authors,
        .year = metadata.year,
        .pageCount = file->document.pageCount,
        .coverPath = file->coverPath,
        .filepath = m_file.path(),
        .tags = topicTags(metadata.title, text.firstCharacters(kTopicTextCharacters), metadata.subjects),
    };
    return store({paper, toStoredTime(m_with.clock.now()), std::move(contentHash), chunksOf(text)}, cover);
}

/// Reads all that is needed of the file. Its engine ends here, before anything else is waited for.
Result<FileContent> Run::readFile(const QString &id)
{
    const Result<std::unique_ptr<PDFDocument>> document = m_with.openPDF(m_file, m_stop);
    if (!document)
        return cannotLoad(document.error());
    const Result<QString> coverPath = m_with.covers.renderCover(**document, id, m_stop);
    if (!coverPath)
        return coverPath.error();
    Result<DocumentContent> content = readDocument(**document, m_with.clock, m_stop);
    if (!content)
        return cannotLoad(content.error());
    return FileContent{(*document)->attributes(), *coverPath, *std::move(content)};
}

PaperMetadata Run::metadataFor(const PDFAttributes &attributes, const PaperText &text)
{
    PaperMetadata metadata = metadataFromDocument(attributes, m_file.path());
    const std::optional<QString> isbn = findISBN(QString::fromUtf8(text.firstWords(kISBNWords)));
    if (!isbn)
        return metadata;
    const std::optional<BookRecord> book = m_with.books.lookupBook(*isbn, m_stop);
    return book ? mergedWithBook(std::move(metadata), *book) : metadata;
}

// The chunks of `added` are views into the text that `indexNew` holds, and `added` itself is only lent to
// the database thread: both stay alive because the answer is awaited here.
Result<Paper> Run::store(const NewPaper &added, const CoverGuard &cover)
{
    if (m_stop.stop_requested()) {
        cover.takeBack();
        return cancelledError();
    }
    if (m_file.hasChanged()) {
        cover.takeBack();
        return indexerError(PDFIndexerErrorCode::ChangedWhileRead,
                            QStringLiteral("The file changed while it was read"));
    }
    const Result<std::optional<Paper>> known =
        m_with.db
            .perform(Urgency::Background,
                     [&added](Database &database) { return writePaper(database, added); })
            .result();
    if (!known)
        return known.error();
    if (!*known)
        return readBack(added.paper.id);
    if ((*known)->id != added.paper.id)
        cover.takeBack();
    return asKnown(**known);
}

Result<Paper> Run::readBack(const QString &id)
{
    const Result<std::optional<Paper>> paper = m_with.library.paperById(id).result();
    if (!paper)
        return paper.error();
    if (!*paper)
        return indexerError(PDFIndexerErrorCode::MissingAfterWrite,
                            QStringLiteral("Failed to retrieve paper after indexing"));
    return **paper;
}
} // namespace

PDFIndexer::PDFIndexer(Collaborators collaborators)
    : m_with(std::move(collaborators))
{
}

Result<Paper> PDFIndexer::indexFile(const QString &path, std::stop_token stop)
{
    if (stop.stop_requested())
        return cancelledError();
    const Result<InputFile> file = InputFile::open(path);
    if (!file)
        return cannotLoad(file.error().reason); // whoever reports it names the path
    return Run(m_with, *file, std::move(stop)).index();
}
