#include "screenshots/Stage.h"

#include "app/ImportFlow.h"
#include "screenshots/Camera.h"
#include "screenshots/SamplePapers.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"

#include <QDir>

Stage::Stage(const QString &folder)
    : m_folder(folder)
    , m_services(
          {.libraryDatabase = folder + u"/Quirevault/library.db", .covers = folder + u"/Quirevault/covers"})
    , m_vm(LibraryViewModel::Collaborators::of(m_services))
{
    m_window =
        std::make_unique<ContentView>(ContentView::Collaborators{.vm = m_vm,
                                                                 .commands = m_commands,
                                                                 .covers = m_covers,
                                                                 .preferences = m_services.preferences(),
                                                                 .openWindow = [](const PDFOpenRequest &) {
                                                                 }});
    m_window->show();
    m_window->activateWindow();
}

void Stage::fillLibrary()
{
    const QString papers = m_folder + u"/Papers";
    QDir().mkpath(papers);
    for (const SamplePaper &sample : samplePapers())
        m_files.append(writeSamplePdf(sample, papers));
    m_services.importFlow().run(m_files, {}, [](const ImportProgress &) {});
    addDetails();
    m_vm.loadPapers();
    m_vm.loadTags();
    Camera::settle(1500);
}

Paper Stage::addPaper(const QString &path)
{
    m_services.importFlow().run({path}, {}, [](const ImportProgress &) {});
    const Result<std::optional<Paper>> paper = m_services.library().paperByFilepath(path).result();
    return paper ? paper->value_or(Paper()) : Paper();
}

void Stage::addDetails()
{
    NativeLibraryService &library = m_services.library();
    const QList<Paper> papers = library.allPapers().result().value_or(QList<Paper>());
    for (const SamplePaper &sample : samplePapers()) {
        const auto stored = std::find_if(papers.begin(), papers.end(),
                                         [&](const Paper &paper) { return paper.title == sample.title; });
        if (stored == papers.end())
            continue;
        static_cast<void>(library.updatePaper(stored->id, {.title = {}, .authors = {}, .year = sample.year})
                              .result()
                              .has_value());
        static_cast<void>(m_services.db().replaceTags(stored->id, sample.tags).result().has_value());
        if (sample.year == 2019 || sample.year == 1987)
            static_cast<void>(
                library.addTag(stored->id, QLatin1String(kCurrentlyReadingTag)).result().has_value());
    }
}

Paper Stage::paper(const QString &title)
{
    const QList<Paper> papers = m_vm.papers;
    for (const Paper &paper : papers) {
        if (paper.title == title)
            return paper;
    }
    return papers.value(0);
}
