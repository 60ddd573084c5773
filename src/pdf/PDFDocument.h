#pragma once

#include "base/Result.h"
#include "pdf/PDFLink.h"
#include "pdf/PDFOutlineItem.h"
#include "pdf/PDFPageGeometry.h"
#include "pdf/PDFPageLabels.h"
#include "pdf/PDFPagePicture.h"
#include "pdf/PDFPageText.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

class InputFile;

/// Codes of the errors in the domain "PDFDocument".
enum class PDFErrorCode {
    NotAPDF = 1,      ///< nothing in the file is a PDF
    Damaged,          ///< a PDF, but beyond repair
    NeedsPassword,    ///< locked, and the empty password does not open it
    WrongPassword,    ///< locked, and the password given does not open it
    PageUnavailable,  ///< this page cannot be loaded or read; others may
    EngineMissing,    ///< the engine's program could not be started
    EngineFailed,     ///< the engine ended or answered nonsense; `restart` may help
    DeadlineExceeded, ///< the engine took too long; `restart` brings it back where it had to be ended
};

Error pdfError(PDFErrorCode code, const QString &reason = {});
/// Whether `error` is of the domain "PDFDocument" and has this code.
bool isPDFError(const Error &error, PDFErrorCode code);
/// Whether after `error` there is no engine that could answer more.
bool isEngineLoss(const Error &error);

/// What a document says of itself. Cleaned: valid text without control characters, trimmed, of limited
/// length.
struct PDFAttributes {
    std::optional<QString> title;  ///< absent when the document has none or it is not a string
    std::optional<QString> author; ///< likewise

    friend bool operator==(const PDFAttributes &, const PDFAttributes &) = default;
};

/// A drawn picture: rows from the top, `width` * 3 bytes of red, green and blue each, without padding.
struct PDFBitmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};

/// Pages of which the shapes can be asked for at once.
inline constexpr qint64 kMaxGeometriesAtOnce = 1000;

/// One open PDF. Use from one thread at a time; every call blocks until the engine has answered, its deadline
/// has passed or `stop` fires (then it fails with `cancelledError`; the engine ends its work and stays, or is
/// ended where it does not).
///
/// Coordinates are points from the upper left of a page as it is shown: cropped, and turned as the page says.
///
/// Nothing that a document claims is trusted: any call can fail on its own, and the page count is a promise.
class PDFDocument
{
public:
    virtual ~PDFDocument() = default;

    virtual const PDFAttributes &attributes() const = 0;

    /// The number of pages that the document claims to have, at least 0. Pages below it may still be
    /// unavailable; allocate nothing by it.
    virtual qint64 pageCount() const = 0;

    /// The words of page `index` (0-based) as printed, UTF-8 in logical order: lines end in "\n", ligatures
    /// and presentation forms are spelled out, hyphens stay. Empty for a page without text.
    virtual Result<QByteArray> pageText(qint64 index, std::stop_token stop = {}) = 0;

    /// Page `index` (0-based), cropped to its art box, drawn to fit inside `maxWidth` by `maxHeight` pixels
    /// with its proportions kept.
    virtual Result<PDFBitmap> thumbnail(qint64 index, int maxWidth, int maxHeight,
                                        std::stop_token stop = {}) = 0;

    /// Shapes of the pages from `first` (0-based) on, `count` of them or fewer: at most up to the claimed
    /// page count and `kMaxGeometriesAtOnce`. Nothing for a page that cannot be had. No page's content is
    /// read.
    virtual Result<QList<std::optional<PDFPageGeometry>>> pageGeometries(qint64 first, qint64 count,
                                                                         std::stop_token stop = {}) = 0;
    /// The shape of page `index` (0-based).
    Result<PDFPageGeometry> pageGeometry(qint64 index, std::stop_token stop = {});

    /// The same text as `pageText` gives, with the box of every character.
    virtual Result<PDFPageText> placedText(qint64 index, std::stop_token stop = {}) = 0;

    /// Page `index` (0-based), or a part of it, drawn on white. Fails with PageUnavailable also for a part
    /// that is larger than an 8K screen or a scale that makes no sense.
    virtual Result<PDFPagePicture> draw(qint64 index, const PDFDrawing &drawing,
                                        std::stop_token stop = {}) = 0;

    /// Empty for a document without one. Of an outline that is damaged, goes in circles, is deeper than 100
    /// levels or longer than 20,000 items, as much as there is.
    virtual Result<std::vector<PDFOutlineItem>> outline(std::stop_token stop = {}) = 0;

    /// The links of page `index` (0-based), from the lowest to the topmost.
    virtual Result<QList<PDFLink>> links(qint64 index, std::stop_token stop = {}) = 0;

    /// How the pages are numbered.
    virtual Result<PDFPageLabels> pageLabels(std::stop_token stop = {}) = 0;

    /// Starts a new engine on the same file after one was lost. Does nothing while the engine is well.
    virtual Result<void> restart(std::stop_token stop = {}) = 0;
};

/// Opens the document in a file; the seam through which tests hand the indexer documents of their own.
using OpenPDF =
    std::function<Result<std::unique_ptr<PDFDocument>>(const InputFile &file, std::stop_token stop)>;
