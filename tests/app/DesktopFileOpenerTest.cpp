#include "app/DesktopFileOpener.h"

#include "support/BusyThreads.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <gtest/gtest.h>

namespace
{

/// Answers every call on its objects, and remembers them.
class RecordingPeer : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls.append(message);
        return connection.send(
            isWilling ? message.createReply()
                      : message.createErrorReply(QDBusError::ServiceUnknown, QStringLiteral("no")));
    }

    bool isWilling = true;
    QList<QDBusMessage> calls;
};

/// A bus of two: the opener, and what is a file manager and the viewer "org.example.On-Bus".
class DesktopFileOpenerTest : public testing::Test
{
protected:
    DesktopFileOpenerTest()
    {
        QObject::connect(
            &m_server, &QDBusServer::newConnection, &m_server, [this](QDBusConnection connection) {
                connection.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), &peer);
                connection.registerVirtualObject(QStringLiteral("/org/example/On_Bus"), &peer);
                m_connected.quit();
            });
        QDBusConnection::connectToPeer(m_server.address(), kName);
        m_connected.exec();
    }
    ~DesktopFileOpenerTest() override { QDBusConnection::disconnectFromPeer(kName); }

    QString file(const QString &name)
    {
        const QString path = folder.path(name);
        QFile created(path);
        EXPECT_TRUE(created.open(QIODevice::WriteOnly));
        return path;
    }
    /// Runs the event loop until the opener answers.
    std::optional<Error> answerOf(const std::function<void(FileOpener::Done)> &call)
    {
        QEventLoop loop;
        std::optional<Error> answer;
        bool hasAnswered = false; // the answer may come at once, and then nothing is left to wait for
        call([&](const std::optional<Error> &problem) {
            answer = problem;
            hasAnswered = true;
            loop.quit();
        });
        if (!hasAnswered)
            loop.exec();
        return answer;
    }
    std::optional<Error> open(const QString &path)
    {
        return answerOf([&](auto done) { opener.open(path, done); });
    }
    std::optional<Error> showInFolder(const QString &path)
    {
        return answerOf([&](auto done) { opener.showInFolder(path, done); });
    }

    /// A program for files of a type, of which `id` makes the file's name.
    void program(const QByteArray &type, const QString &id, const QByteArray &exec,
                 const QByteArray &more = {})
    {
        QDir().mkpath(folder.path(QStringLiteral("share/applications")));
        folder.write(u"share/applications/" + id + u".desktop",
                     "[Desktop Entry]\nType=Application\nMimeType=" + type + ";\nExec=" + exec + "\n" + more);
    }
    void viewer(const QString &id, const QByteArray &exec, const QByteArray &more = {})
    {
        program("application/pdf", id, exec, more);
    }
    void makeDefault(const QByteArray &id)
    {
        folder.write(QStringLiteral("mimeapps.list"),
                     "[Default Applications]\napplication/pdf=" + id + ".desktop\n");
    }
    /// The words behind the program's name of what was started.
    QList<QStringList> startedArguments() const
    {
        QList<QStringList> arguments;
        for (const ProgramCall &call : started)
            arguments.append(call.arguments);
        return arguments;
    }

    static inline const QString kName = QStringLiteral("file-manager");
    TemporaryFolder folder;
    RecordingPeer peer;
    QList<QUrl> urls;
    bool hasFolderProgram = true;
    QList<ProgramCall> started;
    int failingStarts = 0;
    DesktopFileOpener::Desktop desktop{.bus = [] { return QDBusConnection(kName); },
                                       .openFolder =
                                           [this](const QUrl &url) {
                                               urls.append(url);
                                               return hasFolderProgram;
                                           },
                                       .start =
                                           [this](const ProgramCall &call) {
                                               started.append(call);
                                               return failingStarts-- <= 0;
                                           },
                                       .folders = {.config = {folder.path()},
                                                   .data = {folder.path(QStringLiteral("share"))},
                                                   .desktops = {}}};
    DesktopFileOpener opener{desktop};

private:
    QDBusServer m_server;
    QEventLoop m_connected;
};

} // namespace

