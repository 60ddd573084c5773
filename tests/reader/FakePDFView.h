#pragma once

#include "pdf/PDFSelection.h"
#include "reader/PDFView.h"

#include <QEventLoop>
#include <QStringList>

/// A view that shows nothing and remembers what it was told.
class FakePDFView : public PDFView
{
public:
    void setDocument(ReaderDocument *document) override
    {
        m_document = document;
        currentPage = document ? std::optional<qint64>(0) : std::nullopt;
    }
    ReaderDocument *document() const override { return m_document; }
    std::optional<qint64> currentPageIndex() const override { return currentPage; }
    std::optional<PDFSelection> currentSelection() const override { return selection; }
    void setCurrentSelection(const std::optional<PDFSelection> &wanted, Animate animate) override
    {
        select(wanted);
        if (animate == Animate::Yes)
            calls.append(QStringLiteral("animated selection"));
    }
    void goToPage(qint64 pageIndex) override { jump(u"page " + QString::number(pageIndex), pageIndex); }
    void goToPosition(const PDFPosition &position) override
    {
        jump(u"position on " + QString::number(position.pageIndex), position.pageIndex);
    }
    void goToSelection(const PDFSelection &wanted) override
    {
        jump(u"selection " + wanted.string(), wanted.pages().first());
    }
    bool canGoBack() const override { return hasBack; }
    bool canGoForward() const override { return hasForward; }
    void goBack() override { calls.append(QStringLiteral("back")); }
    void goForward() override { calls.append(QStringLiteral("forward")); }
    void forgetHistory() override
    {
        hasBack = hasForward = false;
        historyChanged();
    }
    void zoomIn() override { calls.append(QStringLiteral("zoom in")); }
    void zoomOut() override { calls.append(QStringLiteral("zoom out")); }
    void zoomToActualSize() override { calls.append(QStringLiteral("actual size")); }
    void scaleAutomatically() override { calls.append(QStringLiteral("fit")); }

    /// A person selects.
    void select(const std::optional<PDFSelection> &wanted)
    {
        selection = wanted;
        selectionChanged();
    }
    /// A person scrolls.
    void scrollTo(qint64 pageIndex)
    {
        currentPage = pageIndex;
        pageChanged();
    }
    /// Runs the event loop until the view is told to go somewhere, and answers where.
    QString nextJump()
    {
        while (jumps.size() <= m_jumpsSeen)
            m_loop.exec();
        return jumps[m_jumpsSeen++];
    }

    std::optional<qint64> currentPage;
    std::optional<PDFSelection> selection;
    bool hasBack = false;
    bool hasForward = false;
    QStringList calls;
    QStringList jumps;

private:
    void jump(const QString &where, qint64 pageIndex)
    {
        jumps.append(where);
        hasBack = true;
        historyChanged();
        scrollTo(pageIndex);
        m_loop.quit();
    }

    ReaderDocument *m_document = nullptr;
    QEventLoop m_loop;
    qsizetype m_jumpsSeen = 0;
};
