#include "indexing/PageReader.h"

#include "pdf/PDFDocument.h"

namespace
{
bool isNoFaultOfDocument(const Error &error)
{
    return isCancelled(error) || isPDFError(error, PDFErrorCode::EngineMissing);
}
} // namespace

PageReader::PageReader(PDFDocument &document, std::stop_token stop)
    : m_document(document)
    , m_stop(std::move(stop))
{
}

Result<std::optional<QByteArray>> PageReader::read(qint64 index)
{
    if (m_stop.stop_requested())
        return cancelledError();
    if (m_isEngineLost) {
        if (auto replaced = replaceEngine(); !replaced)
            return replaced.error();
    }
    if (m_isOver)
        return std::optional<QByteArray>();
    Result<QByteArray> text = m_document.pageText(index, m_stop);
    if (text)
        return std::optional(*std::move(text));
    if (isNoFaultOfDocument(text.error()))
        return text.error();
    m_isEngineLost = isEngineLoss(text.error());
    m_isOver = m_isEngineLost && m_restarts == kMaxRestarts;
    return std::optional<QByteArray>();
}

Result<void> PageReader::replaceEngine()
{
    m_isEngineLost = false;
    ++m_restarts;
    const Result<void> restarted = m_document.restart(m_stop);
    if (!restarted && isNoFaultOfDocument(restarted.error()))
        return restarted;
    m_isOver = !restarted;
    return {};
}
