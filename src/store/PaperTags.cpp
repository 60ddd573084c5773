#include "store/PaperTags.h"

#include "store/Database.h"
#include "store/Statement.h"

#include <QHash>

namespace
{

class TagReader
{
public:
    explicit TagReader(Database &database)
        : m_database(database)
    {
    }

    Result<void> readById(QList<Paper> &papers)
    {
        for (qsizetype from = 0; from < papers.size(); from += kIdsPerStatement) {
            const qsizetype count = std::min(kIdsPerStatement, papers.size() - from);
            if (auto done = readSlice(papers.begin() + from, count); !done)
                return done;
        }
        return {};
    }

    Result<void> scan(QList<Paper> &papers)
    {
        m_statement = m_database.prepare(
            QStringLiteral("SELECT paper_id, tag FROM tags ORDER BY paper_id ASC, tag ASC"));
        if (!m_statement)
            return m_statement.error();
        PapersById byId;
        byId.reserve(papers.size());
        for (Paper &paper : papers)
            byId.insert(paper.id.toUtf8(), &paper);
        return readRows(byId);
    }

private:
    using PapersById = QHash<QByteArray, Paper *>;

    Result<void> readSlice(QList<Paper>::iterator papers, qsizetype count)
    {
        if (auto prepared = prepareFor(count); !prepared)
            return prepared;
        PapersById byId;
        byId.reserve(count);
        for (int i = 0; i < count; ++i) {
            const QByteArray id = papers[i].id.toUtf8();
            if (!m_statement->bindText(i + 1, id))
                return m_statement->error();
            byId.insert(id, &papers[i]);
        }
        return readRows(byId);
    }

    /// All slices but the last have one size and share one statement.
    Result<void> prepareFor(qsizetype count)
    {
        if (m_count == count) {
            m_statement->reset();
            return {};
        }
        m_statement = m_database.prepare(u"SELECT paper_id, tag FROM tags WHERE paper_id IN (" +
                                         placeholders(count) + u')');
        m_count = count;
        return m_statement ? Result<void>() : Result<void>(m_statement.error());
    }

    Result<void> readRows(const PapersById &byId)
    {
        bool isFirst = true;
        Statement::Step step = m_statement->step();
        for (; step == Statement::Step::Row; step = m_statement->step()) {
            isFirst = false;
            const std::optional<QByteArrayView> id = m_statement->utf8(0);
            const std::optional<QByteArrayView> tag = m_statement->utf8(1);
            if (id && tag)
                add(*id, *tag, byId);
        }
        finishPaper();
        // As with every query: a failure in the middle of the rows ends them.
        return step == Statement::Step::Failed && isFirst ? Result<void>(m_statement->error())
                                                          : Result<void>();
    }

    /// The rows of one paper come one after another.
    void add(QByteArrayView id, QByteArrayView tag, const PapersById &byId)
    {
        if (id != m_id) {
            finishPaper();
            m_id = id.toByteArray();
            m_paper = byId.value(m_id);
        }
        if (m_paper)
            m_tags.append(shared(tag));
    }

    void finishPaper()
    {
        if (m_paper)
            m_paper->tags = QStringList(m_tags.cbegin(), m_tags.cend()); // no larger than it need be
        m_paper = nullptr;
        m_id.clear();
        m_tags.clear();
    }

    QString shared(QByteArrayView tag)
    {
        const auto known = m_names.constFind(QByteArray::fromRawData(tag.data(), tag.size()));
        if (known != m_names.cend())
            return *known;
        return *m_names.insert(tag.toByteArray(), QString::fromUtf8(tag));
    }

    Database &m_database;
    Result<Statement> m_statement{Error()};
    qsizetype m_count = 0;    ///< of parameters of the statement
    QByteArray m_id;          ///< of the paper whose rows are being read
    Paper *m_paper = nullptr; ///< the same; null when it is not asked for
    QStringList m_tags;       ///< of that paper, so far
    QHash<QByteArray, QString> m_names;
};

} // namespace

QString placeholders(qsizetype count)
{
    return QStringList(count, QStringLiteral("?")).join(QStringLiteral(", "));
}

Result<void> addTagsTo(QList<Paper> &papers, Database &database, TagLookup lookup)
{
    TagReader reader(database);
    return lookup == TagLookup::Scan ? reader.scan(papers) : reader.readById(papers);
}
