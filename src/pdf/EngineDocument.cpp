#include "pdf/EngineDocument.h"

#include "pdf/EngineAnswers.h"
#include "pdf/EngineProgram.h"
#include "pdf/EngineRequests.h"
#include "pdf/MemoryFile.h"
#include "pdf/protocol/Limits.h"
#include "platform/InputFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace
{
static_assert(kMaxGeometriesAtOnce == kMaxShapes);

PDFErrorCode codeOf(Failure failure)
{
    switch (failure) {
    case Failure::NotAPDF:
        return PDFErrorCode::NotAPDF;
    case Failure::Damaged:
        return PDFErrorCode::Damaged;
    case Failure::NeedsPassword:
        return PDFErrorCode::NeedsPassword;
    case Failure::WrongPassword:
        return PDFErrorCode::WrongPassword;
    case Failure::PageUnavailable:
        return PDFErrorCode::PageUnavailable;
    case Failure::Unable:
    case Failure::Stopped:
        return PDFErrorCode::EngineFailed;
    }
    Q_UNREACHABLE();
}

std::optional<QString> optionalText(const std::optional<std::string> &text)
{
    return text ? std::optional(QString::fromStdString(*text)) : std::nullopt;
}

Error noSuchPage()
{
    return pdfError(PDFErrorCode::PageUnavailable, QStringLiteral("there is no such page"));
}

Error noMemory()
{
    return pdfError(PDFErrorCode::PageUnavailable, QString::fromLocal8Bit(std::strerror(errno)));
}

} // namespace

Result<std::unique_ptr<PDFDocument>> EngineDocument::open(const InputFile &file, const EngineOptions &options,
                                                          std::stop_token stop)
{
    FileDescriptor copy(fcntl(file.descriptor(), F_DUPFD_CLOEXEC, 0));
    if (!copy)
        return pdfError(PDFErrorCode::EngineMissing, QString::fromLocal8Bit(std::strerror(errno)));
    std::unique_ptr<EngineDocument> document(new EngineDocument(std::move(copy), options));
    if (Result<void> started = document->start(stop); !started)
        return started.error();
    return std::unique_ptr<PDFDocument>(std::move(document));
}

EngineDocument::EngineDocument(FileDescriptor file, const EngineOptions &options)
    : m_file(std::move(file))
    , m_options(options)
{
    if (m_options.program.isEmpty())
        m_options.program = engineProgram();
}

Result<void> EngineDocument::start(std::stop_token stop)
{
    if (stop.stop_requested())
        return cancelledError();
    const std::optional<OpenRequest> request = openRequest(m_options.password);
    if (!request)
        return pdfError(PDFErrorCode::WrongPassword);
    Result<EngineProcess> process = EngineProcess::start(m_options.program, m_file.get());
    if (!process)
        return process.error();
    m_connection = EngineConnection(*std::move(process), m_options.deadlines.grace);
    const Result<OpenedReply> opened =
        ask<OpenedReply>(*request, m_options.deadlines.open, stop, m_connection.stopMemory());
    if (!opened) {
        m_connection = EngineConnection(); // an engine without its document is of no use
        return opened.error();
    }
    if (opened->version != kProtocolVersion)
        return m_connection.refused();
    m_pageCount = opened->pageCount;
    m_attributes = {optionalText(opened->title), optionalText(opened->author)};
    return {};
}

template <typename Wanted>
Result<Wanted> EngineDocument::ask(const Request &request, std::chrono::milliseconds deadline,
                                   std::stop_token stop, int memory)
{
    Result<Reply> reply = m_connection.ask(request, deadline, stop, memory);
    if (!reply)
        return reply.error();
    if (Wanted *wanted = std::get_if<Wanted>(&*reply))
        return std::move(*wanted);
    const auto *failed = std::get_if<FailedReply>(&*reply);
    if (!failed || failed->failure == Failure::Stopped) // nobody stopped it
        return m_connection.refused();
    return pdfError(codeOf(failed->failure), QString::fromStdString(failed->reason));
}

template <typename Answer> Result<Answer> EngineDocument::checked(std::optional<Answer> answer)
{
    if (!answer)
        return m_connection.refused();
    return *std::move(answer);
}

Result<QByteArray> EngineDocument::pageText(qint64 index, std::stop_token stop)
{
    const std::optional<std::uint32_t> page = pageNumber(index);
    if (!page)
        return noSuchPage();
    const Result<TextReply> reply =
        ask<TextReply>(PageTextRequest{*page}, m_options.deadlines.pageText, stop);
    if (!reply)
        return reply.error();
    return QByteArray::fromStdString(reply->text);
}

