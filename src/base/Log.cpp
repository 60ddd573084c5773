#include "base/Log.h"

#include <atomic>
#include <cstdio>

namespace
{
std::atomic<LogTarget> g_target = LogTarget::StandardOutput;

QByteArray asOneLine(QString line)
{
    for (QChar &c : line) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return (line + u'\n').toUtf8();
}
} // namespace

void setLogTarget(LogTarget target)
{
    g_target = target;
}

void logLine(const QString &line)
{
    const QByteArray bytes = asOneLine(line);
    std::FILE *stream = g_target == LogTarget::StandardOutput ? stdout : stderr;
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}
