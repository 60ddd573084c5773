#include "reader/PasswordPage.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace
{
class PasswordPageTest : public ::testing::Test
{
protected:
    void type(const QString &password)
    {
        QTest::keyClicks(&field(), password);
        QTest::keyClick(&field(), Qt::Key_Return);
    }
    QLineEdit &field() { return *page.findChild<QLineEdit *>(); }

    PasswordPage page;
    QSignalSpy entered{&page, &PasswordPage::entered};
};
} // namespace

TEST_F(PasswordPageTest, TellsThePasswordOnceHoweverOftenReturnIsPressed)
{
    type(QStringLiteral("sesame"));
    QTest::keyClick(&field(), Qt::Key_Return);
    QTest::keyClick(&field(), Qt::Key_Return);
    ASSERT_EQ(entered.size(), 1);
    EXPECT_EQ(entered.first().first().toString(), u"sesame");
}

TEST_F(PasswordPageTest, TellsNoEmptyPassword)
{
    type(QString());
    EXPECT_TRUE(entered.isEmpty());
}

TEST_F(PasswordPageTest, KeepsNoPasswordThatWasTold)
{
    type(QStringLiteral("sesame"));
    EXPECT_TRUE(field().text().isEmpty());
}
