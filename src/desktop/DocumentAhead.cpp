#include "desktop/DocumentAhead.h"

#include <utility>

DocumentAhead::DocumentAhead(const QList<PDFOpenRequest> &requests,
                             DocumentOpening::MakeDocument makeDocument)
    : m_makeDocument(std::move(makeDocument))
{
    if (requests.isEmpty())
        return;
    m_path = requests.first().url.toLocalFile();
    m_document = m_makeDocument(m_path);
    m_document->openAhead();
}

std::unique_ptr<ReaderDocument> DocumentAhead::take(const QString &path)
{
    return m_document && path == m_path ? std::move(m_document) : m_makeDocument(path);
}
