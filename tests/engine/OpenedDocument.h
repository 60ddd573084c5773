#pragma once

#include "engine/Document.h"

#include <QByteArray>
#include <gtest/gtest.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <variant>

/// A document in memory, read by the engine's own code inside the test's process.
class OpenedDocument
{
public:
    explicit OpenedDocument(const QByteArray &bytes, const std::optional<std::string> &password = {})
        : m_descriptor(memfd_create("document", 0))
    {
        EXPECT_EQ(write(m_descriptor, bytes.constData(), size_t(bytes.size())), bytes.size());
        m_document = Document::create({m_descriptor, bytes.size()});
        m_reply = m_document->open({0, password});
    }
    ~OpenedDocument() { close(m_descriptor); }
    OpenedDocument(const OpenedDocument &) = delete;
    OpenedDocument &operator=(const OpenedDocument &) = delete;

    const Reply &reply() const { return m_reply; }
    const OpenedReply &opened() const { return std::get<OpenedReply>(m_reply); }
    const FailedReply &failed() const { return std::get<FailedReply>(m_reply); }

    Reply textReply(std::uint32_t page) { return m_document->pageText({page}); }
    std::string text(std::uint32_t page = 0) { return std::get<TextReply>(textReply(page)).text; }
    PlacedTextReply placedText(std::uint32_t page = 0)
    {
        return std::get<PlacedTextReply>(m_document->placedText({page}));
    }
    ShapesReply shapes(std::uint32_t firstPage, std::uint32_t count)
    {
        return std::get<ShapesReply>(m_document->shapes({firstPage, count}));
    }
    PageShape shape(std::uint32_t page = 0) { return shapes(page, 1).shapes.at(0).value(); }
    std::vector<OutlineEntry> outline() { return std::get<OutlineReply>(m_document->outline()).entries; }
    std::vector<LinkEntry> links(std::uint32_t page = 0)
    {
        return std::get<LinksReply>(m_document->links({page})).links;
    }
    std::vector<LabelRange> pageLabels()
    {
        return std::get<PageLabelsReply>(m_document->pageLabels()).ranges;
    }
    Document &document() { return *m_document; }
    PictureReply thumbnail(std::uint32_t maxWidth, std::uint32_t maxHeight, std::uint32_t page = 0)
    {
        return std::get<PictureReply>(m_document->thumbnail({page, maxWidth, maxHeight}));
    }

private:
    int m_descriptor;
    std::unique_ptr<Document> m_document;
    Reply m_reply;
};
