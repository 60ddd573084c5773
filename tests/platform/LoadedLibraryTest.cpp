#include "platform/LoadedLibrary.h"

#include <gtest/gtest.h>

namespace
{
using Cosine = double (*)(double);
} // namespace

TEST(LoadedLibrary, FindsTheFunctionsOfTheFirstLibraryThatIsThere)
{
    const LoadedLibrary library({"libof-no-machine.so.9", "libm.so.6"});
    ASSERT_TRUE(library);
    Cosine cosine = nullptr;
    ASSERT_TRUE(library.find("cos", cosine));
    EXPECT_EQ(cosine(0), 1);
}

TEST(LoadedLibrary, SaysThatAFunctionIsMissing)
{
    const LoadedLibrary library({"libm.so.6"});
    Cosine function = nullptr;
    EXPECT_FALSE(library.find("no_such_function", function));
    EXPECT_FALSE(function);
}

TEST(LoadedLibrary, SaysThatALibraryIsMissing)
{
    const LoadedLibrary library({"libof-no-machine.so.9"});
    EXPECT_FALSE(library);
    Cosine cosine = nullptr;
    EXPECT_FALSE(library.find("cos", cosine));
}

TEST(LoadedLibraryDeathTest, EndsTheProgramWithTheNameOfWhatItCannotDoWithout)
{
    EXPECT_EXIT(endWithoutLibrary("libof-no-machine.so.9"), testing::ExitedWithCode(1),
                "libof-no-machine.so.9 is missing");
}
