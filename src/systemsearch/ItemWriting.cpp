#include "systemsearch/ItemWriting.h"

#include "store/ReservedTags.h"
#include "store/SideDatabase.h"

#include <QHash>
#include <bit>
#include <limits>

namespace
{

struct StoredItem {
    qint64 digest = 0;
    bool isPublishedAgain = false;
};
/// What is stored, by identifier.
using StoredItems = QHash<QString, StoredItem>;

/// So few are looked up one by one; of more the whole table is read, a row of which costs less than a
/// look-up. Chosen: between a page of a list and a library.
constexpr qsizetype kFew = 5000;

/// Without a seed for Qt, which stirs another one into it that every process draws anew.
size_t mixed(size_t digest, const void *bytes, size_t size)
{
    constexpr size_t kOdd = 0x9e3779b97f4a7c15; // the golden ratio's bits; spreads those of the hash
    return (std::rotl(digest, 23) ^ qHashBits(bytes, size, 0)) * kOdd;
}

size_t mixed(size_t digest, QStringView text)
{
    return mixed(digest, text.data(), static_cast<size_t>(text.size()) * sizeof(QChar));
}

size_t mixed(size_t digest, const QStringList &texts)
{
    for (const QString &text : texts)
        digest = mixed(digest, text);
    return digest + static_cast<size_t>(texts.size());
}

/// Of every field. Another version of Qt may compute another one, which costs one writing of everything.
qint64 digestOf(const SearchableItem &item)
{
    size_t digest = mixed(1, item.domainIdentifier);
    for (const QString *text : {&item.contentType, &item.title, &item.contentDescription})
        digest = mixed(digest, *text);
    for (const QStringList *texts : {&item.authorNames, &item.keywords})
        digest = mixed(digest, *texts);
    const qint64 date = item.contentCreationDate ? item.contentCreationDate->date().toJulianDay()
                                                 : std::numeric_limits<qint64>::max();
    return static_cast<qint64>(mixed(digest, &date, sizeof date));
}

/// There will be about `expected`.
Result<StoredItems> allStoredItems(SideDatabase &database, qsizetype expected)
{
    Result<Statement> select = database.prepare(QStringLiteral("SELECT id, digest FROM items"));
    if (!select)
        return select.error();
    StoredItems stored;
    stored.reserve(expected);
    Statement::Step step = select->step();
    for (; step == Statement::Step::Row; step = select->step())
        stored.insert(select->text(0).value_or(QString()), {.digest = select->integer(1).value_or(0)});
    if (step == Statement::Step::Failed)
        return database.explained(select->error());
    return stored;
}

Result<StoredItems> storedItems(SideDatabase &database, const QList<SearchableItem> &items)
{
    if (items.size() > kFew)
        return allStoredItems(database, items.size());
    Result<Statement> select = database.prepare(QStringLiteral("SELECT digest FROM items WHERE id = ?"));
    if (!select)
        return select.error();
    StoredItems stored;
    for (const SearchableItem &item : items) {
        select->reset();
        if (!select->bindText(1, item.uniqueIdentifier.toUtf8()))
            return database.explained(select->error());
        const Statement::Step step = select->step();
        if (step == Statement::Step::Failed)
            return database.explained(select->error());
        if (step == Statement::Step::Row)
            stored.insert(item.uniqueIdentifier, {.digest = select->integer(0).value_or(0)});
    }
    return stored;
}

QString visibleTags(const QStringList &keywords)
{
    QStringList visible = keywords;
    visible.removeIf([](const QString &keyword) { return isReservedTag(keyword); });
    return visible.join(u'\n');
}

SqlValues valuesOf(const SearchableItem &item, qint64 digest)
{
    const std::optional<QDateTime> &created = item.contentCreationDate;
    return {item.uniqueIdentifier,
            digest,
            item.domainIdentifier,
            item.contentType,
            item.title,
            item.authorNames.join(u'\n'),
            item.keywords.join(u'\n'),
            visibleTags(item.keywords),
            item.contentDescription,
            created ? SqlValue(created->toString(Qt::ISODate)) : SqlValue(),
            created ? QString::number(created->date().year()) : QString()};
}

/// What has to be done to the file.
struct Changes {
    QList<const SearchableItem *> written;
    QStringList removed;
};

/// Those that are not stored as they are, in their order: of several of one identifier the last one counts.
/// Marks the stored ones that are published again.
QList<const SearchableItem *> changedItems(const QList<SearchableItem> &items, StoredItems &stored)
{
    QList<const SearchableItem *> changed;
    for (const SearchableItem &item : items) {
        const auto known = stored.find(item.uniqueIdentifier);
        const bool isKnown = known != stored.end();
        if (!isKnown || known->isPublishedAgain || known->digest != digestOf(item))
            changed.append(&item);
        if (isKnown)
            known->isPublishedAgain = true;
    }
    return changed;
}

QStringList unmarkedItems(const StoredItems &stored)
{
    QStringList unmarked;
    for (auto item = stored.cbegin(); item != stored.cend(); ++item) {
        if (!item->isPublishedAgain)
            unmarked.append(item.key());
    }
    return unmarked;
}

Result<void> write(SideDatabase &database, const QList<const SearchableItem *> &items, std::stop_token stop)
{
    Result<Statement> upsert = database.prepare(QStringLiteral(
        "INSERT INTO items (id, digest, domain, content_type, title, names, keywords, tags, description, "
        "created, year) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT (id) DO UPDATE SET "
        "digest = excluded.digest, domain = excluded.domain, content_type = excluded.content_type, "
        "title = excluded.title, names = excluded.names, keywords = excluded.keywords, tags = excluded.tags, "
        "description = excluded.description, created = excluded.created, year = excluded.year"));
    if (!upsert)
        return upsert.error();
    for (const SearchableItem *item : items) {
        if (stop.stop_requested())
            return cancelledError();
        upsert->reset();
        if (!upsert->bindAll(valuesOf(*item, digestOf(*item))) || upsert->step() != Statement::Step::Done)
            return database.explained(upsert->error());
    }
    return {};
}

Result<void> remove(SideDatabase &database, const QStringList &identifiers)
{
    Result<Statement> erase = database.prepare(QStringLiteral("DELETE FROM items WHERE id = ?"));
    if (!erase)
        return erase.error();
    for (const QString &identifier : identifiers) {
        erase->reset();
        if (!erase->bindText(1, identifier.toUtf8()) || erase->step() != Statement::Step::Done)
            return database.explained(erase->error());
    }
    return {};
}

/// Makes the changes in one transaction, which takes its lock at once: waiting for another writer after
/// having read would fail.
Result<void> apply(SideDatabase &database, const Changes &changes, std::stop_token stop = {})
{
    if (changes.written.isEmpty() && changes.removed.isEmpty())
        return {};
    if (auto begun = database.execute(QStringLiteral("BEGIN IMMEDIATE")); !begun)
        return begun;
    Result<void> done = remove(database, changes.removed);
    if (done)
        done = write(database, changes.written, stop);
    if (done)
        done = database.execute(QStringLiteral("COMMIT"));
    if (!done)
        static_cast<void>(database.execute(QStringLiteral("ROLLBACK")).has_value());
    return done;
}

} // namespace

Result<void> putItems(SideDatabase &database, const QList<SearchableItem> &items, std::stop_token stop)
{
    Result<StoredItems> stored = storedItems(database, items);
    if (!stored)
        return stored.error();
    return apply(database, {.written = changedItems(items, *stored), .removed = {}}, stop);
}

Result<void> replaceAllItems(SideDatabase &database, const QList<SearchableItem> &items, std::stop_token stop)
{
    Result<StoredItems> stored = allStoredItems(database, items.size());
    if (!stored)
        return stored.error();
    const QList<const SearchableItem *> changed = changedItems(items, *stored);
    return apply(database, {.written = changed, .removed = unmarkedItems(*stored)}, stop);
}

Result<void> removeItems(SideDatabase &database, const QStringList &identifiers)
{
    return apply(database, {.written = {}, .removed = identifiers});
}
