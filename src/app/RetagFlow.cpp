#include "app/RetagFlow.h"

#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/SystemSearchPublisher.h"

#include <QSet>

namespace
{

bool sameSet(const QStringList &left, const QStringList &right)
{
    return QSet<QString>(left.begin(), left.end()) == QSet<QString>(right.begin(), right.end());
}

} // namespace

QString RetagCount::summary() const
{
    return QStringLiteral("Retagged %1 of %2 papers.").arg(changed).arg(total);
}

RetagFlow::RetagFlow(Collaborators collaborators)
    : m_with(std::move(collaborators))
{
}

Result<RetagCount> RetagFlow::run(std::stop_token stop,
                                  const std::function<void(const RetagCount &)> &onProgress)
{
    const Result<QList<Paper>> papers = m_with.library.allPapers().result();
    if (!papers)
        return papers.error();

    RetagCount count{.changed = 0, .done = 0, .total = static_cast<int>(papers->size())};
    for (const Paper &paper : *papers) {
        if (stop.stop_requested())
            return cancelledError();
        const Result<bool> changed = retagOne(paper, stop);
        if (!changed)
            return changed.error();
        count.changed += *changed ? 1 : 0;
        ++count.done;
        onProgress(count);
    }
    const auto pruned = m_with.db
                            .execute(QStringLiteral("DELETE FROM tag_definitions WHERE name NOT IN "
                                                    "(SELECT DISTINCT tag FROM tags)"))
                            .result();
    if (!pruned)
        return pruned.error();
    return count;
}

/// Answers whether the paper's tags changed.
Result<bool> RetagFlow::retagOne(Paper paper, const std::stop_token &stop)
{
    const QStringList tags = m_with.retagPaper(paper, stop);
    if (stop.stop_requested())
        return cancelledError();
    if (sameSet(tags, paper.tags))
        return false;
    const auto replaced =
        m_with.db
            .perform(Urgency::Background,
                     [&](Database &database) {
                         return inTransaction(database, [&] { return database.replaceTags(paper.id, tags); });
                     })
            .result();
    if (!replaced)
        return replaced.error();
    paper.tags = tags;
    m_with.publisher.publish(paper);
    return true;
}
