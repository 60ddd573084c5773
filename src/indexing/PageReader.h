#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <optional>
#include <stop_token>

class PDFDocument;

/// Reads a document's pages one after another although any of them may fail or cost the engine.
///
/// A page that fails is a page without text. When a page costs the engine, a new one is started for the
/// pages behind it; a document that costs more than `kMaxRestarts` is over where it stands. Only what is no
/// fault of the document is an error: a stop, or an engine that cannot be started.
class PageReader
{
public:
    /// Engines that one document may cost before reading it ends. Chosen: real damaged files lose at most
    /// one, and each loss may have taken a whole deadline.
    static constexpr int kMaxRestarts = 3;

    PageReader(PDFDocument &document, std::stop_token stop);

    /// The text of page `index` (0-based); empty when the page has none, nothing when it cannot be read.
    Result<std::optional<QByteArray>> read(qint64 index);

    /// Whether the engine is lost for good: every further page is unreadable.
    bool isOver() const { return m_isOver; }

private:
    Result<void> replaceEngine();

    PDFDocument &m_document;
    std::stop_token m_stop;
    // What was asked of the document before may have cost its engine; that loss is not the pages' fault.
    bool m_isEngineLost = true;
    int m_restarts = -1;
    bool m_isOver = false;
};