TEST_F(DesktopFileOpenerTest, OpensAFileInTheProgramThatTheUserPrefers)
{
    viewer(QStringLiteral("a"), "true --a %f");
    viewer(QStringLiteral("b"), "true --b %f");
    makeDefault("b");
    const QString path = file(QStringLiteral("a b;$(c) %41.pdf"));
    EXPECT_EQ(open(path), std::nullopt);
    EXPECT_EQ(startedArguments(), QList<QStringList>{QStringList({QStringLiteral("--b"), path})});
    EXPECT_TRUE(started.first().program.startsWith(u'/'));
}

TEST_F(DesktopFileOpenerTest, NeedsNoneOfTheThreadsThatQtPaintsWith)
{
    viewer(QStringLiteral("a"), "true %f");
    const BusyThreads busy;
    EXPECT_EQ(open(file(QStringLiteral("a.pdf"))), std::nullopt);
    EXPECT_EQ(startedArguments().size(), 1);
}

TEST_F(DesktopFileOpenerTest, OpensFilesOfTheTypeThatItIsForOrThatTheirNamesTell)
{
    viewer(QStringLiteral("viewer"), "true --view %f");
    program("text/html", QStringLiteral("browser"), "true --browse %f");
    const QString path = file(QStringLiteral("a.html"));
    for (const QString &type : {QStringLiteral("text/html"), QString()}) {
        started.clear();
        desktop.fileType = type;
        DesktopFileOpener ofPages{desktop};
        EXPECT_EQ(answerOf([&](auto done) { ofPages.open(path, done); }), std::nullopt);
        EXPECT_EQ(startedArguments(), QList<QStringList>{QStringList({QStringLiteral("--browse"), path})});
    }
}

TEST_F(DesktopFileOpenerTest, NeverOpensAFileInThisProgram)
{
    viewer(QStringLiteral("org.quirevault.Quirevault"), "true %f", "DBusActivatable=true\n");
    viewer(QStringLiteral("a-copy"), "/usr/bin/env QT_SCALE_FACTOR=2 quirevault %f");
    viewer(QStringLiteral("a-package"), "true run org.quirevault.Quirevault %f");
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/true"), folder.path(QStringLiteral("quirevault-desktop"))));
    ASSERT_TRUE(
        QFile::link(folder.path(QStringLiteral("quirevault-desktop")), folder.path(QStringLiteral("pdf"))));
    viewer(QStringLiteral("a-link"), folder.path(QStringLiteral("pdf")).toUtf8() + " %f");
    viewer(QStringLiteral("other"), "true --other %f");
    makeDefault("org.quirevault.Quirevault");
    const QString path = file(QStringLiteral("a.pdf"));
    EXPECT_EQ(open(path), std::nullopt);
    EXPECT_EQ(startedArguments(), QList<QStringList>{QStringList({QStringLiteral("--other"), path})});
    EXPECT_TRUE(peer.calls.isEmpty());
}

TEST_F(DesktopFileOpenerTest, AsksNobodyWhoWouldHandTheFileToTheDefault)
{
    viewer(QStringLiteral("a"), "xdg-open %u");
    viewer(QStringLiteral("b"), "/usr/bin/gio open %u");
    viewer(QStringLiteral("c"), "sh -c \"exec xdg-open \\\\\"\\\\$1\\\\\"\" see %f");
    EXPECT_TRUE(open(file(QStringLiteral("a.pdf"))));
    EXPECT_TRUE(started.isEmpty());
}

TEST_F(DesktopFileOpenerTest, PassesOverProgramsForATerminal)
{
    viewer(QStringLiteral("a"), "true --a %f", "Terminal=true\n");
    viewer(QStringLiteral("b"), "true --b %f");
    EXPECT_EQ(open(file(QStringLiteral("a.pdf"))), std::nullopt);
    EXPECT_EQ(startedArguments().value(0).value(0), u"--b");
}

TEST_F(DesktopFileOpenerTest, OpensTheNextProgramWhereOneDoesNotStart)
{
    viewer(QStringLiteral("a"), "no-such-program %f");
    viewer(QStringLiteral("b"), "true --b %f");
    viewer(QStringLiteral("c"), "true --c %f");
    failingStarts = 1;
    EXPECT_EQ(open(file(QStringLiteral("a.pdf"))), std::nullopt);
    ASSERT_EQ(started.size(), 2);
    EXPECT_EQ(started.last().arguments.first(), u"--c");
}

