#include "app/LibraryViewModel.h"

#include "support/ViewModelFixture.h"

#include <QDir>
#include <barrier>
#include <latch>

using namespace std::chrono_literals;

class LibraryViewModelImportTest : public testing::Test, protected ViewModelFixture
{
protected:
    /// Makes a file below the test's folder and answers its path.
    QString file(const QString &name)
    {
        const QString path = library.folder.path(name);
        QDir().mkpath(QFileInfo(path).path());
        return library.folder.write(name, "%PDF-");
    }
    QString folder(const QString &name) { return library.folder.path(name); }
    static QStringList numberedPaths(int count)
    {
        QStringList paths;
        for (int i = 0; i < count; ++i)
            paths.append(QStringLiteral("/papers/%1.pdf").arg(i));
        return paths;
    }

    void import(const QStringList &paths)
    {
        vm().startImport(paths);
        finish();
    }
    void finish()
    {
        waitUntil(vm().isImporting, false);
        waitUntil(vm().isLoading, false);
    }
    QStringList shown() { return idsOf(vm().papers); }
    qsizetype indexedCount() { return vm().lastImportResult.value()->indexed.size(); }

    const QString m_a = QStringLiteral("/x/a.pdf");
    const QString m_b = QStringLiteral("/x/b.pdf");
};

TEST_F(LibraryViewModelImportTest, ImportsOneNewFileAtOnce)
{
    waitFor(vm().importURLs({m_a}, false));
    EXPECT_FALSE(vm().showImportPicker);
    finish();
    EXPECT_EQ(shown(), QStringList{u"id of " + m_a});
}

TEST_F(LibraryViewModelImportTest, LetsTwoNewFilesBeChosenAmong)
{
    waitFor(vm().importURLs({m_b, m_a}, false));
    EXPECT_TRUE(vm().showImportPicker);
    EXPECT_EQ(vm().discoveredPDFs.value(), (QStringList{m_a, m_b}));
    EXPECT_FALSE(vm().isImporting);
}

TEST_F(LibraryViewModelImportTest, LetsAFoldersOneNewFileBeChosen)
{
    const QString path = file(QStringLiteral("pdfs/sub/a.PDF"));
    file(QStringLiteral("pdfs/trap.pdf.txt"));
    waitFor(vm().importLocations({folder(QStringLiteral("pdfs"))}));
    EXPECT_TRUE(vm().showImportPicker);
    EXPECT_EQ(vm().discoveredPDFs.value(), QStringList{path});
}

TEST_F(LibraryViewModelImportTest, SortsWhatItFoundByFileNameWithCapitalsFirst)
{
    const QStringList candidates{QStringLiteral("/1/b.pdf"), QStringLiteral("/2/a.pdf"),
                                 QStringLiteral("/3/B.pdf"), QStringLiteral("/4/Ä.pdf")};
    waitFor(vm().importURLs(candidates, true));
    EXPECT_EQ(vm().discoveredPDFs.value(),
              (QStringList{candidates[2], candidates[1], candidates[0], candidates[3]}));
}

TEST_F(LibraryViewModelImportTest, LeavesOutWhatTheLibraryHas)
{
    import({m_a});
    waitFor(vm().importURLs({m_a, m_b}, false));
    finish();
    EXPECT_EQ(indexedCount(), 1) << "one new file is no choice to make";
    EXPECT_EQ(shown(), (QStringList{u"id of " + m_a, u"id of " + m_b}));
}

TEST_F(LibraryViewModelImportTest, SaysThatAllFilesOfAFolderAreThereAlready)
{
    const QStringList paths{file(QStringLiteral("pdfs/a.pdf")), file(QStringLiteral("pdfs/b.pdf")),
                            file(QStringLiteral("pdfs/c.pdf"))};
    import(paths);
    waitFor(vm().importLocations({folder(QStringLiteral("pdfs"))}));
    EXPECT_EQ(vm().errorMessage.value(),
              QStringLiteral("All selected files (3) are already in your library."));
    EXPECT_FALSE(vm().showImportPicker);
}

TEST_F(LibraryViewModelImportTest, TakesEveryFileForNewWhenTheStoredPathsCannotBeRead)
{
    library.run(QStringLiteral("DROP TABLE papers"));
    waitFor(vm().importURLs({m_a, m_b}, false));
    EXPECT_EQ(vm().discoveredPDFs.value(), (QStringList{m_a, m_b}));
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
}

TEST_F(LibraryViewModelImportTest, ImportsWhatThePanelAnswers)
{
    const QString path = file(QStringLiteral("a.pdf"));
    vm().chooseAndImport(); // without a panel nothing happens
    vm().setOpenPanel([&](const auto &chosen) { chosen({path}); });
    vm().chooseAndImport();
    waitUntil(vm().isImporting, true);
    finish();
    EXPECT_EQ(shown(), QStringList{u"id of " + path});
}

