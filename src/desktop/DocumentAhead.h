#pragma once

#include "reader/DocumentOpening.h"
#include "reader/PDFOpenRequest.h"

#include <QList>
#include <memory>

/// The document for which the program was started, opened while the rest of the program is made: until its
/// engine can draw takes as long. Main thread.
class DocumentAhead
{
public:
    /// Opens that of the first request, if there is one.
    explicit DocumentAhead(const QList<PDFOpenRequest> &requests,
                           DocumentOpening::MakeDocument makeDocument = engineReaderDocument);

    /// The document at `path`; another one when it is not the one that was opened, or was taken already.
    std::unique_ptr<ReaderDocument> take(const QString &path);

private:
    DocumentOpening::MakeDocument m_makeDocument;
    QString m_path;
    std::unique_ptr<ReaderDocument> m_document;
};
