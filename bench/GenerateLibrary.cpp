// quirevault-bench-library FOLDER PAGES: makes or finds a generated library of long papers with that many
// pages together, and prints its XDG_DATA_HOME.
// quirevault-bench-library FOLDER PAPERS --with-covers: the same for papers of one page each, with covers.
#include "LibraryGenerator.h"

#include <cstdio>
#include <cstring>

namespace
{
LibraryShape shapeOf(qint64 count, bool hasCovers)
{
    if (hasCovers)
        return {.papers = count, .pagesPerPaper = 1, .hasCovers = true};
    LibraryShape shape;
    shape.papers = count / shape.pagesPerPaper;
    return shape;
}
} // namespace

int main(int argc, char **argv)
{
    const bool hasCovers = argc == 4 && std::strcmp(argv[3], "--with-covers") == 0;
    if (argc != 3 && !hasCovers)
        return 2;
    const LibraryShape shape = shapeOf(QByteArray(argv[2]).toLongLong(), hasCovers);
    const auto home = generatedLibrary(QString::fromLocal8Bit(argv[1]), shape);
    if (!home) {
        std::fprintf(stderr, "%s\n", qPrintable(home.error().message()));
        return 1;
    }
    std::printf("%s\n", qPrintable(*home));
}
