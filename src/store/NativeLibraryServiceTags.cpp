// The tags of `NativeLibraryService`.
#include "store/NativeLibraryService.h"

#include "base/TextClasses.h"
#include "store/DatabaseManager.h"
#include "store/PaperQueries.h"
#include "store/SystemSearchPublisher.h"
#include "store/TagQueries.h"

QFuture<Result<void>> NativeLibraryService::tagPaper(const QString &paperId, const QString &tag)
{
    return changeTags(paperId, [paperId, tag](Database &database) {
        return inTransaction(database, [&] { return giveTag(database, paperId, tag); });
    });
}

QFuture<Result<void>> NativeLibraryService::addTag(const QString &paperId, const QString &tag)
{
    return changeTags(paperId,
                      [paperId, tag](Database &database) { return insertTag(database, paperId, tag); });
}

QFuture<Result<void>> NativeLibraryService::removeTag(const QString &paperId, const QString &tag)
{
    return changeTags(paperId,
                      [paperId, tag](Database &database) { return ::removeTag(database, paperId, tag); });
}

/// Publishes the paper again after the change, so that the desktop's search knows its tags.
QFuture<Result<void>> NativeLibraryService::changeTags(const QString &paperId,
                                                       std::function<Result<void>(Database &)> change)
{
    SystemSearchPublisher &publisher = m_publisher;
    return m_db.perform(m_urgency,
                        [=, change = std::move(change), &publisher](Database &database) -> Result<void> {
                            if (Result<void> changed = change(database); !changed)
                                return changed;
                            const Result<std::optional<Paper>> paper = selectPaperById(database, paperId);
                            if (!paper)
                                return paper.error();
                            if (*paper)
                                publisher.publish(**paper);
                            return {};
                        });
}

QFuture<Result<QStringList>> NativeLibraryService::allTagNames()
{
    return m_db.perform(m_urgency, [](Database &database) {
        return selectTexts(database,
                           QStringLiteral("SELECT DISTINCT tag AS tag FROM tags UNION SELECT "
                                          "name AS tag FROM tag_definitions ORDER BY tag ASC"),
                           QLatin1String("tag"));
    });
}

QFuture<Result<void>> NativeLibraryService::createTag(const QString &name)
{
    return m_db.perform(m_urgency, [trimmed = trimmedHorizontally(name)](Database &database) {
        return database.execute(QStringLiteral("INSERT OR IGNORE INTO tag_definitions (name) VALUES (?)"),
                                {trimmed});
    });
}
