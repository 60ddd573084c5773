// quirevault-bench-hash FILE: hashes the file, which should be in the page cache, and prints bytes a second.
#include "Figures.h"
#include "platform/InputFile.h"
#include "platform/Sha256.h"

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    const auto file = InputFile::open(QString::fromLocal8Bit(argv[1]));
    if (!file) {
        std::fprintf(stderr, "%s\n", qPrintable(file.error().message()));
        return 1;
    }
    bool hashed = false;
    const Milliseconds time = timeOf([&] { hashed = sha256HexOfFile(file->descriptor()).has_value(); });
    if (!hashed)
        return 1;
    std::printf("%.0f\n", static_cast<double>(file->sizeBytes()) / (time.count() / 1000));
}
