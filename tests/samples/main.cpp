// Writes a few papers of known words and colours into a folder: what a package is tried on after it was
// installed.
#include "support/PdfBuilder.h"

#include <QDir>
#include <QFile>
#include <cstdio>

namespace
{
/// Nearly a whole page in a pink that no widget has.
constexpr char kPink[] = "1 0 0.5 rg 0 0 612 640 re f 0 g";

bool write(const QDir &folder, const char *name, const PdfBuilder &paper)
{
    const QByteArray bytes = paper.build();
    QFile file(folder.filePath(QLatin1String(name)));
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush())
        return true;
    std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
    return false;
}

PdfBuilder pendulums()
{
    PdfBuilder paper;
    paper.title("On Pendulums in Winter").author("Ada Example");
    paper.page(PdfPage{.lines = {QStringLiteral("On Pendulums in Winter")}, .drawing = kPink});
    paper.page(
        {QStringLiteral("A slow pendulum forgets its own weight"), QStringLiteral("when the oil is cold.")});
    return paper;
}

PdfBuilder letters()
{
    PdfBuilder paper;
    paper.title("Letters on Ropes").author("Ben Sample");
    paper.page({QStringLiteral("Ropes of hemp carry less than ropes of flax.")});
    return paper;
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: quirevault-sample-papers FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QFile::decodeName(argv[1]));
    // A name that a careless shell would split, or take for an option.
    return write(folder, "-pendulums & co.pdf", pendulums()) && write(folder, "letters.pdf", letters()) ? 0
                                                                                                        : 1;
}
