#include "reader/DocumentOpening.h"

#include "pdf/EngineDocument.h"
#include "platform/InputFile.h"
#include "platform/Sha256.h"
#include "platform/SlowWork.h"
#include "reader/ReaderDocument.h"
#include "store/NativeLibraryService.h"

#include <QDir>
#include <QPointer>
#include <QtConcurrent>
#include <cerrno>
#include <qcorofuture.h>

namespace
{
bool isMissingFile(const Error &error)
{
    return error.domain == u"InputFile" && (error.code == ENOENT || error.code == ENOTDIR);
}

bool isLock(const Error &error)
{
    return isPDFError(error, PDFErrorCode::NeedsPassword) || isPDFError(error, PDFErrorCode::WrongPassword);
}

/// SHA-256 of the file, or why it cannot be read. Blocks.
Result<QString> contentHashOf(const QString &path)
{
    const Result<InputFile> file = InputFile::open(path);
    if (!file)
        return file.error();
    const std::optional<QString> hash = sha256HexOfFile(file->descriptor());
    if (!hash)
        return Error{QStringLiteral("DocumentOpening"), 1, QString(u"The file cannot be read: " + path), {}};
    return *hash;
}
} // namespace

DocumentOpening::DocumentOpening(NativeLibraryService &library, MakeDocument makeDocument,
                                 const QString &itsPath)
    : m_library(library)
    , m_makeDocument(std::move(makeDocument))
{
    replaceDocument(itsPath);
}

DocumentOpening::~DocumentOpening() = default;

void DocumentOpening::replaceDocument(const QString &newPath)
{
    if (m_document)
        Q_EMIT documentLeaving();
    path = newPath;
    m_password.reset();
    m_document = m_makeDocument(newPath);
    connect(m_document.get(), &ReaderDocument::lost, this, [this](const Error &error) {
        state = State{Stage::Failed, error.message()};
    });
}

QCoro::Task<> DocumentOpening::open()
{
    const QPointer self(this);
    state = State{Stage::Opening, {}};
    const QPointer document(m_document.get()); // another one may take its place meanwhile
    const QFuture<Result<void>> opening = document->open(m_password);
    const Result<void> opened = co_await opening;
    if (!self || document != m_document.get())
        co_return;
    if (!opened && isMissingFile(opened.error())) {
        auto looking = pathKnownToLibrary();
        const std::optional<QString> known = co_await looking;
        if (!self || document != m_document.get())
            co_return;
        if (known && *known != path) {
            replaceDocument(*known);
            const QPointer movedDocument(m_document.get());
            const QFuture<Result<void>> openingThere = movedDocument->open();
            const Result<void> openedThere = co_await openingThere;
            if (self && movedDocument == m_document.get())
                take(openedThere);
            co_return;
        }
    }
    take(opened);
}

void DocumentOpening::takeIfOpen()
{
    if (state.value().stage == Stage::Opening && m_document->isOpen())
        take({});
}

void DocumentOpening::take(const Result<void> &opened)
{
    if (opened && m_document->isOpen() && m_document->pageCount() == 0)
        state = State{Stage::Failed, QStringLiteral("The document has no pages.")};
    else if (opened)
        state = State{Stage::Open, {}};
    else if (isMissingFile(opened.error()))
        state = State{Stage::Missing, {}};
    else if (isLock(opened.error()))
        state = State{Stage::Locked, {}};
    else
        state = State{Stage::Failed, opened.error().message()};
}

QCoro::Task<std::optional<QString>> DocumentOpening::pathKnownToLibrary()
{
    if (!paperId.value())
        co_return std::nullopt;
    const auto looking = m_library.paperById(*paperId.value());
    const Result<std::optional<Paper>> paper = co_await looking;
    if (!paper || !*paper)
        co_return std::nullopt;
    co_return (*paper)->filepath;
}

QCoro::Task<> DocumentOpening::unlock(QString password)
{
    const QPointer self(this);
    state = State{Stage::Locked, {}};
    const QPointer document(m_document.get());
    const QFuture<Result<void>> opening = document->open(password);
    const Result<void> opened = co_await opening;
    if (!self || document != m_document.get())
        co_return;
    if (opened)
        m_password = password;
    if (!opened && isLock(opened.error()))
        state = State{Stage::Locked, QStringLiteral("This password does not open the document.")};
    else
        take(opened);
}

QCoro::Task<> DocumentOpening::locate(QString newPath)
{
    const QPointer self(this);
    const QString absolute = QDir::cleanPath(QDir::current().absoluteFilePath(newPath));
    state = State{Stage::Missing, {}};
    auto checking = refusalOf(absolute);
    const QString refusal = co_await checking;
    if (!self)
        co_return;
    if (!refusal.isEmpty()) {
        state = State{Stage::Missing, refusal};
        co_return;
    }
    replaceDocument(absolute);
    open();
}

/// Why the file cannot take the missing one's place; empty when it does, and the library knows it.
QCoro::Task<QString> DocumentOpening::refusalOf(QString newPath)
{
    if (!paperId.value())
        co_return QString(); // nothing to compare it with
    const QPointer self(this);
    const QString id = *paperId.value();
    const QFuture<Result<QString>> hashing = QtConcurrent::run(slowWork(), contentHashOf, newPath);
    const Result<QString> hash = co_await hashing;
    if (!self)
        co_return QString();
    if (!hash)
        co_return hash.error().message();
    // Its own, since others may have the same content.
    const auto looking = m_library.contentHashOfPaper(id);
    const Result<std::optional<QString>> known = co_await looking;
    if (!self)
        co_return QString();
    if (!known)
        co_return known.error().message();
    if (*known && *known != *hash)
        co_return QString(u"This is another document than the one that is missing: " + newPath);
    const auto updating = m_library.updateFilepath(id, newPath);
    const Result<Paper> updated = co_await updating;
    co_return updated ? QString() : updated.error().message();
}

std::unique_ptr<ReaderDocument> engineReaderDocument(const QString &path)
{
    return std::make_unique<ReaderDocument>(
        [path](const std::optional<QString> &password,
               std::stop_token stop) -> Result<std::unique_ptr<PDFDocument>> {
            const Result<InputFile> file = InputFile::open(path);
            if (!file)
                return file.error();
            EngineOptions options;
            options.password = password;
            return EngineDocument::open(*file, options, stop);
        });
}
