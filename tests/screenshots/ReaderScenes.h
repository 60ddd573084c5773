#pragma once

#include "reader/PDFViewerWindow.h"
#include "screenshots/Camera.h"
#include "screenshots/Stage.h"

#include <QPointer>

/// Goes through the states of a reader window, on real PDFs that real engines read.
class ReaderScenes
{
public:
    /// Hides the library window. Both must outlive the scenes.
    ReaderScenes(Stage &stage, Camera &camera);
    ~ReaderScenes();

    /// The main states: reading, hits, arrival on a passage, dark pages.
    void takeReading();
    /// All others.
    void takeRest();

private:
    void takeBookmarks();
    void takeShapes();
    void takeTroubles();
    void takeDarkDesktop();

    PDFOpenRequest articleRequest() const;
    /// Opens a window instead of the one before, and waits until there is something to see.
    void open(const PDFOpenRequest &request);
    void openFile(const QString &path)
    {
        open({.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(path)});
    }
    void untilSharp();
    void search(const QString &words);
    /// Selects by hand what a line of the page holds.
    void selectLine(qint64 pageIndex, double fromTop);
    void take(const char *name);
    template <typename Part> Part *part(const char *name)
    {
        return m_window->findChild<Part *>(QLatin1String(name));
    }

    Stage &m_stage;
    Camera &m_camera;
    Paper m_article;
    ReaderServices m_services;
    QPointer<PDFViewerWindow> m_window;
};
