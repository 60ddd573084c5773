#pragma once

#include "pdf/EngineConnection.h"
#include "pdf/PDFDocument.h"

#include <chrono>

/// How long the engine may take for each kind of request before it is ended. Chosen: the slowest real files
/// measured need a few seconds, and whoever waits has given up by then.
struct EngineDeadlines {
    std::chrono::milliseconds open = std::chrono::seconds(20);
    std::chrono::milliseconds pageText = std::chrono::seconds(10);
    std::chrono::milliseconds thumbnail = std::chrono::seconds(10);
    std::chrono::milliseconds draw = std::chrono::seconds(20);
    std::chrono::milliseconds structure = std::chrono::seconds(10); ///< shapes, outline, links, labels
    /// For an engine that was stopped, or is late, to end its work before it is ended itself. Chosen: longer
    /// than it takes over any step but the decoding of a huge picture.
    std::chrono::milliseconds grace = std::chrono::milliseconds(500);
};

/// Which engine to use and how long to wait for it.
struct EngineOptions {
    QString program; ///< empty for `engineProgram()`
    EngineDeadlines deadlines = {};
    std::optional<QString> password = {}; ///< with which to open a locked document
};

/// A PDF that is read by an engine of its own, a confined process that lives as long as this object.
class EngineDocument : public PDFDocument
{
public:
    /// Starts an engine on `file`, of which only a copy of the descriptor is kept.
    static Result<std::unique_ptr<PDFDocument>> open(const InputFile &file, const EngineOptions &options,
                                                     std::stop_token stop = {});

    const PDFAttributes &attributes() const override { return m_attributes; }
    qint64 pageCount() const override { return m_pageCount; }
    Result<QByteArray> pageText(qint64 index, std::stop_token stop = {}) override;
    Result<PDFBitmap> thumbnail(qint64 index, int maxWidth, int maxHeight,
                                std::stop_token stop = {}) override;
    Result<QList<std::optional<PDFPageGeometry>>> pageGeometries(qint64 first, qint64 count,
                                                                 std::stop_token stop = {}) override;
    Result<PDFPageText> placedText(qint64 index, std::stop_token stop = {}) override;
    Result<PDFPagePicture> draw(qint64 index, const PDFDrawing &drawing, std::stop_token stop = {}) override;
    Result<std::vector<PDFOutlineItem>> outline(std::stop_token stop = {}) override;
    Result<QList<PDFLink>> links(qint64 index, std::stop_token stop = {}) override;
    Result<PDFPageLabels> pageLabels(std::stop_token stop = {}) override;
    Result<void> restart(std::stop_token stop = {}) override;

private:
    EngineDocument(FileDescriptor file, const EngineOptions &options);

    Result<void> start(std::stop_token stop);
    /// The reply to `request` when it is a `Wanted`; the error that it stands for otherwise.
    template <typename Wanted>
    Result<Wanted> ask(const Request &request, std::chrono::milliseconds deadline, std::stop_token stop,
                       int memory = -1);
    /// `answer`, unless it is nothing: then the engine answered what makes no sense.
    template <typename Answer> Result<Answer> checked(std::optional<Answer> answer);

    FileDescriptor m_file;
    EngineOptions m_options;
    EngineConnection m_connection;
    PDFAttributes m_attributes;
    qint64 m_pageCount = 0;
};

/// Opens documents with the engine. May be called from any thread.
OpenPDF engineOpener(const EngineOptions &options = {});
