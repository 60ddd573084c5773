#pragma once

#include "app/ImportFlow.h"
#include "app/LibraryViewModel.h"
#include "app/RetagFlow.h"
#include "platform/Preferences.h"
#include "support/FakeClock.h"
#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QPromise>
#include <concepts>
#include <deque>
#include <mutex>

/// Runs the event loop until the property has the value, which it may have already; a value may also be a
/// condition on it. A wait in vain ends with the time limit of the test program.
template <typename T, typename Value> void waitUntil(QProperty<T> &property, const Value &value)
{
    const auto isThere = [&] {
        if constexpr (std::predicate<const Value &, const T &>)
            return value(property.value());
        else
            return property.value() == value;
    };
    QEventLoop loop;
    const auto observer = property.addNotifier([&] {
        if (isThere())
            loop.quit();
    });
    if (!isThere())
        loop.exec();
}

/// Runs the event loop until the task has ended.
inline void waitFor(QCoro::Task<> task)
{
    QCoro::waitFor(std::move(task));
}

/// A search that answers when the test says so, in the order that the test says.
class HandDrivenSearch
{
public:
    ~HandDrivenSearch() { abandon(); }

    LibraryViewModel::Search function()
    {
        return [this](const QString &query) {
            queries.append(query);
            QPromise<Answer> &promise = m_promises.emplace_back();
            promise.start();
            return promise.future();
        };
    }

    /// Answers the search that was asked at this index; the event loop brings the answer.
    void answer(qsizetype index, const Result<QList<SearchResult>> &results)
    {
        QPromise<Answer> &promise = m_promises.at(static_cast<size_t>(index));
        promise.addResult(results);
        promise.finish();
    }

    /// Fails every search that was not answered.
    void abandon()
    {
        for (QPromise<Answer> &promise : m_promises) {
            if (promise.future().isFinished())
                continue;
            promise.addResult(Answer(cancelledError()));
            promise.finish();
        }
    }

    QStringList queries; ///< in the order in which they were asked

private:
    using Answer = Result<QList<SearchResult>>;
    std::deque<QPromise<Answer>> m_promises;
};

/// Remembers what the view model and its flows announced, each call one batch; from any thread.
class BatchPublisher : public SystemSearchPublisher
{
public:
    void publish(const Paper &paper) override { publish(QList{paper}); }
    void publish(const QList<Paper> &papers) override
    {
        const std::lock_guard lock(m_mutex);
        m_batches.append(papers);
    }
    void publishLibrary(const QList<Paper> &papers) override
    {
        publish(papers);
        const std::lock_guard lock(m_mutex);
        ++m_wholeLibraries;
    }
    void withdraw(const QString &) override {}

    /// How many of the batches were announced as the whole library.
    int wholeLibraries() const
    {
        const std::lock_guard lock(m_mutex);
        return m_wholeLibraries;
    }
    QList<QList<Paper>> batches() const
    {
        const std::lock_guard lock(m_mutex);
        return m_batches;
    }

private:
    mutable std::mutex m_mutex;
    QList<QList<Paper>> m_batches;
    int m_wholeLibraries = 0;
};

/// A view model over a real, empty library of its own, with everything slow driven by the test: time, the
/// search, the indexing of a file and the tagger. Needs an application object. Derive a test fixture from it,
/// or keep it as a member.
struct ViewModelFixture {
    ViewModelFixture()
    {
        qputenv("XDG_CONFIG_HOME", library.folder.path().toLocal8Bit());
        makeViewModel();
    }
    ~ViewModelFixture()
    {
        model.reset();
        search.abandon();
        // Operations still running answer to nobody; let them.
        static_cast<void>(library.db.query(QStringLiteral("SELECT 1")).result().has_value());
        QCoreApplication::processEvents();
    }
    ViewModelFixture(const ViewModelFixture &) = delete;
    ViewModelFixture &operator=(const ViewModelFixture &) = delete;

    /// A view model in place of the one that is there, over the same library.
    void makeViewModel()
    {
        model.reset();
        model = std::make_unique<LibraryViewModel>(LibraryViewModel::Collaborators{
            .db = library.db,
            .library = library.service,
            .publisher = publisher,
            .preferences = preferences,
            .clock = clock,
            .importFlow = importFlow,
            .retagFlow = retagFlow,
            .search = search.function(),
        });
    }
    LibraryViewModel &vm() { return *model; }

    /// Loads papers and tags, as at the start of the program, and waits for them.
    void load()
    {
        waitFor(vm().loadPapers());
        waitFor(vm().loadTags());
    }

    /// A paper of the library with the tags; "/papers/ID.pdf" is its path.
    Paper addPaper(const QString &id, const QString &title, const QStringList &tags = {},
                   const QString &authors = {}, std::optional<qint64> year = {})
    {
        library.addPaper(id, title, authors, year ? SqlValue(*year) : SqlValue());
        EXPECT_TRUE(library.db.replaceTags(id, tags).result());
        return paper(id).value_or(Paper());
    }
    /// The paper as the library has it now.
    std::optional<Paper> paper(const QString &id)
    {
        return library.service.paperById(id).result().value_or(std::nullopt);
    }

    /// What indexing does when a test asks for nothing else: stores a paper whose id is "id of " and the
    /// path, titled by its file name.
    Result<Paper> storePaper(const QString &path)
    {
        const QString id = u"id of " + path;
        library.run(
            QStringLiteral("INSERT INTO papers (id, title, filepath, date_indexed) VALUES (?, ?, ?, ?)"),
            {id, path.section(u'/', -1), path, toStoredTime(clock.now())});
        return *paper(id);
    }

    TestLibrary library; ///< its own publisher hears only what the store announces
    BatchPublisher publisher;
    FakeClock clock;
    Preferences preferences;
    HandDrivenSearch search;
    /// Called on threads of the import's own: set it before an import, and block in it at will.
    ImportFlow::IndexFile indexFile = [this](const QString &path, auto) {
        return storePaper(path);
    };
    /// The new tags of a paper; called on a worker thread.
    std::function<QStringList(const Paper &, std::stop_token)> retagPaper = [](const Paper &paper, auto) {
        return paper.tags;
    };
    ImportFlow importFlow{[this](const QString &path, std::stop_token stop) { return indexFile(path, stop); },
                          preferences, clock};
    RetagFlow retagFlow{{
        .db = library.db,
        .library = library.service,
        .publisher = publisher,
        .retagPaper = [this](const Paper &paper, std::stop_token stop) { return retagPaper(paper, stop); },
    }};
    std::unique_ptr<LibraryViewModel> model;
};
