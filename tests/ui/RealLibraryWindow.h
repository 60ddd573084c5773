#pragma once

#include "app/LibraryCommands.h"
#include "app/LibraryViewModel.h"
#include "app/Services.h"
#include "support/PdfBuilder.h"
#include "support/Programs.h"
#include "support/TemporaryFolder.h"
#include "support/ViewModelFixture.h"
#include "ui/ContentView.h"
#include "ui/CoverCache.h"

#include <QApplication>

/// A library window with everything real behind it: the services, the engine, the indexer. Only the reader is
/// one that writes down what it should open.
struct RealLibraryWindow {
    RealLibraryWindow()
    {
        window.show();
        QApplication::setActiveWindow(&window);
    }

    /// Writes a PDF into `folder` below the test's folder; answers the path.
    QString addPdf(const QString &folder, const QString &title, const QStringList &lines)
    {
        QDir().mkpath(home.path(folder));
        const QByteArray pdf = PdfBuilder().title(PdfBuilder::utf16(title)).page(lines).build();
        return home.write(folder + u'/' + title + u".pdf", pdf);
    }

    /// Imports papers of these titles, one page each with its title in it, and waits for them.
    void importPapers(const QStringList &titles)
    {
        QStringList paths;
        for (const QString &title : titles)
            paths.append(addPdf(QStringLiteral("Papers"), title, {QString(u"All about " + title)}));
        vm.startImport(paths);
        waitUntil(vm.lastImportResult, [](const auto &result) { return result.has_value(); });
        vm.lastImportResult = std::nullopt;
        waitUntil(vm.papers, [&](const QList<Paper> &papers) { return papers.size() == titles.size(); });
        QApplication::setActiveWindow(&window); // the alert took the focus
    }

    /// The window's part, or one of its dialogs, of that name.
    template <typename Part> Part *part(const char *name)
    {
        const auto found = window.findChildren<Part *>(QLatin1String(name));
        for (Part *candidate : found) {
            if (!candidate->isHidden())
                return candidate;
        }
        return nullptr;
    }

    TemporaryFolder home;
    /// Set before the services, which take it from the environment.
    bool hasOwnSettings = qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit()) &&
                          qputenv("QUIREVAULT_OPENLIBRARY_URL", "") &&
                          qputenv("QUIREVAULT_PDF_ENGINE", pdfEngineProgram().toLocal8Bit());
    Services services{{.libraryDatabase = home.path(QStringLiteral("library.db")),
                       .covers = home.path(QStringLiteral("covers"))}};
    LibraryViewModel vm{LibraryViewModel::Collaborators::of(services)};
    LibraryCommands commands{{[] {}, [] {}, [] {},
                              [] {
                              }}};
    CoverCache covers;
    QList<PDFOpenRequest> opened;
    ContentView window{{.vm = vm,
                        .commands = commands,
                        .covers = covers,
                        .preferences = services.preferences(),
                        .openWindow = [this](const PDFOpenRequest &request) {
                            opened.append(request);
                        }}};
};
