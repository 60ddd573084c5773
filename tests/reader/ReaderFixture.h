#pragma once

#include "reader/Await.h"
#include "reader/FakePDFView.h"
#include "reader/PDFViewerController.h"
#include "reader/ReaderDocument.h"
#include "support/FakeClock.h"
#include "support/FakePDFDocument.h"
#include "support/PlacedText.h"
#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QPromise>
#include <deque>
#include <qcorotask.h>

/// A controller over a real, empty library, a view that shows nothing and a document as the test describes
/// it. Time and the search are driven by the test.
struct ReaderFixture {
    using Hits = Result<QList<Passage>>;

    ~ReaderFixture()
    {
        controller.reset();
        for (QPromise<Hits> &search : searches) {
            if (search.future().isFinished())
                continue;
            search.addResult(Hits(cancelledError()));
            search.finish();
        }
        static_cast<void>(library.db.query(QStringLiteral("SELECT 1")).result().has_value());
        QCoreApplication::processEvents();
    }

    /// Opens the document, which has `pageCount` pages, and shows it.
    void show(qint64 pageCount = 20)
    {
        pages = pageCount;
        const QFuture<Result<void>> opening = document.open();
        ASSERT_TRUE(opening.result());
        QCoro::waitFor(controller->load(document));
    }

    PDFOpenRequest requestOf(const QString &paperId) const
    {
        PDFOpenRequest request{.id = QUuid::createUuid(),
                               .url = QUrl::fromLocalFile(QStringLiteral("/papers/p.pdf"))};
        request.paperId = paperId;
        return request;
    }

    /// Answers the search that was asked at this index.
    void answer(size_t index, const Hits &hits)
    {
        searches.at(index).addResult(hits);
        searches.at(index).finish();
    }

    std::unique_ptr<PDFDocument> makeDocument() const
    {
        auto fake = std::make_unique<FakePDFDocument>();
        fake->claimedPages = pages;
        fake->placedTexts = texts;
        fake->itsOutline = outline;
        fake->itsPageLabels = labels;
        return fake;
    }

    qint64 pages = 0;
    std::map<qint64, PDFPageText> texts;
    Result<std::vector<PDFOutlineItem>> outline = std::vector<PDFOutlineItem>();
    PDFPageLabels labels;

    TestLibrary library;
    FakeClock clock;
    FakePDFView view;
    QStringList queries; ///< asked of the search, each "paper: query"
    std::deque<QPromise<Hits>> searches;
    ReaderDocument document{[this](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
        return makeDocument();
    }};
    std::unique_ptr<PDFViewerController> controller =
        std::make_unique<PDFViewerController>(PDFViewerController::Collaborators{
            .view = view,
            .library = library.service,
            .bookmarkEvents = library.bookmarkEvents,
            .clock = clock,
            .searchInPaper =
                [this](const QString &paperId, const QString &query) {
                    queries.append(QString(paperId + u": " + query));
                    QPromise<Hits> &search = searches.emplace_back();
                    search.start();
                    return search.future();
                },
        });
};
