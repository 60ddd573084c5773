// The entry point of the tests of app/, whose view model needs an event loop and whose actions an application
// of the desktop; a test fails when Qt warns.
#include "support/FailOnWarning.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    // Only now: what Qt has to say about the machine is not the tests' concern.
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
