#include "reader/PageScheduler.h"

#include "reader/ReaderDocument.h"

#include <algorithm>

PageScheduler::PageScheduler(PageSource &source, Arrived arrived, std::function<void(const PageJob &)> failed)
    : m_source(source)
    , m_arrived(std::move(arrived))
    , m_failed(std::move(failed))
{
}

PageScheduler::~PageScheduler()
{
    for (auto &[id, running] : m_running)
        running.stop.request_stop();
}

void PageScheduler::setPlan(std::vector<PlannedJob> plan)
{
    m_plan = std::move(plan);
    std::erase_if(m_plan, [this](const PlannedJob &planned) { return hasFailed(planned.job); });
    stopUnneeded();
    std::erase_if(m_plan, [this](const PlannedJob &planned) { return isRunning(planned.job); });
    fill();
}

bool PageScheduler::hasFailed(const PageJob &job) const
{
    return m_failures.contains(failureOf(job));
}

PageScheduler::Failure PageScheduler::failureOf(const PageJob &job)
{
    return {job.kind, job.page, job.kind == PageJob::Kind::Picture ? job.tile.style.scale : 0};
}

bool PageScheduler::isRunning(const PageJob &job) const
{
    return std::any_of(m_running.begin(), m_running.end(),
                       [&](const auto &running) { return running.second.planned.job == job; });
}

void PageScheduler::stopUnneeded()
{
    const bool visibleWaits = std::any_of(m_plan.begin(), m_plan.end(), [this](const PlannedJob &planned) {
        return planned.isVisible && !isRunning(planned.job);
    });
    for (auto running = m_running.begin(); running != m_running.end();) {
        const PlannedJob &planned = running->second.planned;
        const auto wanted = std::find_if(m_plan.begin(), m_plan.end(),
                                         [&](const PlannedJob &other) { return other.job == planned.job; });
        if (wanted == m_plan.end() || (visibleWaits && !wanted->isVisible)) {
            running->second.stop.request_stop();
            running = m_running.erase(running);
        } else {
            ++running;
        }
    }
}

void PageScheduler::fill()
{
    while (!m_isLost && m_source.isOpen() && m_running.size() < kJobsAtOnce && !m_plan.empty()) {
        const PlannedJob next = m_plan.front();
        m_plan.erase(m_plan.begin());
        start(next);
    }
}

void PageScheduler::start(const PlannedJob &planned)
{
    const int id = m_nextId++;
    const Running &running = m_running.emplace(id, Running{planned, {}}).first->second;
    m_source.ask(
        planned, running.stop.get_token(),
        [this, id, job = planned.job, alive = std::weak_ptr<const bool>(m_alive)](Result<PageAnswer> answer) {
            if (!alive.expired())
                finish(id, job, std::move(answer));
        });
}

// A job that was stopped too late has an answer all the same.
void PageScheduler::finish(int id, const PageJob &job, Result<PageAnswer> answer)
{
    const std::weak_ptr<const bool> alive = m_alive; // whoever hears of it may show another document
    m_running.erase(id);
    if (answer)
        m_arrived(job, *std::move(answer));
    else if (!isCancelled(answer.error()))
        fail(job, answer.error());
    if (!alive.expired())
        fill();
}

// The first to hear that the engine is lost was in it; what waited behind is innocent.
void PageScheduler::fail(const PageJob &job, const Error &error)
{
    const Failure failure = failureOf(job);
    const bool wasLost = m_isLost;
    m_isLost = m_isLost || isEngineLoss(error);
    if (isEngineLoss(error) && (wasLost || ++m_lossesAt[failure] < kTriesOfFatalPage))
        return;
    m_failures.insert(failure);
    m_failed(job);
}
