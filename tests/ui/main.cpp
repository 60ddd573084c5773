// The entry point of the window tests: an application on the offscreen platform; a test fails when Qt warns.
#include "support/FailOnWarning.h"

#include <QApplication>
#include <gtest/gtest.h>

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
