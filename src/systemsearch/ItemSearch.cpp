#include "systemsearch/ItemSearch.h"

#include "base/Log.h"
#include "platform/SystemSearchIndex.h"
#include "systemsearch/SearchWords.h"

#include <algorithm>

namespace
{

/// Words in the query language of the full-text index. They hold nothing but letters, digits and marks, so
/// nothing in them has to be escaped.
QStringList quoted(const QStringList &words, QLatin1String suffix)
{
    QStringList phrases;
    for (const QString &word : words)
        phrases.append(u'"' + word + u'"' + suffix);
    return phrases;
}

/// Those of the words that say something of one paper and not of all. The description names the authors
/// again; its other words every paper has.
QStringList tellingWords(QStringList words)
{
    static const QStringList common = QString::fromLatin1(kPaperDescription).split(u' ', Qt::SkipEmptyParts);
    words.removeIf([](const QString &word) {
        return std::any_of(common.begin(), common.end(),
                           [&](const QString &one) { return one.startsWith(word, Qt::CaseInsensitive); });
    });
    return words;
}

/// One query for each degree of match, the best first; what one finds the next ones find as well. None ranks
/// its rows, so that it can end with the first few: of a common prefix there are 100,000.
QStringList expressions(const QStringList &words)
{
    const QLatin1String prefix(" *");
    const QString whole = quoted(words, QLatin1String()).join(u" AND ");
    const QString begun = quoted(words, prefix).join(u" AND ");
    QStringList expressions{QStringLiteral("{title} : (%1)").arg(whole),
                            QStringLiteral("{title} : (%1)").arg(begun),
                            QStringLiteral("{title names} : (%1)").arg(begun), begun};
    if (const QStringList telling = tellingWords(words); !telling.isEmpty() && telling != words)
        expressions.append(quoted(telling, prefix).join(u" AND "));
    return expressions;
}

Result<void> appendFound(SideDatabase &database, const QString &expression, QList<qint64> &found)
{
    Result<Statement> select =
        database.prepare(QStringLiteral("SELECT rowid FROM words WHERE words MATCH ? LIMIT ?"),
                         {expression, qint64(ItemSearch::kMostFound)});
    if (!select)
        return select.error();
    Statement::Step step = select->step();
    for (; step == Statement::Step::Row && found.size() < ItemSearch::kMostFound; step = select->step()) {
        const qint64 number = select->integer(0).value_or(0);
        if (!found.contains(number))
            found.append(number);
    }
    if (step == Statement::Step::Failed)
        return database.explained(select->error());
    return {};
}

Result<QList<qint64>> numbersOf(SideDatabase &database, const QStringList &words)
{
    QList<qint64> found;
    for (const QString &expression : expressions(words)) {
        if (auto done = appendFound(database, expression, found); !done)
            return done.error();
        if (found.size() == ItemSearch::kMostFound)
            break;
    }
    return found;
}

Result<QStringList> idsOf(SideDatabase &database, const QList<qint64> &numbers)
{
    QStringList ids;
    Result<Statement> select = database.prepare(QStringLiteral("SELECT id FROM items WHERE number = ?"));
    if (!select)
        return select.error();
    for (const qint64 number : numbers) {
        select->reset();
        select->bindInteger(1, number);
        const Statement::Step step = select->step();
        if (step == Statement::Step::Failed)
            return database.explained(select->error());
        if (step == Statement::Step::Row)
            ids.append(select->text(0).value_or(QString()));
    }
    return ids;
}

/// Without the empty names that a trailing comma leaves.
QStringList linesOf(const QString &text)
{
    return text.split(u'\n', Qt::SkipEmptyParts);
}

Result<QList<FoundPaper>> papersOf(SideDatabase &database, const QStringList &ids)
{
    QList<FoundPaper> papers;
    Result<Statement> select =
        database.prepare(QStringLiteral("SELECT title, names, year FROM items WHERE id = ?"));
    if (!select)
        return select.error();
    for (const QString &id : ids) {
        select->reset();
        select->bindText(1, id.toUtf8());
        const Statement::Step step = select->step();
        if (step == Statement::Step::Failed)
            return database.explained(select->error());
        if (step == Statement::Step::Row) {
            papers.append({.id = id,
                           .title = select->text(0).value_or(QString()),
                           .authorNames = linesOf(select->text(1).value_or(QString())),
                           .year = select->text(2).value_or(QString())});
        }
    }
    return papers;
}

} // namespace

ItemSearch::ItemSearch(const QString &path)
    : m_file(path)
{
}

/// What `read` makes of the file; nothing where that fails.
template <typename Answer, typename Read> Answer ItemSearch::answered(Read read)
{
    const Result<SideDatabase *> database = m_file.forReading();
    if (!database)
        return {}; // nothing was published yet; a damaged file is the publisher's to replace
    const Result<Answer> answer = read(**database);
    if (answer)
        return *answer;
    logLine(u"ItemSearch: Error searching published papers: " + answer.error().message());
    m_file.discardIfDamaged(answer.error());
    return {};
}

QStringList ItemSearch::find(const QStringList &terms)
{
    const QStringList words = searchWords(terms);
    if (words.isEmpty())
        return {};
    return answered<QStringList>([&](SideDatabase &database) -> Result<QStringList> {
        const Result<QList<qint64>> numbers = numbersOf(database, words);
        return numbers ? idsOf(database, *numbers) : numbers.error();
    });
}

QList<FoundPaper> ItemSearch::papers(const QStringList &ids)
{
    return answered<QList<FoundPaper>>([&](SideDatabase &database) { return papersOf(database, ids); });
}
