#include "base/Log.h"

#include "base/TextClasses.h"

#include <atomic>
#include <cstdio>
#include <unistd.h>

namespace
{
std::atomic<LogTarget> g_target = LogTarget::StandardOutput;
} // namespace

void setLogTarget(LogTarget target)
{
    g_target = target;
}

void logLine(const QString &line)
{
    QByteArray bytes = (onOneLine(line) + u'\n').toUtf8();
    std::FILE *stream = g_target == LogTarget::StandardOutput ? stdout : stderr;
    // A progress line may stand on the terminal without an end.
    if (g_target == LogTarget::StandardError && isatty(STDERR_FILENO))
        bytes.prepend("\r\033[K");
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}
