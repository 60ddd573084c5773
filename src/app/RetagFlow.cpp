#include "app/RetagFlow.h"

#include "app/TagMerge.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/PaperQueries.h"
#include "store/SystemSearchPublisher.h"

#include <QSet>

namespace
{

bool sameSet(const QStringList &left, const QStringList &right)
{
    return QSet<QString>(left.begin(), left.end()) == QSet<QString>(right.begin(), right.end());
}

/// Gives the paper the tags that were computed from `base`, together with what others did to them meanwhile.
/// Answers the paper as it is then; nothing when it is gone or has these tags already.
Result<std::optional<Paper>> replaceTagsOf(Database &database, const Paper &base, const QStringList &computed)
{
    std::optional<Paper> changed;
    const Result<void> done = inTransaction(database, [&]() -> Result<void> {
        if (auto locked = lockForPaper(database, base.id); !locked)
            return locked;
        Result<std::optional<Paper>> current = selectPaperById(database, base.id);
        if (!current)
            return current.error();
        if (!*current)
            return {};
        const QStringList tags = mergedTags(base.tags, computed, (*current)->tags);
        if (sameSet(tags, (*current)->tags))
            return {};
        changed = **current;
        changed->tags = tags;
        return database.replaceTags(base.id, tags);
    });
    if (!done)
        return done.error();
    return changed;
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
    onProgress(count);
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
Result<bool> RetagFlow::retagOne(const Paper &listed, const std::stop_token &stop)
{
    // The list may be hours old: what the tags are now decides what stays.
    const Result<std::optional<Paper>> paper = m_with.library.paperById(listed.id).result();
    if (!paper)
        return paper.error();
    if (!*paper)
        return false; // removed meanwhile
    const QStringList tags = m_with.retagPaper(**paper, stop);
    if (stop.stop_requested())
        return cancelledError();
    if (sameSet(tags, (*paper)->tags))
        return false;
    const Result<std::optional<Paper>> retagged =
        m_with.db
            .perform(Urgency::Background,
                     [&](Database &database) { return replaceTagsOf(database, **paper, tags); })
            .result();
    if (!retagged)
        return retagged.error();
    if (!*retagged)
        return false;
    m_with.publisher.publish(**retagged);
    return true;
}
