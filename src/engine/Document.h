#pragma once

#include "engine/FileStream.h"
#include "engine/Handles.h"
#include "engine/NamedLigatures.h"
#include "pdf/protocol/Messages.h"

#include <memory>

/// The document that the engine serves. Use from one thread.
class Document
{
public:
    /// A document in an open file; nothing when there is no memory for even the beginning of one.
    static std::unique_ptr<Document> create(DocumentFile file);

    /// Reads the document's structure: `OpenedReply`, or why it cannot be read. Call once, before the rest.
    Reply open();
    Reply pageText(const PageTextRequest &request);
    Reply thumbnail(const ThumbnailRequest &request);

private:
    Document(ContextHandle context, DocumentFile file);

    FailedReply openingFailure(Failure failure, const std::string &reason) const;
    Reply described();
    /// Loads page `index`; nothing, with the reason in `failure`, when that fails.
    PageHandle load(std::uint32_t index, FailedReply &failure);

    ContextHandle m_context; // outlives what was made with it
    DocumentFile m_file;
    DocumentHandle m_document;
    NamedLigatures m_ligatures;
};
