// The entry point of the tests of app/, whose view model needs an event loop; a test fails when Qt warns.
#include <QCoreApplication>
#include <gtest/gtest.h>

namespace
{
void failOnWarning(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    ADD_FAILURE() << "Qt said: " << message.toStdString();
}
} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(failOnWarning);
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
