#include "cli/Output.h"

#include "base/TextClasses.h"

#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace
{

void write(std::FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

int columnsOf(std::FILE *stream)
{
    winsize size{};
    constexpr int kUsualColumns = 80;
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

} // namespace

Output::Output(Form form)
    : m_form(form)
    , m_answersToTerminal(form == Form::Text && isatty(STDOUT_FILENO) && qgetenv("TERM") != "dumb" &&
                          qgetenv("NO_COLOR").isEmpty())
    , m_reportsToTerminal(isatty(STDERR_FILENO) && qgetenv("TERM") != "dumb")
{
}

void Output::line(const QString &text) const
{
    write(stdout, (text + u'\n').toUtf8());
}

void Output::json(const QJsonDocument &document) const
{
    write(stdout, document.toJson());
}

void Output::failure(const QString &text) const
{
    progress({});
    write(stderr, (u"quirevault: " + onOneLine(text) + u'\n').toUtf8());
}

void Output::progress(const QString &text) const
{
    if (!m_reportsToTerminal)
        return;
    write(stderr, "\r\033[K" + onOneLine(text).left(columnsOf(stderr) - 1).toUtf8());
}

QString Output::emphasised(const QString &text) const
{
    return m_answersToTerminal ? QStringLiteral("\033[1;33m%1\033[0m").arg(text) : text;
}

QString Output::dimmed(const QString &text) const
{
    return m_answersToTerminal ? QStringLiteral("\033[2m%1\033[0m").arg(text) : text;
}
