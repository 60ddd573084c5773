// The icons of a reader's tools come after its page, for which a person waits.
#include "reader/ReaderWindowFixture.h"

#include <QToolBar>
#include <QToolButton>
#include <future>

namespace
{

class PDFViewerWindowIcons : public ReaderWindowTest
{
protected:
    /// Without a turn of the event loop, so that nothing has been painted.
    void openAtOnce(const QString &path)
    {
        window = openPDFViewerWindow(requestFor(path), services);
        QApplication::setActiveWindow(window);
    }

    QList<QAction *> tools() const
    {
        QList<QAction *> found;
        for (QAction *action : find<QToolBar>("readerToolBar")->actions()) {
            if (!action->icon().isNull())
                found.append(action);
        }
        return found;
    }

    static bool isBlank(const QAction *tool) { return tool->icon().availableSizes() == QList{QSize(1, 1)}; }
    bool areBlank() const
    {
        const QList<QAction *> all = tools();
        return std::all_of(all.begin(), all.end(), isBlank);
    }
    bool areThere() const
    {
        const QList<QAction *> all = tools();
        return std::none_of(all.begin(), all.end(), isBlank);
    }

    void awaitIcons()
    {
        QEventLoop loop;
        for (QAction *tool : tools()) {
            QObject::connect(tool, &QAction::changed, &loop, [this, &loop] {
                if (areThere())
                    loop.quit();
            });
        }
        if (!areThere())
            loop.exec();
    }

    QList<QRect> placesOfTools() const
    {
        QList<QRect> places;
        for (const QWidget *widget : find<QToolBar>("readerToolBar")->findChildren<QWidget *>())
            places.append(widget->geometry());
        return places;
    }

    QString page() const { return writePdf(QStringLiteral("one.pdf"), {{QStringLiteral("a page")}}); }
};

} // namespace

TEST_F(PDFViewerWindowIcons, ComeWhenThePageHasBeenPainted)
{
    openAtOnce(page());
    EXPECT_EQ(tools().size(), 10);
    EXPECT_TRUE(areBlank());
    awaitIcons();
    EXPECT_TRUE(window->view().isSharp());
}

TEST_F(PDFViewerWindowIcons, MoveNothingWhenTheyCome)
{
    openAtOnce(page());
    const QList<QRect> before = placesOfTools();
    awaitIcons();
    QApplication::sendPostedEvents();
    EXPECT_EQ(placesOfTools(), before);
}

TEST_F(PDFViewerWindowIcons, ComeForADocumentThatCannotBeShown)
{
    open(requestFor(library.folder.write(QStringLiteral("bad.pdf"), "no PDF at all")));
    EXPECT_TRUE(isShown("failurePage"));
    EXPECT_TRUE(areThere());
}

TEST_F(PDFViewerWindowIcons, ComeAQuarterOfASecondLaterWhenNoPageDoes)
{
    std::promise<void> end;
    services.makeDocument = [mayEnd = end.get_future().share()](const QString &) {
        return std::make_unique<ReaderDocument>(
            [mayEnd](const std::optional<QString> &,
                     std::stop_token) -> Result<std::unique_ptr<PDFDocument>> {
                mayEnd.wait();
                return cancelledError();
            });
    };
    openAtOnce(page());
    clock.advance(std::chrono::milliseconds(249));
    EXPECT_TRUE(areBlank());
    clock.advance(std::chrono::milliseconds(1));
    EXPECT_TRUE(areThere());
    end.set_value();
}

TEST_F(PDFViewerWindowIcons, AreLookedForOnce)
{
    openAndArrive(requestFor(page()));
    awaitIcons();
    QSignalSpy changes(actions().back, &QAction::changed);
    rest();
    EXPECT_EQ(changes.size(), 0);
}
