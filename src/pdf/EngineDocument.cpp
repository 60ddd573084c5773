#include "pdf/EngineDocument.h"

#include "pdf/EngineProgram.h"
#include "pdf/protocol/Limits.h"
#include "platform/InputFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>

namespace
{
PDFErrorCode codeOf(Failure failure)
{
    switch (failure) {
    case Failure::NotAPDF:
        return PDFErrorCode::NotAPDF;
    case Failure::Damaged:
        return PDFErrorCode::Damaged;
    case Failure::NeedsPassword:
        return PDFErrorCode::NeedsPassword;
    case Failure::PageUnavailable:
        return PDFErrorCode::PageUnavailable;
    case Failure::Unable:
        return PDFErrorCode::EngineFailed;
    }
    Q_UNREACHABLE();
}

std::optional<QString> optionalText(const std::optional<std::string> &text)
{
    return text ? std::optional(QString::fromStdString(*text)) : std::nullopt;
}

std::optional<std::uint32_t> pageNumber(qint64 index)
{
    if (index < 0 || index >= qint64(kMaxPageCount))
        return std::nullopt;
    return std::uint32_t(index);
}

Error noSuchPage()
{
    return pdfError(PDFErrorCode::PageUnavailable, QStringLiteral("there is no such page"));
}

std::uint32_t pixels(int side)
{
    return std::uint32_t(qBound(1, side, int(kMaxThumbnailSide)));
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
    Result<EngineProcess> process = EngineProcess::start(m_options.program, m_file.get());
    if (!process)
        return process.error();
    m_connection = EngineConnection(*std::move(process));
    const Result<OpenedReply> opened =
        ask<OpenedReply>(OpenRequest{kProtocolVersion}, m_options.deadlines.open, stop);
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
                                   std::stop_token stop)
{
    Result<Reply> reply = m_connection.ask(request, deadline, stop);
    if (!reply)
        return reply.error();
    if (Wanted *wanted = std::get_if<Wanted>(&*reply))
        return std::move(*wanted);
    const auto *failed = std::get_if<FailedReply>(&*reply);
    if (!failed)
        return m_connection.refused();
    return pdfError(codeOf(failed->failure), QString::fromStdString(failed->reason));
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
    const ThumbnailRequest request = {*page, pixels(maxWidth), pixels(maxHeight)};
    const Result<PictureReply> reply = ask<PictureReply>(request, m_options.deadlines.thumbnail, stop);
    if (!reply)
        return reply.error();
    if (reply->width > request.maxWidth || reply->height > request.maxHeight)
        return m_connection.refused();
    const auto *bytes = reinterpret_cast<const char *>(reply->pixels.data());
    return PDFBitmap{int(reply->width), int(reply->height),
                     QByteArray(bytes, qsizetype(reply->pixels.size()))};
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
