#include "desktop/DocumentAhead.h"

#include "reader/DocumentOpening.h"

#include <utility>

DocumentAhead::DocumentAhead(const QList<PDFOpenRequest> &requests)
{
    if (requests.isEmpty())
        return;
    m_path = requests.first().url.toLocalFile();
    m_document = engineReaderDocument(m_path);
    m_document->openAhead();
}

DocumentAhead::~DocumentAhead() = default;

std::unique_ptr<ReaderDocument> DocumentAhead::take(const QString &path)
{
    return m_document && path == m_path ? std::move(m_document) : engineReaderDocument(path);
}
