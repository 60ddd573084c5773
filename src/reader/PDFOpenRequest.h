#pragma once

#include "base/Result.h"

#include <QHashFunctions>
#include <QJsonObject>
#include <QString>
#include <QUrl>
#include <QUuid>
#include <functional>
#include <optional>

/// What a reader window shows on arrival; the session file stores the same value to open the window again.
/// Its JSON keys are the names of the fields.
struct PDFOpenRequest {
    QUuid id;                                  ///< identity of this request, one a window
    QUrl url;                                  ///< the file
    std::optional<qint64> page = {};           ///< to show first, 1-based
    std::optional<QString> paperId = {};       ///< when the PDF is a paper of the library
    std::optional<QString> searchText = {};    ///< to search the document for
    std::optional<QString> highlightText = {}; ///< the passage to light

    friend bool operator==(const PDFOpenRequest &, const PDFOpenRequest &) = default;
};

size_t qHash(const PDFOpenRequest &request, size_t seed = 0);

/// Absent fields are left out.
QJsonObject toJson(const PDFOpenRequest &request);
/// Fails with domain "PDFOpenRequest" when a field has the wrong type, or `id` or `url` is missing or is
/// none.
Result<PDFOpenRequest> openRequestFromJson(const QJsonObject &json);

/// Opens a reader window; how windows of the library ask for one.
using OpenReaderWindow = std::function<void(const PDFOpenRequest &request)>;
