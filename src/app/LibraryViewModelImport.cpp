// Importing.
#include "app/ImportFlow.h"
#include "app/LibraryViewModelWork.h"
#include "app/PDFDiscovery.h"
#include "base/Log.h"
#include "store/NativeLibraryService.h"

#include <QFile>
#include <QPointer>
#include <algorithm>
#include <qcorofuture.h>

namespace
{

/// Problems that a message lists one by one; the log has all.
constexpr int kProblemsShown = 10;

QString fileName(const QString &path)
{
    return path.section(u'/', -1);
}

/// Ascending by file name, by code point.
void sortByFileName(QStringList &paths)
{
    std::stable_sort(paths.begin(), paths.end(), [](const QString &left, const QString &right) {
        return fileName(left).toStdU32String() < fileName(right).toStdU32String();
    });
}

DiscoveredPDFs discover(const QStringList &locations, const std::stop_token &stop)
{
    std::vector<std::filesystem::path> paths;
    for (const QString &location : locations)
        paths.emplace_back(QFile::encodeName(location).toStdString());
    return discoverPDFs(paths, stop);
}

QString textOf(const QMap<QString, QString> &problems)
{
    QStringList lines{QStringLiteral("Some of what you chose could not be looked at:")};
    for (auto problem = problems.begin(); problem != problems.end(); ++problem) {
        if (lines.size() > kProblemsShown) {
            lines.append(QStringLiteral("and %1 more").arg(problems.size() - kProblemsShown));
            break;
        }
        lines.append(problem.key() + u": " + problem.value());
    }
    return lines.join(u'\n');
}

} // namespace

void LibraryViewModel::setOpenPanel(OpenPanel panel)
{
    requireMainThread();
    m_openPanel = std::move(panel);
}

void LibraryViewModel::chooseAndImport()
{
    requireMainThread();
    if (!m_openPanel)
        return;
    m_openPanel([self = QPointer(this)](const QStringList &locations) {
        if (self)
            self->importLocations(locations);
    });
}

QCoro::Task<> LibraryViewModel::importLocations(QStringList locations)
{
    requireMainThread();
    if (refuseImport())
        co_return;
    const QPointer self(this);
    const QFuture<DiscoveredPDFs> discovering = QtConcurrent::run(
        &m_workers, [locations, stop = m_end.get_token()] { return discover(locations, stop); });
    const DiscoveredPDFs found = co_await discovering;
    if (!self)
        co_return;
    for (auto problem = found.problems.begin(); problem != found.problems.end(); ++problem)
        logLine(u"PDFDiscovery: " + problem.key() + u": " + problem.value());
    m_problems.insert(found.problems);
    if (found.paths.isEmpty() && !found.problems.isEmpty()) {
        tellProblems();
        co_return;
    }
    QCoro::Task<> importing = importURLs(found.paths, found.containsFolder);
    co_await importing;
}

QCoro::Task<> LibraryViewModel::importURLs(QStringList candidates, bool containsFolder)
{
    requireMainThread();
    if (refuseImport())
        co_return;
    const QPointer self(this);
    // Picking out and sorting tens of thousands of paths takes longer than a frame.
    const QFuture<QStringList> comparing = QtConcurrent::run(&m_workers, [this, candidates] {
        // Without the stored paths every candidate counts as new: indexing knows a file by its content.
        const Result<QSet<QString>> stored = m_with.library.allFilepaths().result();
        QStringList fresh = newPaths(candidates, stored.value_or(QSet<QString>()));
        sortByFileName(fresh);
        return fresh;
    });
    const QStringList fresh = co_await comparing;
    if (!self || refuseImport())
        co_return;
    if (fresh.isEmpty()) {
        errorMessage =
            QStringLiteral("All selected files (%1) are already in your library.").arg(candidates.size());
        tellProblems();
    } else if (fresh.size() == 1 && !containsFolder) {
        startImport(fresh);
    } else {
        discoveredPDFs = fresh;
        showImportPicker = true;
    }
}

/// What was found while looking for files and has not been told with an import yet.
void LibraryViewModel::tellProblems()
{
    if (m_problems.isEmpty() || isImporting || showImportPicker)
        return;
    const QString before = errorMessage.value() ? *errorMessage.value() + u"\n\n" : QString();
    errorMessage = before + textOf(m_problems);
    m_problems.clear();
}

bool LibraryViewModel::refuseImport()
{
    if (isImporting)
        errorMessage = QStringLiteral("An import is running. Add more files when it has ended.");
    else if (showImportPicker)
        errorMessage = QStringLiteral("Found PDFs wait to be reviewed. Add more files when that is done.");
    return isImporting || showImportPicker;
}

void LibraryViewModel::importSelected(const QStringList &paths)
{
    startImport(paths);
}

void LibraryViewModel::startImport(const QStringList &paths)
{
    requireMainThread();
    if (isImporting || paths.isEmpty())
        return;
    m_cancelImport = {};
    isImporting = true;
    errorMessage = std::nullopt;
    importingTotal = static_cast<int>(paths.size());
    importingCount = 0;
    importProgress = 0;
    importStatus = QStringLiteral("Starting import...");
    importTimeEstimate = QString();
    isCancellingImport = false;
    runImport(paths);
}

QCoro::Task<> LibraryViewModel::runImport(QStringList paths)
{
    const QPointer self(this);
    const ImportStops stops{.beginNoMore = m_cancelImport.get_token(), .abandon = m_end.get_token()};
    const QFuture<ImportOutcome> running = QtConcurrent::run(&m_workers, [this, paths, stops] {
        return m_with.importFlow.run(paths, stops, [this](const ImportProgress &progress) {
            QMetaObject::invokeMethod(
                this, [this, progress] { foldIn(progress); }, Qt::QueuedConnection);
        });
    });
    const ImportOutcome outcome = co_await afterReportsOf(running);
    if (self)
        finishImport(outcome);
}

void LibraryViewModel::foldIn(const ImportProgress &progress)
{
    importingCount = progress.done;
    importProgress = progress.fraction();
    importStatus = progress.status;
    importTimeEstimate = progress.timeEstimate;
}

void LibraryViewModel::finishImport(const ImportOutcome &outcome)
{
    IndexFilesResponse response = outcome.response;
    response.errors.insert(m_problems);
    m_problems.clear();
    lastImportResult = response;
    isImporting = false;
    isCancellingImport = false;
    importTimeEstimate = QString();
    reload();
}

void LibraryViewModel::cancelImport()
{
    requireMainThread();
    if (!isImporting)
        return;
    isCancellingImport = true;
    m_cancelImport.request_stop();
}
