// Tags of many papers.
#include "app/LibraryViewModelWork.h"
#include "app/RetagFlow.h"
#include "base/Log.h"
#include "base/TextClasses.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/ReservedTags.h"
#include "store/TagQueries.h"

#include <QPointer>
#include <qcorofuture.h>

namespace
{

/// Papers that are tagged in one go. Chosen: a transaction a paper takes many times as long, and other
/// operations wait for one of these a few milliseconds.
constexpr qsizetype kPapersPerTransaction = 100;

/// Tags the papers in their order; one that fails does not keep the others from it.
Result<void> tagEach(Database &database, const QList<Paper> &papers, const QString &tag)
{
    return inTransaction(database, [&]() -> Result<void> {
        for (const Paper &paper : papers) {
            if (const Result<void> tagged = giveTag(database, paper.id, tag); !tagged)
                logLine(u"Failed to tag " + paper.id + u": " + tagged.error().message());
        }
        return {};
    });
}

void tagTogether(DatabaseManager &db, const QList<Paper> &papers, const QString &tag)
{
    const auto tagAll = [papers, tag](Database &database) {
        return tagEach(database, papers, tag);
    };
    const Result<void> done = db.perform(Urgency::PersonWaits, tagAll).result();
    if (done)
        return;
    for (const Paper &paper : papers) // none of them was written
        logLine(u"Failed to tag " + paper.id + u": " + done.error().message());
}

void untag(NativeLibraryService &library, const QString &paperId, const QString &tag)
{
    if (const Result<void> removed = library.removeTag(paperId, tag).result(); !removed)
        logLine(u"Failed to remove tag from " + paperId + u": " + removed.error().message());
}

} // namespace

QString tagNameProblem(const QString &name)
{
    const QString trimmed = trimmedHorizontally(name);
    if (trimmed.isEmpty())
        return QStringLiteral("A tag needs a name.");
    if (isReservedTag(trimmed))
        return QStringLiteral("Names beginning with \"_\" are reserved for Quirevault.");
    return {};
}

/// Whether the name, trimmed, cannot be used; says why, unless it is blank, which does nothing.
bool LibraryViewModel::refuseTag(const QString &name)
{
    requireMainThread();
    const QString problem = tagNameProblem(name);
    if (!name.isEmpty() && !problem.isEmpty())
        errorMessage = problem;
    return !problem.isEmpty();
}

QCoro::Task<> LibraryViewModel::reload()
{
    QCoro::Task<> papersLoading = loadPapers();
    QCoro::Task<> tagsLoading = loadTags();
    const QPointer self(this);
    co_await papersLoading;
    co_await tagsLoading;
    if (self)
        leaveVanishedTag();
}

/// A tag that went with its last paper cannot stay selected.
void LibraryViewModel::leaveVanishedTag()
{
    const SidebarItem shown = currentSidebarItem;
    if (shown.isTag() && !allTags.value().contains(shown.tag))
        currentSidebarItem = SidebarItem();
}

/// Waits for a change of the tag `changed`; a selection of that tag moves on to `successor`.
QCoro::Task<> LibraryViewModel::afterTagChange(QFuture<Result<void>> changing, QString changed,
                                               SidebarItem successor)
{
    const QPointer self(this);
    const Result<void> done = co_await changing;
    if (!self)
        co_return;
    if (!done) {
        errorMessage = done.error().message();
        co_return;
    }
    // The names first, so that the sidebar has a row for the tag that will be selected.
    QCoro::Task<> tagsLoading = loadTags();
    co_await tagsLoading;
    if (!self)
        co_return;
    if (currentSidebarItem.value() == SidebarItem::ofTag(changed))
        currentSidebarItem = successor;
    QCoro::Task<> papersLoading = loadPapers();
    co_await papersLoading;
}

QCoro::Task<> LibraryViewModel::createTag(QString name)
{
    name = trimmedHorizontally(name);
    if (refuseTag(name))
        co_return;
    const QFuture<Result<void>> creating = m_with.library.createTag(name);
    QCoro::Task<> following = afterTagChange(creating, name, SidebarItem::ofTag(name));
    co_await following;
}

