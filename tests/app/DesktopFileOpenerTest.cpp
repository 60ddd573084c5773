#include "app/DesktopFileOpener.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QEventLoop>
#include <QFile>
#include <gtest/gtest.h>

namespace
{

/// Answers every call on its object, and remembers them.
class RecordingFileManager : public QDBusVirtualObject
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

/// A bus of two: the opener, and a file manager.
class DesktopFileOpenerTest : public testing::Test
{
protected:
    DesktopFileOpenerTest()
    {
        QObject::connect(
            &m_server, &QDBusServer::newConnection, &m_server, [this](QDBusConnection connection) {
                connection.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), &manager);
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

    static inline const QString kName = QStringLiteral("file-manager");
    TemporaryFolder folder;
    RecordingFileManager manager;
    QList<QUrl> urls;
    bool hasProgram = true;
    DesktopFileOpener opener{[] { return QDBusConnection(kName); },
                             [this](const QUrl &url) {
                                 urls.append(url);
                                 return hasProgram;
                             }};

private:
    QDBusServer m_server;
    QEventLoop m_connected;
};

} // namespace

TEST_F(DesktopFileOpenerTest, OpensAFileInTheProgramThatTheDesktopHasForIt)
{
    const QString path = file(QStringLiteral("a b;$(c) %41.pdf"));
    EXPECT_EQ(open(path), std::nullopt);
    EXPECT_EQ(urls, QList<QUrl>{QUrl::fromLocalFile(path)});
    EXPECT_EQ(urls.first().toLocalFile(), path);
}

TEST_F(DesktopFileOpenerTest, NamesTheFileThatIsMissing)
{
    const QString path = folder.path(QStringLiteral("gone.pdf"));
    for (const auto &problem : {open(path), showInFolder(path)}) {
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->message(), QString(u"The file is no longer there: " + path));
    }
    EXPECT_TRUE(urls.isEmpty());
    EXPECT_TRUE(manager.calls.isEmpty());
}

TEST_F(DesktopFileOpenerTest, NamesTheFileThatNoProgramOpens)
{
    hasProgram = false;
    const QString path = file(QStringLiteral("a.pdf"));
    const auto problem = open(path);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->message(), QString(u"The desktop has no program to open: " + path));
}

TEST_F(DesktopFileOpenerTest, AsksTheFileManagerToSelectTheFile)
{
    const QString path = file(QStringLiteral("ä b#1.pdf"));
    EXPECT_EQ(showInFolder(path), std::nullopt);
    ASSERT_EQ(manager.calls.size(), 1);
    const QDBusMessage call = manager.calls.first();
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
    manager.isWilling = false;
    EXPECT_EQ(showInFolder(file(QStringLiteral("a.pdf"))), std::nullopt);
    EXPECT_EQ(urls, QList<QUrl>{QUrl::fromLocalFile(folder.path())});
}
