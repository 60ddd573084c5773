#pragma once

#include "pdf/MemoryFile.h"
#include "pdf/PDFDocument.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

/// A document as a test describes it. Keeps a record of what was asked of it.
class FakePDFDocument : public PDFDocument
{
public:
    /// Texts of the pages from the first on; a page beyond them is unavailable.
    std::vector<QByteArray> pages;
    /// What the document claims; as many as there are pages when absent.
    std::optional<qint64> claimedPages;
    PDFAttributes itsAttributes;
    /// Pages, by index, that fail in this way.
    std::map<qint64, Error> failingPages;
    Result<PDFBitmap> picture = PDFBitmap{3, 4, QByteArray(3 * 4 * 3, '\x7f')};
    Result<void> restartAnswer;
    /// Of every page.
    PDFPageGeometry geometry = {QSizeF(612, 792), 0, {}, {}, {}, {}};
    /// By the page's index.
    std::map<qint64, PDFPageText> placedTexts;
    Result<std::vector<PDFOutlineItem>> itsOutline = std::vector<PDFOutlineItem>();
    /// Of every page.
    QList<PDFLink> itsLinks;
    PDFPageLabels itsPageLabels;
    /// Runs before a page is read.
    std::function<void(qint64 index)> onRead = [](qint64) {
    };

    std::vector<qint64> readPages;
    std::vector<std::pair<qint64, PDFDrawing>> drawings;
    int restarts = 0;

    const PDFAttributes &attributes() const override { return itsAttributes; }
    qint64 pageCount() const override { return claimedPages.value_or(static_cast<qint64>(pages.size())); }

    Result<QByteArray> pageText(qint64 index, std::stop_token) override
    {
        onRead(index);
        readPages.push_back(index);
        if (m_isEngineLost)
            return pdfError(PDFErrorCode::EngineFailed);
        if (const auto failing = failingPages.find(index); failing != failingPages.end())
            return failed(failing->second);
        if (index >= static_cast<qint64>(pages.size()))
            return pdfError(PDFErrorCode::PageUnavailable);
        return pages[static_cast<size_t>(index)];
    }

    Result<PDFBitmap> thumbnail(qint64 index, int maxWidth, int maxHeight, std::stop_token) override
    {
        thumbnailRequest = {index, maxWidth, maxHeight};
        return picture ? picture : Result<PDFBitmap>(failed(picture.error()));
    }

    Result<QList<std::optional<PDFPageGeometry>>> pageGeometries(qint64 first, qint64 count,
                                                                 std::stop_token) override
    {
        QList<std::optional<PDFPageGeometry>> geometries;
        for (qint64 index = first; index < std::min(first + count, pageCount()); ++index)
            geometries.append(geometry);
        return geometries;
    }

    Result<PDFPageText> placedText(qint64 index, std::stop_token) override
    {
        const auto placed = placedTexts.find(index);
        return placed == placedTexts.end() ? PDFPageText() : placed->second;
    }

    /// White paper.
    Result<PDFPagePicture> draw(qint64 index, const PDFDrawing &drawing, std::stop_token) override
    {
        drawings.push_back({index, drawing});
        if (const auto failing = failingPages.find(index); failing != failingPages.end())
            return failed(failing->second);
        const std::size_t bytes = std::size_t(drawing.clip.width()) * std::size_t(drawing.clip.height()) * 4;
        const std::optional<MemoryFile> file = MemoryFile::create(bytes);
        SharedMemory paper = *SharedMemory::map(file->descriptor(), bytes, SharedMemory::Access::ReadWrite);
        std::fill_n(paper.data(), bytes, uchar(0xff));
        return PDFPagePicture(drawing.clip.width(), drawing.clip.height(),
                              std::make_shared<const SharedMemory>(std::move(paper)));
    }

    Result<std::vector<PDFOutlineItem>> outline(std::stop_token) override
    {
        return itsOutline ? itsOutline : Result<std::vector<PDFOutlineItem>>(failed(itsOutline.error()));
    }
    Result<QList<PDFLink>> links(qint64, std::stop_token) override { return itsLinks; }
    Result<PDFPageLabels> pageLabels(std::stop_token) override { return itsPageLabels; }

    Result<void> restart(std::stop_token) override
    {
        if (!m_isEngineLost)
            return {};
        ++restarts;
        if (restartAnswer)
            m_isEngineLost = false;
        return restartAnswer;
    }

    struct ThumbnailRequest {
        qint64 index;
        int maxWidth;
        int maxHeight;
        friend bool operator==(const ThumbnailRequest &, const ThumbnailRequest &) = default;
    };
    std::optional<ThumbnailRequest> thumbnailRequest;

private:
    const Error &failed(const Error &error)
    {
        m_isEngineLost = isPDFError(error, PDFErrorCode::EngineFailed) ||
                         isPDFError(error, PDFErrorCode::DeadlineExceeded);
        return error;
    }

    bool m_isEngineLost = false;
};

/// A document whose pages are given.
inline std::unique_ptr<FakePDFDocument> documentOf(std::vector<QByteArray> pages)
{
    auto document = std::make_unique<FakePDFDocument>();
    document->pages = std::move(pages);
    return document;
}