TEST_F(DesktopFileOpenerTest, GivesAProgramAPathThatIsNoOption)
{
    viewer(QStringLiteral("a"), "true %f");
    const QString path = file(QStringLiteral("-rf.pdf"));
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    EXPECT_EQ(open(QStringLiteral("-rf.pdf")), std::nullopt);
    QDir::setCurrent(before);
    ASSERT_EQ(started.size(), 1);
    EXPECT_TRUE(started.first().arguments.first().startsWith(u'/'));
    EXPECT_EQ(QFileInfo(started.first().arguments.first()).canonicalFilePath(),
              QFileInfo(path).canonicalFilePath());
}

TEST_F(DesktopFileOpenerTest, OpensAFileOnTheBusWhereTheProgramIsReachedThere)
{
    viewer(QStringLiteral("org.example.On-Bus"), "true %f", "DBusActivatable=true\n");
    const QString path = file(QStringLiteral("-ä b\n'\"%1.pdf"));
    EXPECT_EQ(open(path), std::nullopt);
    ASSERT_EQ(peer.calls.size(), 1);
    const QDBusMessage call = peer.calls.first();
    EXPECT_EQ(call.interface(), u"org.freedesktop.Application");
    EXPECT_EQ(call.path(), u"/org/example/On_Bus");
    EXPECT_EQ(call.member(), u"Open");
    EXPECT_EQ(call.signature(), u"asa{sv}");
    EXPECT_EQ(QUrl(call.arguments().first().toStringList().value(0)).toLocalFile(), path);
    EXPECT_TRUE(started.isEmpty());
}

TEST_F(DesktopFileOpenerTest, StartsAProgramThatIsNotReachedOnTheBus)
{
    peer.isWilling = false;
    viewer(QStringLiteral("org.example.On-Bus"), "true --started %f", "DBusActivatable=true\n");
    EXPECT_EQ(open(file(QStringLiteral("a.pdf"))), std::nullopt);
    EXPECT_EQ(startedArguments().value(0).value(0), u"--started");
}

TEST_F(DesktopFileOpenerTest, NamesTheFileThatIsMissing)
{
    const QString path = folder.path(QStringLiteral("gone.pdf"));
    for (const auto &problem : {open(path), showInFolder(path)}) {
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->message(), QString(u"The file is no longer there: " + path));
    }
    EXPECT_TRUE(urls.isEmpty());
    EXPECT_TRUE(peer.calls.isEmpty());
}

TEST_F(DesktopFileOpenerTest, NamesTheFileThatNoOtherProgramOpens)
{
    viewer(QStringLiteral("org.quirevault.Quirevault"), "quirevault %f");
    const QString path = file(QStringLiteral("a.pdf"));
    const auto problem = open(path);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->message(), QString(u"The desktop has no other program to open: " + path));
}

TEST_F(DesktopFileOpenerTest, AsksTheFileManagerToSelectTheFile)
{
    const QString path = file(QStringLiteral("ä b#1.pdf"));
    EXPECT_EQ(showInFolder(path), std::nullopt);
    ASSERT_EQ(peer.calls.size(), 1);
    const QDBusMessage call = peer.calls.first();
    EXPECT_EQ(call.interface(), u"org.freedesktop.FileManager1");
    EXPECT_EQ(call.member(), u"ShowItems");
    EXPECT_EQ(call.signature(), u"ass");
    const QStringList items = call.arguments().first().toStringList();
    EXPECT_EQ(items, QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)});
    EXPECT_TRUE(items.first().endsWith(u"%C3%A4%20b%231.pdf"));
    EXPECT_TRUE(urls.isEmpty());
}

TEST_F(DesktopFileOpenerTest, OpensTheFolderWhereNoFileManagerAnswers)
{
    peer.isWilling = false;
    EXPECT_EQ(showInFolder(file(QStringLiteral("a.pdf"))), std::nullopt);
    EXPECT_EQ(urls, QList<QUrl>{QUrl::fromLocalFile(folder.path())});
}

TEST_F(DesktopFileOpenerTest, NamesTheFileWhoseFolderNoProgramOpens)
{
    peer.isWilling = false;
    hasFolderProgram = false;
    const QString path = file(QStringLiteral("a.pdf"));
    const auto problem = showInFolder(path);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->message(), QString(u"The desktop has no program to open the folder of: " + path));
}