Result<PDFBitmap> EngineDocument::thumbnail(qint64 index, int maxWidth, int maxHeight, std::stop_token stop)
{
    const std::optional<std::uint32_t> page = pageNumber(index);
    if (!page)
        return noSuchPage();
    const ThumbnailRequest request = thumbnailRequest(*page, maxWidth, maxHeight);
    const Result<PictureReply> reply = ask<PictureReply>(request, m_options.deadlines.thumbnail, stop);
    if (!reply)
        return reply.error();
    if (reply->width > request.maxWidth || reply->height > request.maxHeight)
        return m_connection.refused();
    const auto *bytes = reinterpret_cast<const char *>(reply->pixels.data());
    return PDFBitmap{int(reply->width), int(reply->height),
                     QByteArray(bytes, qsizetype(reply->pixels.size()))};
}

Result<QList<std::optional<PDFPageGeometry>>> EngineDocument::pageGeometries(qint64 first, qint64 count,
                                                                             std::stop_token stop)
{
    const std::optional<std::uint32_t> page = pageNumber(first);
    const qint64 possible = std::min({count, kMaxGeometriesAtOnce, m_pageCount - first});
    if (!page || possible <= 0)
        return QList<std::optional<PDFPageGeometry>>();
    const Result<ShapesReply> reply =
        ask<ShapesReply>(ShapesRequest{*page, std::uint32_t(possible)}, m_options.deadlines.structure, stop);
    if (!reply)
        return reply.error();
    if (qint64(reply->shapes.size()) != possible)
        return m_connection.refused();
    return geometriesFrom(*reply);
}

Result<PDFPageText> EngineDocument::placedText(qint64 index, std::stop_token stop)
{
    const std::optional<std::uint32_t> page = pageNumber(index);
    if (!page)
        return noSuchPage();
    const Result<PlacedTextReply> reply =
        ask<PlacedTextReply>(PlacedTextRequest{*page}, m_options.deadlines.pageText, stop);
    if (!reply)
        return reply.error();
    return pageTextFrom(*reply);
}

Result<PDFPagePicture> EngineDocument::draw(qint64 index, const PDFDrawing &drawing, std::stop_token stop)
{
    const std::optional<std::uint32_t> page = pageNumber(index);
    if (!page)
        return noSuchPage();
    const std::optional<DrawRequest> request = drawRequest(*page, drawing);
    if (!request)
        return pdfError(PDFErrorCode::PageUnavailable, QStringLiteral("it would be drawn too large"));
    const std::size_t bytes = std::size_t(request->width) * request->height * kBytesPerDrawnPixel;
    std::optional<MemoryFile> memory = MemoryFile::create(bytes);
    if (!memory)
        return noMemory();
    const Result<DrawnReply> reply =
        ask<DrawnReply>(*request, m_options.deadlines.draw, stop, memory->descriptor());
    if (!reply)
        return reply.error();
    if (!memory->seal()) // it could still change what it has drawn
        return m_connection.refused();
    std::optional<SharedMemory> mapped =
        SharedMemory::map(memory->descriptor(), bytes, SharedMemory::Access::ReadOnly);
    if (!mapped)
        return noMemory();
    return PDFPagePicture(drawing.clip.width(), drawing.clip.height(),
                          std::make_shared<const SharedMemory>(*std::move(mapped)));
}

Result<std::vector<PDFOutlineItem>> EngineDocument::outline(std::stop_token stop)
{
    const Result<OutlineReply> reply =
        ask<OutlineReply>(OutlineRequest{}, m_options.deadlines.structure, stop);
    if (!reply)
        return reply.error();
    return checked(outlineFrom(*reply, m_pageCount));
}

Result<QList<PDFLink>> EngineDocument::links(qint64 index, std::stop_token stop)
{
    const std::optional<std::uint32_t> page = pageNumber(index);
    if (!page)
        return noSuchPage();
    const Result<LinksReply> reply =
        ask<LinksReply>(LinksRequest{*page}, m_options.deadlines.structure, stop);
    if (!reply)
        return reply.error();
    return checked(linksFrom(*reply, m_pageCount));
}

Result<PDFPageLabels> EngineDocument::pageLabels(std::stop_token stop)
{
    const Result<PageLabelsReply> reply =
        ask<PageLabelsReply>(PageLabelsRequest{}, m_options.deadlines.structure, stop);
    if (!reply)
        return reply.error();
    return pageLabelsFrom(*reply);
}

Result<void> EngineDocument::restart(std::stop_token stop)
{
    if (m_connection.isAlive())
        return {};
    return start(stop);
}

OpenPDF engineOpener(const EngineOptions &options)
{
    return [options](const InputFile &file, std::stop_token stop) {
        return EngineDocument::open(file, options, stop);
    };
}
