// What a person at a terminal sees that a file does not get.
#include "program/LibraryFixture.h"

#include <QRegularExpression>
#include <pty.h>
#include <unistd.h>

class Terminal : public LibraryFixture
{
protected:
    /// Everything that the program writes when both its outputs are a terminal.
    QString runOnTerminal(const QStringList &arguments)
    {
        int master = -1;
        int terminal = -1;
        EXPECT_EQ(openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
        m_program.setEnvironment(QStringLiteral("TERM"), QStringLiteral("xterm"));
        m_program.setChildSetup([terminal] {
            dup2(terminal, STDOUT_FILENO);
            dup2(terminal, STDERR_FILENO);
        });
        m_program.run(arguments);
        close(terminal);
        QByteArray seen;
        char buffer[4096];
        // Ends with an error once all is read, because nobody holds the terminal any more.
        for (ssize_t count; (count = read(master, buffer, sizeof buffer)) > 0;)
            seen.append(buffer, count);
        close(master);
        m_program.setChildSetup({});
        return QString::fromUtf8(seen);
    }
};

TEST_F(Terminal, EmphasisesTheMatchInItsPassage)
{
    paper(QStringLiteral("a.pdf"), {QStringLiteral("the zeta function")}, "Zeta");
    importAll();
    const QString seen = runOnTerminal({QStringLiteral("search"), QStringLiteral("zeta")});
    EXPECT_TRUE(seen.contains(u"the \x1b[1;33mzeta\x1b[0m function")) << seen.toStdString();
}

TEST_F(Terminal, ShowsNoColoursToWhoWantsNone)
{
    paper(QStringLiteral("a.pdf"), {QStringLiteral("the zeta function")}, "Zeta");
    importAll();
    m_program.setEnvironment(QStringLiteral("NO_COLOR"), QStringLiteral("1"));
    EXPECT_FALSE(runOnTerminal({QStringLiteral("search"), QStringLiteral("zeta")}).contains(u'\x1b'));
}

TEST_F(Terminal, ShowsHowFarAnImportIsAndThenTheCountsAlone)
{
    for (int i = 0; i < 4; ++i)
        paper(QStringLiteral("paper%1.pdf").arg(i), {QStringLiteral("words %1").arg(i)});
    const QString seen = runOnTerminal({QStringLiteral("import"), m_papers.path()});
    EXPECT_TRUE(seen.contains(u"1/4  Indexed: paper")) << seen.toStdString();
    EXPECT_TRUE(seen.contains(QRegularExpression(QStringLiteral("3/4  ~\\d+s remaining  Indexed: paper"))))
        << seen.toStdString();
    EXPECT_TRUE(seen.endsWith(u"\r\x1b[K4 indexed, 0 failed, 0 already in the library\r\n"))
        << seen.toStdString();
}

TEST_F(Terminal, ClearsTheProgressLineBeforeItNamesAFailure)
{
    m_papers.write(QStringLiteral("bad.pdf"), "nothing");
    const QString seen = runOnTerminal({QStringLiteral("import"), m_papers.path()});
    EXPECT_TRUE(seen.contains(u"\r\x1b[K❌ PDFIndexer ERROR: [")) << seen.toStdString();
}
