// More than one program on one library, and programs that are stopped half way.
#include "program/LibraryFixture.h"

#include <csignal>
#include <netinet/in.h>
#include <poll.h>
#include <sqlite3.h>
#include <sys/socket.h>
#include <unistd.h>

class Concurrency : public LibraryFixture
{
protected:
    void addPapers(const QString &prefix, int count, int pages)
    {
        for (int i = 0; i < count; ++i) {
            PdfBuilder builder;
            builder.title((prefix + QString::number(i)).toLatin1());
            for (int page = 0; page < pages; ++page)
                builder.page({QStringLiteral("%1 words of paper %2 page %3").arg(prefix).arg(i).arg(page)});
            m_papers.write(QStringLiteral("%1%2.pdf").arg(prefix).arg(i), builder.build());
        }
    }

    /// A paper in the middle of the folder whose ISBN makes the program ask the book service.
    void addPaperOfABook()
    {
        m_papers.write(QStringLiteral("many5-book.pdf"),
                       PdfBuilder().title("Book").page({QStringLiteral("ISBN 0-306-40615-2")}).build());
    }

    /// Runs `then` at the moment when the import, in the middle of its work, asks for the book.
    ProgramRun importUntilItAsksForTheBook(const std::function<void(QProcess &)> &then)
    {
        const int listening = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listening, reinterpret_cast<sockaddr *>(&address), size), 0);
        EXPECT_EQ(listen(listening, 1), 0);
        EXPECT_EQ(getsockname(listening, reinterpret_cast<sockaddr *>(&address), &size), 0);

        m_program.setEnvironment(QStringLiteral("QUIREVAULT_OPENLIBRARY_URL"),
                                 QStringLiteral("http://127.0.0.1:%1").arg(ntohs(address.sin_port)));
        const ProgramRun run =
            m_program.run({QStringLiteral("import"), m_papers.path()}, [&](QProcess &process) {
                pollfd asking{.fd = listening, .events = POLLIN, .revents = 0};
                constexpr int kHangMs = 60'000;
                ASSERT_EQ(poll(&asking, 1, kHangMs), 1) << "the program never asked";
                const int asked = accept(listening, nullptr, nullptr);
                // Those that run meanwhile ask nobody.
                m_program.setEnvironment(QStringLiteral("QUIREVAULT_OPENLIBRARY_URL"), QString());
                then(process);
                close(asked);
            });
        close(listening);
        m_program.setEnvironment(QStringLiteral("QUIREVAULT_OPENLIBRARY_URL"), QString());
        return run;
    }

    /// Whole in SQLite's eyes, and no paper without its text or text without its paper.
    void expectConsistent()
    {
        sqlite3 *database = nullptr;
        ASSERT_EQ(sqlite3_open(m_program.libraryPath().toUtf8().constData(), &database), SQLITE_OK);
        EXPECT_EQ(answer(database, "PRAGMA integrity_check"), "ok");
        EXPECT_EQ(
            answer(database, "SELECT count(*) FROM fts_papers WHERE paper_id NOT IN (SELECT id FROM papers)"),
            "0");
        EXPECT_EQ(answer(database, "SELECT count(*) FROM papers p WHERE chunk_count <> "
                                   "(SELECT count(*) FROM fts_papers f WHERE f.paper_id = p.id)"),
                  "0");
        sqlite3_close(database);
    }

    static std::string answer(sqlite3 *database, const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
        const std::string text = reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
        sqlite3_finalize(statement);
        return text;
    }
};

TEST_F(Concurrency, TwoImportsAtOnceLoseNothing)
{
    addPapers(QStringLiteral("shared"), 60, 3);
    addPaperOfABook();
    ProgramRun second;
    const ProgramRun first = importUntilItAsksForTheBook([&](QProcess &) { second = importAll(); });
    EXPECT_EQ(first.status, 0) << first.err.toStdString();
    EXPECT_EQ(second.status, 0) << second.err.toStdString();
    EXPECT_EQ(idsByTitle().size(), 61);
    expectConsistent();
}

TEST_F(Concurrency, SearchingGoesOnWhileAnImportRuns)
{
    addPapers(QStringLiteral("early"), 1, 1);
    ASSERT_EQ(importAll().status, 0);
    addPapers(QStringLiteral("more"), 40, 10);
    addPaperOfABook();
    ProgramRun search;
    const ProgramRun imported = importUntilItAsksForTheBook([&](QProcess &) {
        search = m_program.run({QStringLiteral("search"), QStringLiteral("--json"), QStringLiteral("early")});
    });
    EXPECT_EQ(imported.status, 0) << imported.err.toStdString();
    EXPECT_EQ(search.status, 0) << search.err.toStdString();
    EXPECT_EQ(search.json().array().size(), 1);
}

TEST_F(Concurrency, CtrlCStopsAnImportCleanly)
{
    addPapers(QStringLiteral("many"), 100, 10);
    addPaperOfABook();
    const ProgramRun stopped = importUntilItAsksForTheBook(
        [](QProcess &process) { ::kill(static_cast<pid_t>(process.processId()), SIGINT); });
    EXPECT_EQ(stopped.status, 130) << stopped.err.toStdString();
    EXPECT_TRUE(stopped.out.contains(u" indexed, 0 failed")) << stopped.out.toStdString();
    EXPECT_TRUE(stopped.out.contains(u" not done")) << stopped.out.toStdString();
    expectConsistent();
    EXPECT_EQ(importAll().status, 0);
    EXPECT_EQ(idsByTitle().size(), 101);
}

TEST_F(Concurrency, AKilledImportLeavesAWholeLibrary)
{
    addPapers(QStringLiteral("many"), 100, 10);
    addPaperOfABook();
    const ProgramRun killed = importUntilItAsksForTheBook([](QProcess &process) { process.kill(); });
    EXPECT_EQ(killed.status, -1);
    expectConsistent();
    EXPECT_EQ(importAll().status, 0);
    EXPECT_EQ(idsByTitle().size(), 101);
}
