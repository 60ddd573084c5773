#pragma once

#include "reader/PDFOpenRequest.h"
#include "support/ViewModelFixture.h"
#include "ui/CoverCache.h"
#include "ui/PaperGrid.h"

#include <QApplication>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QTest>

/// The style of the tests with animations on or off, as desktops ask for them.
class MotionStyle : public QProxyStyle
{
public:
    explicit MotionStyle(int durationMs)
        : m_durationMs(durationMs)
    {
    }
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_Widget_Animation_Duration ? m_durationMs
                                                    : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    int m_durationMs;
};

/// A view model with the collaborators of a grid. Papers are given to the view model directly: what loads
/// them is tested elsewhere.
struct GridFixture : ViewModelFixture {
    /// Papers "p0", "p1"... with titles "Paper 0", "Paper 1"...
    static QList<Paper> papers(int count)
    {
        QList<Paper> made;
        for (int i = 0; i < count; ++i) {
            Paper paper;
            paper.id = u"p" + QString::number(i);
            paper.title = u"Paper " + QString::number(i);
            paper.filepath = u"/papers/" + QString::number(i) + u".pdf";
            made.append(paper);
        }
        return made;
    }

    void show(const QList<Paper> &papers)
    {
        vm().papers = papers;
        vm().filteredPapers = papers;
    }

    /// Shows `window` with the keyboard in it.
    static void activate(QWidget &window)
    {
        window.show();
        QApplication::setActiveWindow(&window);
        window.setFocus();
    }

    /// Runs the event loop until a cover or a file's state was asked of the disk and found.
    void waitForArrival()
    {
        QEventLoop loop;
        QObject::connect(&covers, &CoverCache::arrived, &loop, &QEventLoop::quit);
        loop.exec();
    }

    OpenReaderWindow recordOpening()
    {
        return [this](const PDFOpenRequest &request) {
            opened.append(request);
        };
    }

    CoverCache covers;
    QList<PDFOpenRequest> opened;
};
