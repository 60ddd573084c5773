// The entry point of every test program: runs GoogleTest, and fails a test that makes Qt warn.
#include <QString>
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
    return RUN_ALL_TESTS();
}
