#include "reader/DocumentPages.h"

#include "reader/PageLayout.h"
#include "reader/ReaderDocument.h"

#include <QFutureWatcher>

namespace
{
using Watcher = QFutureWatcher<Result<PageAnswer>>;

/// `result` as one of the answers, changed by `convert`.
template <typename T, typename Convert>
Result<PageAnswer> answerFrom(const Result<T> &result, Convert convert)
{
    if (!result)
        return result.error();
    return PageAnswer(convert(*result));
}

PageSizes sizesOf(const QList<std::optional<PDFPageGeometry>> &geometries)
{
    PageSizes sizes;
    for (const std::optional<PDFPageGeometry> &geometry : geometries)
        sizes.push_back(geometry ? std::optional(geometry->size) : std::nullopt);
    sizes.resize(size_t(PageLayout::kBlockPages)); // a document that has fewer than it claims
    return sizes;
}

/// Without a copy: the picture's memory lives as long as the image.
QImage imageOf(const PDFPagePicture &picture)
{
    const auto letGo = [](void *kept) {
        delete static_cast<PDFPagePicture *>(kept);
    };
    return QImage(picture.pixels(), picture.width(), picture.height(), picture.bytesPerLine(),
                  QImage::Format_RGB32, letGo, new PDFPagePicture(picture));
}

PDFDrawing drawingOf(const PageTile &tile)
{
    return {tile.style.scale, tile.part, 90 * tile.style.turns, tile.style.isDark};
}

template <typename T> T unchanged(const T &value)
{
    return value;
}
} // namespace

DocumentPages::DocumentPages(ReaderDocument &document)
    : m_document(&document)
{
}

bool DocumentPages::isOpen() const
{
    return m_document && m_document->isOpen();
}

qint64 DocumentPages::pageCount() const
{
    return m_document ? m_document->pageCount() : 0;
}

void DocumentPages::ask(const PlannedJob &planned, std::stop_token stop, Answered answered)
{
    const PageJob &job = planned.job;
    switch (job.kind) {
    case PageJob::Kind::Sizes:
        return pass(planned, stop, std::move(answered),
                    [job](PDFDocument &document, std::stop_token itsStop) {
                        return answerFrom(document.pageGeometries(job.page, PageLayout::kBlockPages, itsStop),
                                          sizesOf);
                    });
    case PageJob::Kind::Picture:
        return pass(planned, stop, std::move(answered),
                    [job](PDFDocument &document, std::stop_token itsStop) {
                        return answerFrom(document.draw(job.page, drawingOf(job.tile), itsStop), imageOf);
                    });
    case PageJob::Kind::Text:
        return pass(planned, stop, std::move(answered),
                    [job](PDFDocument &document, std::stop_token itsStop) {
                        return answerFrom(document.placedText(job.page, itsStop), unchanged<PDFPageText>);
                    });
    case PageJob::Kind::Links:
        return pass(planned, stop, std::move(answered),
                    [job](PDFDocument &document, std::stop_token itsStop) {
                        return answerFrom(document.links(job.page, itsStop), unchanged<QList<PDFLink>>);
                    });
    }
}

void DocumentPages::handOver(PageJob::Kind kind)
{
    const QObjectList children = m_answering.at(size_t(kind)).children();
    const QList<QPointer<QObject>> waiting(children.begin(), children.end());
    for (const QPointer<QObject> &child : waiting) { // the first answer may end them all
        auto *watcher = static_cast<Watcher *>(child.data());
        if (watcher && watcher->isFinished())
            Q_EMIT watcher->finished();
    }
}

// A watcher, not QFuture::then() with a context: that one must not be destroyed before the answer comes.
template <typename Request>
void DocumentPages::pass(const PlannedJob &planned, std::stop_token stop, Answered answered, Request request)
{
    const auto priority =
        planned.isVisible ? ReaderDocument::Priority::Visible : ReaderDocument::Priority::Ahead;
    auto *watcher = new Watcher(&m_answering.at(size_t(planned.job.kind)));
    QObject::connect(watcher, &QFutureWatcherBase::finished, watcher,
                     [watcher, answered = std::move(answered)] {
                         watcher->disconnect(); // once, whoever asks for it
                         watcher->deleteLater();
                         answered(watcher->result());
                     });
    watcher->setFuture(m_document->ask(priority, std::move(stop), std::move(request)));
}
