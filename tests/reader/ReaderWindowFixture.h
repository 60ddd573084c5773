#pragma once

#include "platform/Preferences.h"
#include "reader/Await.h"
#include "reader/PDFKitView.h"
#include "reader/PDFViewerWindow.h"
#include "reader/ReaderActions.h"
#include "search/NativeSearchService.h"
#include "support/FakeClock.h"
#include "support/PdfBuilder.h"
#include "support/TestLibrary.h"

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

/// Reader windows on real PDFs, read by real engines, over a real library. Time is driven by the test.
class ReaderWindowTest : public ::testing::Test
{
protected:
    using Stage = DocumentOpening::Stage;

    ReaderWindowTest() { qputenv("XDG_CONFIG_HOME", library.folder.path().toLocal8Bit()); }

    ~ReaderWindowTest() override
    {
        delete window;
        static_cast<void>(library.db.query(QStringLiteral("SELECT 1")).result().has_value());
        QCoreApplication::processEvents();
    }

    /// A PDF whose pages hold these lines, one list a page.
    QString writePdf(const QString &name, const QList<QStringList> &pages) const
    {
        PdfBuilder pdf;
        for (const QStringList &lines : pages)
            pdf.page(lines);
        return library.folder.write(name, pdf.build());
    }

    /// Makes the file a paper of the library.
    void addPaper(const QString &id, const QString &path, const QString &contentHash = {})
    {
        library.run(
            QStringLiteral("INSERT INTO papers (id, title, filepath, content_hash) VALUES (?, ?, ?, ?)"),
            {id, QString(u"Title of " + id), path, contentHash});
    }

    static PDFOpenRequest requestFor(const QString &path)
    {
        return {.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(path)};
    }

    /// Opens a window and waits until its document is open, or something stands in the way.
    PDFViewerWindow &open(const PDFOpenRequest &request)
    {
        delete window;
        window = openPDFViewerWindow(request, services);
        QApplication::setActiveWindow(window);
        awaitThat(window->opening().state,
                  [this] { return window->opening().state.value().stage != Stage::Opening; });
        return *window;
    }
    /// The same, and lets the first jump be made.
    PDFViewerWindow &openAndArrive(const PDFOpenRequest &request)
    {
        open(request);
        clock.advance(std::chrono::milliseconds(50));
        rest();
        return *window;
    }

    void awaitStage(Stage stage)
    {
        auto &state = window->opening().state;
        awaitThat(state, [&] { return state.value().stage == stage; });
    }
    /// Lets every movement come to rest.
    void rest() { clock.advance(std::chrono::seconds(2)); }

    PDFViewerController &reader() { return window->controller(); }
    ReaderActions &actions() { return window->actions(); }

    template <typename Widget> Widget *find(const char *name) const
    {
        auto *found = window->findChild<Widget *>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return found;
    }
    /// Whether the widget is the one that is shown in the document's place.
    bool isShown(const char *name) const
    {
        const auto *found = window->findChild<QWidget *>(QLatin1String(name));
        return found && found->isVisible();
    }

    TestLibrary library;
    FakeClock clock;
    Preferences preferences;
    NativeSearchService search{library.db};
    int libraryShown = 0;
    QStringList librarySearches;
    ReaderServices services{
        .library = library.service,
        .bookmarkEvents = library.bookmarkEvents,
        .searchInPaper = [this](const QString &paperId,
                                const QString &query) { return search.searchInPaper(paperId, query); },
        .clock = clock,
        .preferences = preferences,
        .showLibrary = [this] { ++libraryShown; },
        .searchInLibrary = [this](const QString &text) { librarySearches.append(text); },
    };
    QPointer<PDFViewerWindow> window;
};
