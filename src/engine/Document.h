#pragma once

#include "engine/FileStream.h"
#include "engine/Handles.h"
#include "engine/NamedLigatures.h"
#include "engine/StopSign.h"
#include "pdf/protocol/Messages.h"

#include <memory>

/// The document that the engine serves. Use from one thread.
class Document
{
public:
    /// A document in an open file; nothing when there is no memory for even the beginning of one.
    static std::unique_ptr<Document> create(DocumentFile file);

    /// Looks at `sign` from now on while it works on a page.
    void obey(StopSign sign) { m_stop = std::move(sign); }

    /// Reads the document's structure: `OpenedReply`, or why it cannot be read. Call once, before the rest.
    Reply open(const OpenRequest &request);
    Reply pageText(const PageTextRequest &request);
    Reply placedText(const PlacedTextRequest &request);
    Reply thumbnail(const ThumbnailRequest &request);
    /// Draws into `pixels`, which hold what the request asks for.
    Reply draw(const DrawRequest &request, unsigned char *pixels);
    Reply shapes(const ShapesRequest &request);
    Reply outline();
    Reply links(const LinksRequest &request);
    Reply pageLabels();

private:
    Document(ContextHandle context, DocumentFile file);

    FailedReply openingFailure(Failure failure, const std::string &reason) const;
    /// Why the document stays locked; nothing when it is open.
    std::optional<FailedReply> lockedFailure(const std::optional<std::string> &password);
    Reply described();
    /// Loads page `index`; nothing, with the reason in `failure`, when that fails.
    PageHandle load(std::uint32_t index, FailedReply &failure);
    /// What `work` answers for the page; that it was stopped, if the program asked for that.
    template <typename Work> Reply onPage(std::uint32_t index, const Work &work);

    ContextHandle m_context; // outlives what was made with it
    DocumentFile m_file;
    DocumentHandle m_document;
    NamedLigatures m_ligatures;
    StopSign m_stop;
    int m_pageCount = 0;
};
