#include "cli/DesktopProgram.h"

#include "app/OpenRequestArguments.h"
#include "platform/Paths.h"

#include <QFile>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <vector>

ExitStatus becomeDesktopProgram(const QList<PDFOpenRequest> &requests)
{
    const QByteArray program = QFile::encodeName(companionProgram(QStringLiteral("quirevault-desktop")));
    QByteArrayList words = toArguments(requests);
    words.prepend(program);
    std::vector<char *> argv;
    for (QByteArray &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    execv(program.constData(), argv.data());
    const int reason = errno;
    std::fprintf(stderr,
                 "quirevault: the window cannot be opened: %s: %s\n"
                 "Install it there, or give a command: see quirevault --help\n",
                 program.constData(), std::strerror(reason));
    return ExitStatus::Failed;
}
