#include "platform/Preferences.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QFileInfo>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace
{
class PreferencesTest : public testing::Test
{
protected:
    void SetUp() override { qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path())); }
    void TearDown() override { qunsetenv("XDG_CONFIG_HOME"); }

    TemporaryFolder m_folder;
    Preferences m_preferences;
};

TEST_F(PreferencesTest, KnowNothingAtFirst)
{
    EXPECT_FALSE(m_preferences.text(QStringLiteral("lastImportDate")));
}

TEST_F(PreferencesTest, KeepTexts)
{
    for (const QString &value : {QStringLiteral("2025-03-07T14:05:09Z"),
                                 QStringLiteral("a, b; \"c\" = é\n@x"), QStringLiteral("")}) {
        m_preferences.setText(QStringLiteral("key"), value);
        EXPECT_EQ(Preferences().text(QStringLiteral("key")), value);
    }
}

TEST_F(PreferencesTest, LieInTheUsersConfiguration)
{
    m_preferences.setText(QStringLiteral("key"), QStringLiteral("value"));
    EXPECT_TRUE(QFileInfo::exists(m_folder.path(QStringLiteral("Quirevault/Quirevault.ini"))));
}

TEST_F(PreferencesTest, AreSharedByThreads)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(
            [this, i] { m_preferences.setText(QStringLiteral("key%1").arg(i), QString::number(i)); });
    for (std::thread &thread : threads)
        thread.join();
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(m_preferences.text(QStringLiteral("key%1").arg(i)), QString::number(i));
}

TEST_F(PreferencesTest, SayWhenTheyCannotBeWritten)
{
    m_folder.write(QStringLiteral("Quirevault"), "a file where the folder should be");
    testing::internal::CaptureStdout();
    m_preferences.setText(QStringLiteral("key"), QStringLiteral("value"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Preferences: Error writing " + m_folder.path().toStdString() + "/Quirevault/Quirevault.ini\n");
}
} // namespace
