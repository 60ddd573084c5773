#pragma once

#include "reader/PDFKitView.h"
#include "support/FakeClock.h"
#include "support/FakePages.h"

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

/// A view on the (offscreen) screen whose clock and pages are driven by hand. Its viewport fits pages of 600
/// points at a scale of 1.
class ReaderViewTest : public testing::Test
{
protected:
    static constexpr int kWidth = 624;
    static constexpr int kHeight = 500;

    ReaderViewTest()
    {
        view.pageChanged = [this] {
            ++pageChanges;
        };
        view.selectionChanged = [this] {
            ++selectionChanges;
        };
        view.historyChanged = [this] {
            ++historyChanges;
        };
        resizeViewport({kWidth, kHeight});
        view.show();
    }

    void resizeViewport(QSize size)
    {
        const QSize around(view.verticalScrollBar()->sizeHint().width(), 0);
        view.resize(size + around);
        QApplication::sendPostedEvents();
    }

    /// Shows the pages, with all that is visible there.
    void showPages()
    {
        view.setPages(pages.source());
        pages.answerAll();
    }

    const Viewpoint &viewpoint() const { return view.viewpoint(); }
    double top() const { return viewpoint().offset().y(); }

    /// Lets every movement come to rest.
    void rest()
    {
        clock.advance(std::chrono::seconds(2));
        pages.answerAll();
    }

    QPoint pointOf(qint64 page, QPointF point) const
    {
        return viewpoint().pageTransform(page).map(point).toPoint();
    }

    QImage picture() { return view.viewport()->grab().toImage(); }

    FakeClock clock;
    FakePages pages{10};
    PDFKitView view{clock};
    int pageChanges = 0;
    int selectionChanges = 0;
    int historyChanges = 0;
};
