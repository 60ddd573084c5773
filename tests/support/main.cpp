// The entry point of every test program: runs GoogleTest, and fails a test that makes Qt warn.
#include "support/FailOnWarning.h"

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    qInstallMessageHandler(failOnWarning);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
