#include "app/SessionManager.h"

#include "support/FakeClock.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace
{
PDFOpenRequest requestFor(const QString &path)
{
    return {.id = QUuid::createUuidV5(QUuid(), path),
            .url = QUrl::fromLocalFile(path),
            .page = 1,
            .paperId = {},
            .searchText = {},
            .highlightText = {}};
}
} // namespace

class SessionManagerTest : public testing::Test
{
protected:
    void SetUp() override { testing::internal::CaptureStdout(); }
    void TearDown() override
    {
        if (!m_hasTakenLog)
            testing::internal::GetCapturedStdout();
    }

    std::string takeLog()
    {
        m_hasTakenLog = true;
        return testing::internal::GetCapturedStdout();
    }
    void write(const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(m_path).path());
        m_folder.write(QStringLiteral("Quirevault/session.json"), content);
    }
    QByteArray content() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QList<PDFOpenRequest> reopened() { return SessionManager(m_path, m_clock).activeSessions; }

    TemporaryFolder m_folder;
    QString m_path = m_folder.path(QStringLiteral("Quirevault/session.json"));
    FakeClock m_clock;
    const PDFOpenRequest m_first = requestFor(QStringLiteral("/a.pdf"));
    const PDFOpenRequest m_second = requestFor(QStringLiteral("/b.pdf"));
    const PDFOpenRequest m_third = requestFor(QStringLiteral("/c.pdf"));

private:
    bool m_hasTakenLog = false;
};

TEST_F(SessionManagerTest, WritesOnceTwoSecondsAfterTheLastChange)
{
    SessionManager session(m_path, m_clock);
    session.registerRequest(m_first);
    m_clock.advance(1s);
    session.registerRequest(m_second);
    m_clock.advance(1s);
    session.registerRequest(m_third);
    m_clock.advance(1999ms);
    EXPECT_FALSE(QFile::exists(m_path));
    m_clock.advance(1ms);
    EXPECT_EQ(reopened(), (QList{m_first, m_second, m_third}));
    EXPECT_FALSE(m_clock.hasPendingCalls());
}

TEST_F(SessionManagerTest, KeepsOneEntryForAnIdThatIsRegisteredTwice)
{
    SessionManager session(m_path, m_clock);
    session.registerRequest(m_first);
    PDFOpenRequest again = m_first;
    again.page = 9;
    session.registerRequest(again);
    EXPECT_EQ(session.activeSessions.value(), QList{m_first});
}

TEST_F(SessionManagerTest, ReplacesTheRequestOfTheSameIdInItsPlace)
{
    SessionManager session(m_path, m_clock);
    session.registerRequest(m_first);
    session.registerRequest(m_second);
    PDFOpenRequest turned = m_first;
    turned.page = 9;
    session.update(turned);
    session.update(m_third);
    EXPECT_EQ(session.activeSessions.value(), (QList{turned, m_second, m_third}));
}

TEST_F(SessionManagerTest, WritesAnEmptyListAfterTheLastWindowCloses)
{
    SessionManager session(m_path, m_clock);
    session.registerRequest(m_first);
    session.unregister(m_first.id);
    m_clock.advance(2s);
    EXPECT_EQ(content(), "[]");
}

TEST_F(SessionManagerTest, WritesAtOnceWhenAsked)
{
    SessionManager session(m_path, m_clock);
    session.registerRequest(m_first);
    session.saveNow();
    EXPECT_EQ(reopened(), QList{m_first});
    EXPECT_FALSE(m_clock.hasPendingCalls()) << "what waited is written";
}

TEST_F(SessionManagerTest, WritesOneLineOfJson)
{
    SessionManager session(m_path, m_clock);
    session.registerRequest(m_first);
    session.saveNow();
    EXPECT_FALSE(content().contains('\n'));
    const QJsonArray array = QJsonDocument::fromJson(content()).array();
    ASSERT_EQ(array.size(), 1);
    EXPECT_EQ(array[0].toObject(), toJson(m_first));
}

TEST_F(SessionManagerTest, MakesTheFolder)
{
    const SessionManager session(m_path, m_clock);
    EXPECT_TRUE(QFileInfo(QFileInfo(m_path).path()).isDir());
}

TEST_F(SessionManagerTest, WithoutAFileRestoresNothingAndSaysSo)
{
    EXPECT_TRUE(reopened().isEmpty());
    EXPECT_TRUE(takeLog().starts_with("Failed to load session: "));
}

TEST_F(SessionManagerTest, FromAFileThatIsNoListRestoresNothingAndSaysSo)
{
    takeLog();
    for (const QByteArray broken : {"{}", "[", "", "\xff\xfe", "[1, 2]", "[{\"id\": 3}]"}) {
        write(broken);
        testing::internal::CaptureStdout();
        EXPECT_TRUE(reopened().isEmpty()) << broken.toStdString();
        EXPECT_TRUE(testing::internal::GetCapturedStdout().starts_with("Failed to load session: "))
            << broken.toStdString();
    }
}

TEST_F(SessionManagerTest, SkipsARequestThatItCannotReadAndRestoresTheOthers)
{
    const QJsonArray array{toJson(m_first), QJsonObject{{QStringLiteral("id"), 1}}, toJson(m_second)};
    write(QJsonDocument(array).toJson());
    EXPECT_EQ(reopened(), (QList{m_first, m_second}));
    EXPECT_TRUE(takeLog().starts_with("Failed to load session: "));
}

TEST_F(SessionManagerTest, RestoresAnIdThatTheFileListsTwiceOnce)
{
    write(QJsonDocument(QJsonArray{toJson(m_first), toJson(m_first)}).toJson());
    EXPECT_EQ(reopened(), QList{m_first});
}

TEST_F(SessionManagerTest, SaysWhyItCannotWrite)
{
    SessionManager session(m_path, m_clock);
    QDir().mkpath(m_path); // a folder where the file should be
    session.saveNow();
    EXPECT_NE(takeLog().find("Failed to save session: " + m_path.toStdString()), std::string::npos);
}

TEST_F(SessionManagerTest, AnnouncesOnlyChanges)
{
    SessionManager session(m_path, m_clock);
    int changes = 0;
    const auto observer = session.activeSessions.addNotifier([&] { ++changes; });
    session.registerRequest(m_first);
    session.registerRequest(m_first);
    session.update(m_first);
    session.unregister(m_second.id);
    EXPECT_EQ(changes, 1);
}

TEST_F(SessionManagerTest, SavesNothingMoreWhenItIsGone)
{
    {
        SessionManager session(m_path, m_clock);
        session.registerRequest(m_first);
    }
    m_clock.advance(5s);
    EXPECT_FALSE(QFile::exists(m_path));
}
