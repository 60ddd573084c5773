#include "reader/PagePrinter.h"

#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <cmath>
#include <qcorofuture.h>

namespace
{
constexpr double kPointsPerInch = 72;
/// Beyond it print gets no finer to the eye, and pictures get huge.
constexpr int kMostDotsPerInch = 300;
/// Of a page's picture, either way. Chosen: A3 at the finest; posters get coarser.
constexpr double kMostPixels = 5000;

/// The whole page, at `scale` or what keeps it within bounds. On the document's thread.
Result<QImage> drawPage(PDFDocument &pdf, qint64 pageIndex, double scale, const std::stop_token &stop)
{
    const Result<PDFPageGeometry> shape = pdf.pageGeometry(pageIndex, stop);
    if (!shape)
        return shape.error();
    const double longer = std::max(shape->size.width(), shape->size.height());
    const double fitting = std::min(scale, kMostPixels / longer);
    const QSize size(std::max(1, int(std::ceil(shape->size.width() * fitting))),
                     std::max(1, int(std::ceil(shape->size.height() * fitting))));
    const Result<PDFPagePicture> drawn =
        pdf.draw(pageIndex, {.scale = fitting, .clip = QRect(QPoint(), size)}, stop);
    if (!drawn)
        return drawn.error();
    return QImage(drawn->pixels(), drawn->width(), drawn->height(), drawn->bytesPerLine(),
                  QImage::Format_RGB32)
        .copy();
}
} // namespace

PagePrinter::PagePrinter(ReaderDocument &document, std::shared_ptr<QPrinter> printer, QObject *parent)
    : QObject(parent)
    , m_document(&document)
    , m_printer(std::move(printer))
    , m_first(std::max(1, m_printer->fromPage()) - 1)
    , m_last(std::min<qint64>(m_printer->toPage() > 0 ? m_printer->toPage() : document.pageCount(),
                              document.pageCount()) -
             1)
{
}

PagePrinter::~PagePrinter()
{
    m_stop.request_stop();
}

QCoro::Task<std::optional<QString>> PagePrinter::print()
{
    const QPointer self(this);
    const std::shared_ptr<QPrinter> printer = m_printer; // the painter needs it to its end
    QPainter painter;
    if (!painter.begin(printer.get()))
        co_return QStringLiteral("The printer cannot be used.");
    for (qint64 page = m_first; page <= m_last; ++page) {
        if (page > m_first && !printer->newPage())
            co_return QStringLiteral("The printer takes no further page.");
        auto drawing = pictureOf(page);
        const Result<QImage> picture = co_await drawing;
        if (!self || m_stop.stop_requested()) {
            printer->abort();
            co_return std::nullopt;
        }
        if (!picture && !isPDFError(picture.error(), PDFErrorCode::PageUnavailable)) {
            printer->abort();
            co_return QString(u"The document was lost before page " + QString::number(page + 1) +
                              u" was printed.");
        }
        draw(painter, picture ? *picture : QImage());
        Q_EMIT progressed(page - m_first + 1);
        if (!self)
            co_return std::nullopt; // who heard of it may have closed the window
    }
    co_return std::nullopt;
}

QCoro::Task<Result<QImage>> PagePrinter::pictureOf(qint64 pageIndex)
{
    if (!m_document)
        co_return cancelledError();
    const double scale = std::min(m_printer->resolution(), kMostDotsPerInch) / kPointsPerInch;
    const auto drawing = m_document->ask(ReaderDocument::Priority::Ahead, m_stop.get_token(),
                                         [pageIndex, scale](PDFDocument &pdf, std::stop_token stop) {
                                             return drawPage(pdf, pageIndex, scale, stop);
                                         });
    co_return co_await drawing;
}

/// As large as the paper allows, in the middle, turned where that fits better; what has no picture says so.
void PagePrinter::draw(QPainter &painter, const QImage &picture)
{
    const QRect paper = painter.viewport();
    if (picture.isNull()) {
        painter.drawText(paper, Qt::AlignCenter, QStringLiteral("This page cannot be shown"));
        return;
    }
    const bool isAcross = (picture.width() > picture.height()) != (paper.width() > paper.height());
    const QImage page = isAcross ? picture.transformed(QTransform().rotate(-90)) : picture;
    QSize size = page.size();
    size.scale(paper.size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), size);
    place.moveCenter(paper.center());
    painter.drawImage(place, page);
}