TEST_F(LibraryViewModelImportTest, ImportsOnlyWhatWasSelected)
{
    waitFor(vm().importURLs({m_a, m_b}, false));
    vm().showImportPicker = false;
    vm().importSelected({m_b});
    finish();
    EXPECT_EQ(shown(), QStringList{u"id of " + m_b});
}

TEST_F(LibraryViewModelImportTest, ResetsItsFieldsWhenABatchStarts)
{
    vm().errorMessage = QStringLiteral("old");
    std::latch mayIndex(1);
    indexFile = [&](const QString &path, auto) {
        mayIndex.wait();
        return storePaper(path);
    };
    vm().startImport(numberedPaths(2));
    EXPECT_TRUE(vm().isImporting);
    EXPECT_EQ(vm().importStatus.value(), u"Starting import...");
    EXPECT_EQ(vm().importingTotal.value(), 2);
    EXPECT_EQ(vm().importingCount.value(), 0);
    EXPECT_EQ(vm().importProgress.value(), 0);
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
    mayIndex.count_down();
    finish();
}

TEST_F(LibraryViewModelImportTest, TellsEachFileAndEstimatesFromTheThirdOn)
{
    QStringList estimates;
    QList<double> fractions;
    const auto observer = vm().importProgress.addNotifier([&] {
        fractions.append(vm().importProgress);
        estimates.append(vm().importTimeEstimate);
    });
    const auto statusObserver =
        vm().importStatus.addNotifier([&] { estimates.append(vm().importTimeEstimate); });
    import(numberedPaths(1));
    EXPECT_EQ(vm().importStatus.value(), u"Indexed: 0.pdf");
    EXPECT_EQ(fractions.last(), 1);
    import(numberedPaths(3).mid(1));
    EXPECT_EQ(vm().importingCount.value(), 2);
    EXPECT_EQ(estimates.count(QString()), estimates.size()) << "never with fewer than three done";
}

TEST_F(LibraryViewModelImportTest, ClearsTheEstimateAtTheEnd)
{
    QStringList estimates;
    const auto observer =
        vm().importTimeEstimate.addNotifier([&] { estimates.append(vm().importTimeEstimate); });
    import(numberedPaths(5));
    ASSERT_FALSE(estimates.isEmpty());
    EXPECT_TRUE(estimates.first().endsWith(u" remaining"));
    EXPECT_EQ(estimates.last(), QString());
}

TEST_F(LibraryViewModelImportTest, ReportsFailuresByPathAndGoesOn)
{
    const QStringList paths = numberedPaths(4);
    indexFile = [&](const QString &path, auto) -> Result<Paper> {
        if (path == paths[1])
            return Error{QStringLiteral("PDFIndexer"), 1, QStringLiteral("Failed to load PDF"), {}};
        return storePaper(path);
    };
    testing::internal::CaptureStdout();
    import(paths);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "❌ PDFIndexer ERROR: [/papers/1.pdf] Failed to load PDF\n");
    EXPECT_EQ(indexedCount(), 3);
    EXPECT_EQ(vm().lastImportResult.value()->errors.value(paths[1]), u"Failed to load PDF");
    EXPECT_EQ(vm().importingCount.value(), 4);
}

TEST_F(LibraryViewModelImportTest, ReloadsPapersAndTagsAfterABatch)
{
    indexFile = [&](const QString &path, auto) {
        const Result<Paper> paper = storePaper(path);
        EXPECT_TRUE(library.service.addTag(paper->id, QStringLiteral("Topology")).result());
        return paper;
    };
    import({m_a});
    waitUntil(vm().visibleTags, QStringList{QStringLiteral("Topology")});
    EXPECT_EQ(vm().papers.value().first().tags, QStringList{QStringLiteral("Topology")});
}

TEST_F(LibraryViewModelImportTest, MakesTheBatchTheRecentlyImportedOne)
{
    import({m_a});
    clock.advance(1h);
    import({m_b});
    EXPECT_EQ(preferences.text(QLatin1String(kLastImportDateKey)), QStringLiteral("2025-03-07T15:05:09Z"));
    vm().currentSidebarItem = SidebarItem{.kind = SidebarItem::Kind::RecentlyImported, .tag = {}};
    waitUntil(vm().isLoading, false);
    EXPECT_EQ(shown(), QStringList{u"id of " + m_b});
}

TEST_F(LibraryViewModelImportTest, CancelsWithWhatIsDoneAndWhatRunsKept)
{
    std::barrier sixInside(kImportJobs + 1);
    std::latch mayEnd(1);
    indexFile = [&](const QString &path, std::stop_token stop) {
        sixInside.arrive_and_wait();
        mayEnd.wait();
        EXPECT_FALSE(stop.stop_requested()) << "running files go on to their end";
        return storePaper(path);
    };
    vm().startImport(numberedPaths(20));
    sixInside.arrive_and_wait();
    vm().cancelImport();
    EXPECT_TRUE(vm().isCancellingImport);
    EXPECT_TRUE(vm().isImporting);
    mayEnd.count_down();
    finish();
    EXPECT_FALSE(vm().isCancellingImport);
    EXPECT_EQ(indexedCount(), kImportJobs);
    EXPECT_TRUE(vm().lastImportResult.value()->errors.isEmpty());
    EXPECT_EQ(vm().importingCount.value(), kImportJobs) << "files not begun are no progress";
    EXPECT_EQ(shown().size(), kImportJobs);
}

