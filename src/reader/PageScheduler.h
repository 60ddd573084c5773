#pragma once

#include "reader/PageSource.h"

#include <map>
#include <set>
#include <tuple>
#include <vector>

/// Asks a document for what the view needs, in the view's order, a few jobs at a time so that the order can
/// still change. Stops what is no longer needed, and what merely looks ahead when something visible waits.
class PageScheduler
{
public:
    /// In the engine, and next to it so that it never idles.
    static constexpr size_t kJobsAtOnce = 2;
    /// A page that was asked for when the engine was lost is tried again so often, then given up: otherwise
    /// one page could end every new engine.
    static constexpr int kTriesOfFatalPage = 2;

    using Arrived = std::function<void(const PageJob &job, PageAnswer answer)>;
    /// `arrived` hears of every answer, `failed` of every job that cannot be done and is not asked again.
    PageScheduler(PageSource &source, Arrived arrived, std::function<void(const PageJob &job)> failed);
    /// Stops what is under way; nobody hears of it.
    ~PageScheduler();
    PageScheduler(const PageScheduler &) = delete;
    PageScheduler &operator=(const PageScheduler &) = delete;

    /// What is needed now, the most urgent first. Asks nothing while the document is not open, and nothing
    /// after its engine was lost.
    void setPlan(std::vector<PlannedJob> plan);
    /// The document was opened again.
    void resume() { m_isLost = false; }
    bool hasFailed(const PageJob &job) const;
    /// Whether nothing of the plan is left.
    bool isIdle() const { return m_running.empty() && m_plan.empty(); }

private:
    struct Running {
        PlannedJob planned;
        std::stop_source stop;
    };
    using Failure = std::tuple<PageJob::Kind, qint64, double>;

    static Failure failureOf(const PageJob &job);
    bool isRunning(const PageJob &job) const;
    void stopUnneeded();
    void fill();
    void start(const PlannedJob &planned);
    void finish(int id, const PageJob &job, Result<PageAnswer> answer);
    void fail(const PageJob &job, const Error &error);

    PageSource &m_source;
    Arrived m_arrived;
    std::function<void(const PageJob &)> m_failed;
    std::vector<PlannedJob> m_plan; ///< what has not been asked yet
    std::map<int, Running> m_running;
    int m_nextId = 0;
    std::set<Failure> m_failures;
    std::map<Failure, int> m_lossesAt;
    bool m_isLost = false;
    std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};
