#include "pdf/PDFDocument.h"

namespace
{
QString descriptionOf(PDFErrorCode code)
{
    switch (code) {
    case PDFErrorCode::NotAPDF:
        return QStringLiteral("The file is not a PDF");
    case PDFErrorCode::Damaged:
        return QStringLiteral("The PDF is damaged beyond repair");
    case PDFErrorCode::NeedsPassword:
        return QStringLiteral("The PDF is locked and needs a password");
    case PDFErrorCode::WrongPassword:
        return QStringLiteral("The password does not open the PDF");
    case PDFErrorCode::PageUnavailable:
        return QStringLiteral("The page cannot be read");
    case PDFErrorCode::EngineMissing:
        return QStringLiteral("The PDF engine cannot be started");
    case PDFErrorCode::EngineFailed:
        return QStringLiteral("The PDF engine failed on this document");
    case PDFErrorCode::DeadlineExceeded:
        return QStringLiteral("The PDF takes too long to read");
    }
    Q_UNREACHABLE();
}
} // namespace

Error pdfError(PDFErrorCode code, const QString &reason)
{
    return {QStringLiteral("PDFDocument"), int(code), descriptionOf(code), reason};
}

bool isPDFError(const Error &error, PDFErrorCode code)
{
    return error.domain == u"PDFDocument" && error.code == int(code);
}

bool isEngineLoss(const Error &error)
{
    return isPDFError(error, PDFErrorCode::EngineFailed) ||
           isPDFError(error, PDFErrorCode::DeadlineExceeded) ||
           isPDFError(error, PDFErrorCode::EngineMissing);
}

Result<PDFPageGeometry> PDFDocument::pageGeometry(qint64 index, std::stop_token stop)
{
    Result<QList<std::optional<PDFPageGeometry>>> geometries = pageGeometries(index, 1, stop);
    if (!geometries)
        return geometries.error();
    if (geometries->isEmpty() || !geometries->first())
        return pdfError(PDFErrorCode::PageUnavailable);
    return *geometries->first();
}
