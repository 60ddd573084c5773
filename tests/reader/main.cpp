// The entry point of the reader tests: an application on the offscreen platform; a test fails when Qt warns.
#include <QApplication>
#include <gtest/gtest.h>

namespace
{
void failOnWarning(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    // What the offscreen platform says of windows, menus and tool tips, whoever shows them.
    if (message.startsWith(u"This plugin does not support"))
        return;
    ADD_FAILURE() << "Qt said: " << message.toStdString();
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ACCESSIBILITY", "1");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    // Only now: what Qt has to say about the machine is not the tests' concern.
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
