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

/// What is read of a file.
struct FileContent {
    PDFAttributes attributes;
    Cover cover;
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
    Result<Paper> store(const NewPaper &added, const Cover &cover);
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
    const Result<FileContent> file = readFile(id);
    if (!file)
        return file.error();

    const PaperText &text = file->document.text;
    const PaperMetadata metadata = metadataFor(file->attributes, text);
    const Paper paper{
        .id = id,
        .title = metadata.title,
        .authors = metadata.authors,
        .year = metadata.year,
        .pageCount = file->document.pageCount,
        .coverPath = file->cover.path,
        .filepath = m_file.path(),
        .tags = topicTags(metadata.title, text.firstCharacters(kTopicTextCharacters), metadata.subjects),
    };
    return store({paper, toStoredTime(m_with.clock.now()), std::move(contentHash), chunksOf(text)},
                 file->cover);
}

/// Reads all that is needed of the file. Its engine ends here, before anything else is waited for.
Result<FileContent> Run::readFile(const QString &id)
{
    const Result<std::unique_ptr<PDFDocument>> document = m_with.openPDF(m_file, m_stop);
    if (!document)
        return cannotLoad(document.error());
    Result<Cover> cover = m_with.covers.drawCover(**document, id, m_stop);
    if (!cover)
        return cover.error();
    Result<DocumentContent> content = readDocument(**document, m_with.clock, m_stop);
    if (!content)
        return cannotLoad(content.error());
    return FileContent{(*document)->attributes(), *std::move(cover), *std::move(content)};
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
//
// The cover is written last of all before the paper, so that a run that comes to nothing leaves an earlier
// one alone. When the write of the paper fails, the new cover stays: it shows what the file shows by now.
Result<Paper> Run::store(const NewPaper &added, const Cover &cover)
{
    if (m_stop.stop_requested())
        return cancelledError();
    if (m_file.hasChanged())
        return indexerError(PDFIndexerErrorCode::ChangedWhileRead,
                            QStringLiteral("The file changed while it was read"));
    const bool hadCover = m_with.covers.hasCover(added.paper.id);
    if (auto written = m_with.covers.write(cover); !written)
        return written.error();
    const Result<std::optional<Paper>> known =
        m_with.db
            .perform(Urgency::Background,
                     [&added](Database &database) { return writePaper(database, added); })
            .result();
    if (!known)
        return known.error();
    if (!*known)
        return readBack(added.paper.id);
    if ((*known)->id != added.paper.id && !hadCover)
        m_with.covers.removeCover(added.paper.id);
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