QCoro::Task<> LibraryViewModel::renameTag(QString oldName, QString newName)
{
    newName = trimmedHorizontally(newName);
    if (newName == oldName || refuseTag(oldName) || refuseTag(newName))
        co_return;
    const QFuture<Result<void>> renaming = m_with.db.renameTag(oldName, newName);
    QCoro::Task<> following = afterTagChange(renaming, oldName, SidebarItem::ofTag(newName));
    co_await following;
}

QCoro::Task<> LibraryViewModel::deleteTag(QString name)
{
    if (refuseTag(name))
        co_return;
    const QFuture<Result<void>> deleting = m_with.db.deleteTag(name);
    QCoro::Task<> following = afterTagChange(deleting, name, SidebarItem());
    co_await following;
}

QCoro::Task<> LibraryViewModel::tagVisiblePapers(QString name)
{
    name = trimmedHorizontally(name);
    if (refuseTag(name))
        co_return;
    const auto tagAll = [this, name, visible = filteredPapers.value()](const std::stop_token &stop) {
        for (qsizetype at = 0; at < visible.size() && !stop.stop_requested(); at += kPapersPerTransaction)
            tagTogether(m_with.db, visible.mid(at, kPapersPerTransaction), name);
    };
    QCoro::Task<> changing = changeOnWorker(tagAll);
    co_await changing;
}

QCoro::Task<> LibraryViewModel::removeTagFromVisiblePapers(QString name)
{
    requireMainThread();
    const auto untagAll = [this, name, visible = filteredPapers.value()](const std::stop_token &stop) {
        for (const Paper &paper : visible) {
            if (stop.stop_requested())
                return;
            if (paper.tags.contains(name))
                untag(m_with.library, paper.id, name);
        }
    };
    QCoro::Task<> changing = changeOnWorker(untagAll);
    co_await changing;
}

/// Changes many papers, then reloads.
QCoro::Task<> LibraryViewModel::changeOnWorker(std::function<void(std::stop_token stop)> change)
{
    const QPointer self(this);
    QFuture<void> changing = QtConcurrent::run(&m_workers, change, m_end.get_token());
    co_await changing;
    if (!self)
        co_return;
    destroyElsewhere(std::move(change), std::move(changing));
    QCoro::Task<> reloading = reload();
    co_await reloading;
}

QStringList LibraryViewModel::tagsOnVisiblePapers() const
{
    QSet<QString> tags;
    QSet<const QChar *> known; // equal names mostly share their text, whose address is looked up sooner
    for (const Paper &paper : filteredPapers.value()) {
        for (const QString &tag : paper.tags) {
            const qsizetype before = known.size();
            if (known.insert(tag.constData()); known.size() > before)
                tags.insert(tag);
        }
    }
    QStringList visible = tags.values();
    visible.removeIf(isReservedTag);
    visible.sort();
    return visible;
}

QCoro::Task<> LibraryViewModel::retagLibrary()
{
    requireMainThread();
    if (isRetagging)
        co_return;
    const QPointer self(this);
    isRetagging = true;
    retagCount = 0;
    retagTotal = 0;
    retagProgress = 0;
    retagResult = std::nullopt;
    const QFuture<Result<RetagCount>> running =
        QtConcurrent::run(&m_workers, [this, stop = m_end.get_token()] {
            return m_with.retagFlow.run(stop, [this](const RetagCount &count) {
                QMetaObject::invokeMethod(
                    this, [this, count] { foldIn(count); }, Qt::QueuedConnection);
            });
        });
    const Result<RetagCount> retagged = co_await afterReportsOf(running);
    if (!self)
        co_return;
    retagResult = retagged ? retagged->summary() : QString(u"Retag failed: " + retagged.error().message());
    isRetagging = false;
    QCoro::Task<> reloading = reload();
    co_await reloading;
}

void LibraryViewModel::foldIn(const RetagCount &count)
{
    retagTotal = count.total;
    retagCount = count.done;
    retagProgress = count.total == 0 ? 0 : static_cast<double>(count.done) / count.total;
}
