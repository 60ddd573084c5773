#include "cli/Output.h"

#include "base/TextClasses.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

namespace
{

bool write(std::FILE *stream, const QByteArray &bytes)
{
    const auto count = static_cast<size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, count, stream) == count && std::fflush(stream) == 0;
}

/// Columns that a character takes on a terminal, near enough: wide ones are those of East Asia and emoji.
int columnsOf(char32_t character)
{
    return character >= 0x1100 && QChar::category(character) != QChar::Mark_NonSpacing ? 2 : 1;
}

/// The beginning of `text` that fits.
QString fitted(const QString &text, int columns)
{
    QString fitting;
    for (const char32_t character : text.toUcs4()) {
        columns -= columnsOf(character);
        if (columns < 0)
            break;
        fitting += QString::fromUcs4(&character, 1);
    }
    return fitting;
}

int terminalColumns(std::FILE *stream)
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
    answer((text + u'\n').toUtf8());
}

void Output::json(const QJsonDocument &document) const
{
    answer(document.toJson());
}

void Output::answer(const QByteArray &bytes) const
{
    if (m_isComplete && !write(stdout, bytes)) {
        m_isComplete = false;
        failure(QStringLiteral("The answer cannot be written: %1")
                    .arg(QString::fromLocal8Bit(std::strerror(errno))));
    }
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
    write(stderr, "\r\033[K" + fitted(onOneLine(text), terminalColumns(stderr) - 1).toUtf8());
}

QString Output::emphasised(const QString &text) const
{
    return m_answersToTerminal ? QStringLiteral("\033[1;33m%1\033[0m").arg(text) : text;
}

QString Output::dimmed(const QString &text) const
{
    return m_answersToTerminal ? QStringLiteral("\033[2m%1\033[0m").arg(text) : text;
}
