// quirevault-bench-library FOLDER PAGES: makes or finds a generated library and prints its XDG_DATA_HOME.
#include "LibraryGenerator.h"

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const auto home = generatedLibrary(QString::fromLocal8Bit(argv[1]), QByteArray(argv[2]).toLongLong());
    if (!home) {
        std::fprintf(stderr, "%s\n", qPrintable(home.error().message()));
        return 1;
    }
    std::printf("%s\n", qPrintable(*home));
}
