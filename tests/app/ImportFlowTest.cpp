#include "app/ImportFlow.h"

#include "platform/Preferences.h"
#include "support/FakeClock.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <atomic>
#include <barrier>
#include <gtest/gtest.h>

namespace
{

QStringList numberedPaths(int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths.append(QStringLiteral("/papers/%1.pdf").arg(i));
    return paths;
}

Paper paperFor(const QString &path)
{
    Paper paper;
    paper.id = u"id of " + path;
    return paper;
}

Error failure()
{
    return {QStringLiteral("PDFIndexer"), 1, QStringLiteral("Failed to load PDF"),
            QStringLiteral("the file is damaged")};
}

} // namespace

class ImportFlowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit());
        testing::internal::CaptureStdout();
    }
    void TearDown() override { m_log = testing::internal::GetCapturedStdout(); }

    ImportOutcome run(const QStringList &paths, const ImportFlow::IndexFile &indexFile,
                      ImportStops stops = {})
    {
        ImportFlow flow(indexFile, m_preferences, m_clock);
        return flow.run(paths, stops, [this](const ImportProgress &progress) {
            m_clock.advance(std::chrono::seconds(2));
            m_progress.append(progress);
        });
    }

    TemporaryFolder m_folder;
    FakeClock m_clock;
    Preferences m_preferences;
    QList<ImportProgress> m_progress;
    std::string m_log;
};

TEST_F(ImportFlowTest, AnswersTheIdOfEveryFile)
{
    const ImportOutcome outcome =
        run(numberedPaths(20), [](const QString &path, auto) { return paperFor(path); });
    QStringList ids = outcome.response.indexed;
    ids.sort();
    QStringList expected;
    for (const QString &path : numberedPaths(20))
        expected.append(paperFor(path).id);
    expected.sort();
    EXPECT_EQ(ids, expected);
    EXPECT_TRUE(outcome.response.errors.isEmpty());
    EXPECT_TRUE(outcome.notDone.isEmpty());
}

TEST_F(ImportFlowTest, GoesOnAfterAFailureAndKeepsItsTextByPath)
{
    const QStringList paths = numberedPaths(5);
    const ImportOutcome outcome = run(paths, [&](const QString &path, auto) -> Result<Paper> {
        return path == paths[2] ? Result<Paper>(failure()) : Result<Paper>(paperFor(path));
    });
    EXPECT_EQ(outcome.response.indexed.size(), 4);
    EXPECT_EQ(outcome.response.errors.keys(), QStringList{paths[2]});
    EXPECT_EQ(outcome.response.errors[paths[2]], u"Failed to load PDF: the file is damaged");
}

TEST_F(ImportFlowTest, LogsEachFailureOnOneLine)
{
    run({QStringLiteral("/a\nb.pdf")}, [](const QString &, auto) -> Result<Paper> { return failure(); });
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "❌ PDFIndexer ERROR: [/a b.pdf] Failed to load PDF: the file is damaged\n");
    testing::internal::CaptureStdout();
}

TEST_F(ImportFlowTest, RunsSixJobsAtOnceAndNeverMore)
{
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    // Each round opens only when six jobs are inside together.
    std::barrier sixInside(kImportJobs);
    run(numberedPaths(3 * kImportJobs), [&](const QString &path, auto) {
        const int now = ++running;
        for (int seen = most; seen < now && !most.compare_exchange_weak(seen, now);) {
        }
        sixInside.arrive_and_wait();
        --running;
        return paperFor(path);
    });
    EXPECT_EQ(most, kImportJobs);
}

TEST_F(ImportFlowTest, TellsProgressAfterEachFile)
{
    run(numberedPaths(4), [](const QString &path, auto) { return paperFor(path); });
    ASSERT_EQ(m_progress.size(), 4);
    EXPECT_EQ(m_progress[1].done, 2);
    EXPECT_EQ(m_progress[1].total, 4);
    EXPECT_DOUBLE_EQ(m_progress[1].fraction(), 0.5);
    EXPECT_TRUE(m_progress[1].status.startsWith(u"Indexed: "));
    EXPECT_FALSE(m_progress[1].status.contains(u'/'));
}

