#include "engine/Document.h"

#include "engine/AttributeText.h"
#include "engine/Drawing.h"
#include "engine/Kept.h"
#include "engine/Links.h"
#include "engine/Outline.h"
#include "engine/PageFailure.h"
#include "engine/PageLabels.h"
#include "engine/PageShapes.h"
#include "engine/PageText.h"
#include "engine/PageTree.h"
#include "engine/Thumbnail.h"
#include "pdf/protocol/Limits.h"

#include <array>
#include <string_view>
#include <unistd.h>

namespace
{
// Fonts and pictures kept between pages; the address space is limited to far more.
constexpr std::size_t kStoreBytes = 64 << 20;

// Readers look for the header this far into a file, since some senders put their own lines before it.
constexpr std::size_t kHeaderSearchBytes = 1024;

bool hasPdfHeader(int descriptor)
{
    std::array<char, kHeaderSearchBytes> start;
    const ssize_t count = pread(descriptor, start.data(), start.size(), 0);
    return count > 0 &&
           std::string_view(start.data(), std::size_t(count)).find("%PDF-") != std::string_view::npos;
}

bool isEmptyFile(int descriptor)
{
    char byte;
    return pread(descriptor, &byte, 1, 0) == 0;
}

/// A text entry of the document information; nothing when it is absent or no string.
std::optional<std::string> attribute(fz_context *context, pdf_document *document, pdf_obj *key)
{
    const std::optional<std::string_view> bytes = stringBytes(context, [&] {
        pdf_obj *information = pdf_dict_get(context, pdf_trailer(context, document), PDF_NAME(Info));
        return pdf_dict_get(context, information, key);
    });
    return bytes ? std::optional(attributeText(*bytes)) : std::nullopt;
}

void ignoreMessage(void *, const char *) {}
} // namespace

std::unique_ptr<Document> Document::create(DocumentFile file)
{
    ContextHandle context(fz_new_context(nullptr, nullptr, kStoreBytes));
    if (!context)
        return nullptr;
    // A document can cause millions of messages. The error of a failed call travels with its reply instead.
    fz_set_warning_callback(context.get(), ignoreMessage, nullptr);
    fz_set_error_callback(context.get(), ignoreMessage, nullptr);
    return std::unique_ptr<Document>(new Document(std::move(context), file));
}

Document::Document(ContextHandle context, DocumentFile file)
    : m_context(std::move(context))
    , m_file(file)
    , m_document(nullptr, {m_context.get()})
    , m_ligatures(m_context.get())
{
}

FailedReply Document::openingFailure(Failure failure, const std::string &reason) const
{
    if (isEmptyFile(m_file.descriptor))
        return {Failure::NotAPDF, "the file is empty"};
    if (!hasPdfHeader(m_file.descriptor))
        return {Failure::NotAPDF, "it has no PDF header"};
    return {failure, reason};
}

std::optional<FailedReply> Document::lockedFailure(const std::optional<std::string> &password)
{
    fz_context *context = m_context.get();
    const char *entered = password ? password->c_str() : nullptr;
    bool isLocked = true;
    const std::optional<CallFailure> failure = guarded(context, [&] {
        // This also tries the empty password, with which many encrypted files open.
        isLocked = pdf_needs_password(context, m_document.get()) &&
                   !(entered && pdf_authenticate_password(context, m_document.get(), entered));
    });
    if (failure)
        return openingFailure(Failure::Damaged, failure->message);
    if (!isLocked)
        return std::nullopt;
    return FailedReply{password ? Failure::WrongPassword : Failure::NeedsPassword, {}};
}

Reply Document::open(const OpenRequest &request)
{
    fz_context *context = m_context.get();
    fz_stream *stream = nullptr;
    pdf_document *document = nullptr;
    const std::optional<CallFailure> failure = guarded(context, [&] {
        stream = newFileStream(context, m_file);
        document = pdf_open_document_with_stream(context, stream);
    });
    StreamHandle(stream, {context}).reset(); // the document holds it
    m_document.reset(document);
    if (failure && failure->isOutOfMemory)
        return FailedReply{Failure::Damaged, "it needs too much memory"};
    if (failure)
        return openingFailure(Failure::Damaged, failure->message);
    // Before anything else: a locked document reports garbage and no pages.
    if (std::optional<FailedReply> locked = lockedFailure(request.password))
        return *std::move(locked);
    return described();
}

Reply Document::described()
{
    fz_context *context = m_context.get();
    pdf_document *document = m_document.get();
    if (const std::optional<CallFailure> failure = countPages(context, document, m_pageCount))
        return openingFailure(Failure::Damaged, failure->message);
    OpenedReply reply;
    reply.version = kProtocolVersion;
    reply.pageCount = static_cast<std::uint32_t>(m_pageCount);
    reply.title = attribute(context, document, PDF_NAME(Title));
    reply.author = attribute(context, document, PDF_NAME(Author));
    return reply;
}

PageHandle Document::load(std::uint32_t index, FailedReply &failure)
{
    fz_context *context = m_context.get();
    pdf_page *page = nullptr;
    const std::optional<CallFailure> failed =
        guarded(context, [&] { page = pdf_load_page(context, m_document.get(), static_cast<int>(index)); });
    if (failed)
        failure = pageFailure(*failed);
    return {page, {context}};
}

template <typename Work> Reply Document::onPage(std::uint32_t index, const Work &work)
{
    FailedReply failure;
    const PageHandle page = load(index, failure);
    Reply reply = page ? work(page.get()) : Reply(failure);
    // Of a page that MuPDF left early, anything may have been answered.
    return m_stop.isRaised() ? Reply(FailedReply{Failure::Stopped, {}}) : std::move(reply);
}

Reply Document::pageText(const PageTextRequest &request)
{
    return onPage(request.page, [&](pdf_page *page) {
        return textOf(m_context.get(), page, m_ligatures, m_stop.forWork());
    });
}

Reply Document::placedText(const PlacedTextRequest &request)
{
    return onPage(request.page, [&](pdf_page *page) {
        return placedTextOf(m_context.get(), page, m_ligatures, m_stop.forWork());
    });
}

Reply Document::thumbnail(const ThumbnailRequest &request)
{
    return onPage(request.page, [&](pdf_page *page) {
        return thumbnailOf(m_context.get(), page, request, m_stop.forWork());
    });
}

Reply Document::draw(const DrawRequest &request, unsigned char *pixels)
{
    return onPage(request.page, [&](pdf_page *page) {
        return ::draw(m_context.get(), page, request, pixels, m_stop.forWork());
    });
}

Reply Document::shapes(const ShapesRequest &request)
{
    return shapesOf(m_context.get(), m_document.get(), m_pageCount, request);
}

Reply Document::outline()
{
    return outlineOf(m_context.get(), m_document.get(), m_pageCount);
}

Reply Document::links(const LinksRequest &request)
{
    return linksOf(m_context.get(), m_document.get(), m_pageCount, request.page);
}

Reply Document::pageLabels()
{
    return pageLabelsOf(m_context.get(), m_document.get());
}
