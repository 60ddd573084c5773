#include "cli/DesktopProgram.h"

#include "platform/Paths.h"

#include <QFile>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

ExitStatus becomeDesktopProgram()
{
    const QByteArray program = QFile::encodeName(companionProgram(QStringLiteral("quirevault-desktop")));
    execl(program.constData(), program.constData(), nullptr);
    const int reason = errno;
    std::fprintf(stderr,
                 "quirevault: the library window cannot be opened: %s: %s\n"
                 "Install it there, or give a command: see quirevault --help\n",
                 program.constData(), std::strerror(reason));
    return ExitStatus::Failed;
}