TEST_F(ImportFlowTest, EstimatesTheRemainingTimeOnlyFromThreeFilesOn)
{
    run(numberedPaths(5), [](const QString &path, auto) { return paperFor(path); });
    EXPECT_EQ(m_progress[0].timeEstimate, QString());
    EXPECT_EQ(m_progress[1].timeEstimate, QString());
    // Two seconds pass after each file: at the third, four have passed, and two files are left.
    EXPECT_EQ(m_progress[2].timeEstimate, u"~2s remaining");
}

TEST_F(ImportFlowTest, NotesWhenTheLastImportStarted)
{
    run(numberedPaths(1), [](const QString &path, auto) { return paperFor(path); });
    EXPECT_EQ(m_preferences.text(QLatin1String(kLastImportDateKey)), QStringLiteral("2025-03-07T14:05:09Z"));
}

TEST_F(ImportFlowTest, AbandoningLeavesOutWhatHasNotStartedAndWhatGivesUp)
{
    std::stop_source stop;
    std::atomic<int> started = 0;
    std::barrier sixInside(kImportJobs);
    const ImportOutcome outcome = run(numberedPaths(20),
                                      [&](const QString &path, std::stop_token token) -> Result<Paper> {
                                          ++started;
                                          sixInside.arrive_and_wait();
                                          stop.request_stop();
                                          // One job is abandoned whole; the others run to their end.
                                          if (path.endsWith(u"/3.pdf") && token.stop_requested())
                                              return cancelledError();
                                          return paperFor(path);
                                      },
                                      {.beginNoMore = {}, .abandon = stop.get_token()});
    EXPECT_EQ(started, kImportJobs);
    EXPECT_EQ(outcome.response.indexed.size(), kImportJobs - 1);
    EXPECT_EQ(outcome.notDone.size(), 20 - kImportJobs + 1);
    EXPECT_TRUE(outcome.response.errors.isEmpty());
    EXPECT_EQ(m_progress.size(), kImportJobs - 1) << "what was given up is not progress";
}

TEST_F(ImportFlowTest, BeginningNoMoreLetsRunningJobsEndAndCountsThem)
{
    std::stop_source stop;
    std::barrier sixInside(kImportJobs);
    const QStringList paths = numberedPaths(20);
    const ImportOutcome outcome = run(paths,
                                      [&](const QString &path, std::stop_token token) {
                                          sixInside.arrive_and_wait();
                                          stop.request_stop();
                                          EXPECT_FALSE(token.stop_requested());
                                          return paperFor(path);
                                      },
                                      {.beginNoMore = stop.get_token(), .abandon = {}});
    EXPECT_EQ(outcome.response.indexed.size(), kImportJobs);
    EXPECT_EQ(outcome.notDone, paths.mid(kImportJobs));
    ASSERT_EQ(m_progress.size(), kImportJobs);
    EXPECT_EQ(m_progress.last().done, kImportJobs);
    EXPECT_EQ(m_progress.last().total, 20);
}

TEST_F(ImportFlowTest, OfNothingEndsAtOnce)
{
    const ImportOutcome outcome = run({}, [](const QString &path, auto) { return paperFor(path); });
    EXPECT_TRUE(outcome.response.indexed.isEmpty());
    EXPECT_TRUE(m_progress.isEmpty());
    EXPECT_EQ(m_preferences.text(QLatin1String(kLastImportDateKey)), std::nullopt) << "the last import stays";
}

TEST(NewPaths, LeavesOutWhatTheLibraryHasAndWhatWasNamedTwice)
{
    const QStringList candidates{QStringLiteral("/b"), QStringLiteral("/a"), QStringLiteral("/b"),
                                 QStringLiteral("/c")};
    EXPECT_EQ(newPaths(candidates, {QStringLiteral("/a")}),
              (QStringList{QStringLiteral("/b"), QStringLiteral("/c")}));
}