TEST_F(LibraryViewModelImportTest, CanImportAgainAfterACancel)
{
    std::latch mayIndex(1);
    indexFile = [&](const QString &path, auto) {
        mayIndex.wait();
        return storePaper(path);
    };
    vm().startImport(numberedPaths(1));
    vm().cancelImport();
    mayIndex.count_down();
    finish();
    import({m_a});
    EXPECT_EQ(indexedCount(), 1);
    EXPECT_EQ(vm().lastImportResult.value()->indexed, QStringList{u"id of " + m_a});
}

TEST_F(LibraryViewModelImportTest, HasNothingToCancelWhileNoneRuns)
{
    vm().cancelImport();
    EXPECT_FALSE(vm().isCancellingImport);
}

TEST_F(LibraryViewModelImportTest, TakesNoMoreFilesWhileOneRuns)
{
    std::latch mayIndex(1);
    indexFile = [&](const QString &path, auto) {
        mayIndex.wait();
        return storePaper(path);
    };
    vm().startImport({m_a});
    vm().startImport(numberedPaths(3));
    waitFor(vm().importURLs({m_b}, false));
    EXPECT_EQ(vm().errorMessage.value(),
              QStringLiteral("An import is running. Add more files when it has ended."));
    mayIndex.count_down();
    finish();
    EXPECT_EQ(shown(), QStringList{u"id of " + m_a});
}

TEST_F(LibraryViewModelImportTest, AddsWhatCouldNotBeLookedAtToTheBatchThatFollows)
{
    testing::internal::CaptureStdout();
    const QString path = file(QStringLiteral("a.pdf"));
    waitFor(vm().importLocations({path, folder(QStringLiteral("gone.pdf"))}));
    finish();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(indexedCount(), 1);
    EXPECT_EQ(vm().lastImportResult.value()->errors.keys(), QStringList{folder(QStringLiteral("gone.pdf"))});
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt);
    import({m_a});
    EXPECT_TRUE(vm().lastImportResult.value()->errors.isEmpty()) << "told once";
}

TEST_F(LibraryViewModelImportTest, SaysWhatCouldNotBeLookedAtWhenNothingWasFound)
{
    testing::internal::CaptureStdout();
    waitFor(vm().importLocations({folder(QStringLiteral("gone.pdf"))}));
    EXPECT_NE(testing::internal::GetCapturedStdout().find("gone.pdf: No such file or directory"),
              std::string::npos);
    ASSERT_TRUE(vm().errorMessage.value());
    EXPECT_TRUE(vm().errorMessage.value()->endsWith(u"gone.pdf: No such file or directory"));
    EXPECT_FALSE(vm().isImporting);
}

TEST_F(LibraryViewModelImportTest, SaysBothThatFilesAreThereAndWhatCouldNotBeLookedAt)
{
    testing::internal::CaptureStdout();
    const QString path = file(QStringLiteral("a.pdf"));
    import({path});
    waitFor(vm().importLocations({path, folder(QStringLiteral("gone.pdf"))}));
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(
        vm().errorMessage.value()->startsWith(u"All selected files (1) are already in your library."));
    EXPECT_TRUE(vm().errorMessage.value()->contains(u"gone.pdf"));
}

TEST_F(LibraryViewModelImportTest, SaysWhatCouldNotBeLookedAtWhenThePickerIsDismissed)
{
    testing::internal::CaptureStdout();
    file(QStringLiteral("pdfs/a.pdf"));
    waitFor(vm().importLocations({folder(QStringLiteral("pdfs")), folder(QStringLiteral("gone.pdf"))}));
    EXPECT_EQ(vm().errorMessage.value(), std::nullopt) << "an import may follow yet";
    vm().showImportPicker = false;
    waitUntil(vm().errorMessage, [](const auto &message) { return message.has_value(); });
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(vm().errorMessage.value()->contains(u"gone.pdf"));
}

TEST_F(LibraryViewModelImportTest, AbandonsRunningFilesWhenItDies)
{
    std::latch isInside(1);
    indexFile = [&](const QString &, std::stop_token stop) -> Result<Paper> {
        std::latch wasStopped(1);
        const std::stop_callback onStop(stop, [&] { wasStopped.count_down(); });
        isInside.count_down();
        wasStopped.wait();
        return cancelledError();
    };
    vm().startImport({m_a});
    isInside.wait();
    model.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(library.count(QStringLiteral("papers")), 0);
}

TEST_F(LibraryViewModelImportTest, MayDieWhileItLooksForFiles)
{
    vm().importLocations({file(QStringLiteral("a.pdf")), file(QStringLiteral("b.pdf"))});
    model.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(library.count(QStringLiteral("papers")), 0);
}
