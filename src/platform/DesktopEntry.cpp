#include "platform/DesktopEntry.h"

#include "platform/KeyFile.h"

#include <QFileInfo>
#include <QList>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

namespace
{
/// A word of a command line.
struct Word {
    QString text;
    bool isQuoted = false; ///< at least a part of it
};

/// Splits at spaces outside of quotes; nothing where a quote is not closed. Single quotes are not in the
/// format, yet all desktops read them as a shell does.
std::optional<QList<Word>> split(const QString &exec)
{
    QList<Word> words;
    QChar quote;
    bool isInWord = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar c = exec[i];
        if (quote.isNull() && c.isSpace()) {
            isInWord = false;
            continue;
        }
        if (!isInWord)
            words.append(Word());
        isInWord = true;
        const bool isQuote = c == u'"' || c == u'\'';
        if (isQuote && (quote.isNull() || quote == c)) {
            quote = quote.isNull() ? c : QChar();
            words.last().isQuoted = true;
        } else {
            const bool isEscape = c == u'\\' && quote != u'\'' && i + 1 < exec.size();
            words.last().text += isEscape ? exec[++i] : c;
        }
    }
    return quote.isNull() ? std::optional(words) : std::nullopt;
}

bool namesFile(const Word &word)
{
    QString codes = word.text;
    codes.remove(QStringLiteral("%%"));
    return codes.contains(u"%f") || codes.contains(u"%F") || codes.contains(u"%u") || codes.contains(u"%U");
}

bool isShell(const QString &program)
{
    static const QStringList shells{QStringLiteral("sh"),   QStringLiteral("bash"), QStringLiteral("dash"),
                                    QStringLiteral("zsh"),  QStringLiteral("fish"), QStringLiteral("ksh"),
                                    QStringLiteral("mksh"), QStringLiteral("csh"),  QStringLiteral("tcsh")};
    return shells.contains(QFileInfo(program).fileName());
}

/// Whether the path would stand where a shell, or whatever reads a quoted word, looks for commands.
bool putsFileIntoScript(const QList<Word> &words)
{
    if (std::any_of(words.begin(), words.end(), [](const Word &w) { return w.isQuoted && namesFile(w); }))
        return true;
    bool isScript = false;
    for (const Word &word : words) {
        if (isScript && namesFile(word))
            return true;
        isScript = (isScript && word.text.startsWith(u'-')) ||
                   (word.text.startsWith(u'-') && word.text.endsWith(u'c') &&
                    std::any_of(words.begin(), words.end(), [](const Word &w) { return isShell(w.text); }));
    }
    return namesFile(words.first());
}

/// A word with its field codes replaced; a code of old or unknown meaning is left out.
QString expanded(const Word &word, const DesktopEntry &entry, const QString &filePath)
{
    QString text;
    for (qsizetype i = 0; i < word.text.size(); ++i) {
        if (word.text[i] != u'%' || i + 1 == word.text.size()) {
            text += word.text[i];
            continue;
        }
        switch (word.text[++i].unicode()) {
        case u'%':
            text += u'%';
            break;
        case u'f':
        case u'F':
            text += filePath;
            break;
        case u'u':
        case u'U':
            text += QUrl::fromLocalFile(filePath).toString(QUrl::FullyEncoded);
            break;
        case u'c':
            text += entry.name;
            break;
        case u'k':
            text += entry.path;
            break;
        default:
            break;
        }
    }
    return text;
}
} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString &path, const QString &id)
{
    const auto group = QStringLiteral("Desktop Entry");
    const KeyFile file = KeyFile::read(path);
    if (file.text(group, QStringLiteral("Type")) != u"Application")
        return std::nullopt;
    return DesktopEntry{.id = id,
                        .path = path,
                        .name = file.text(group, QStringLiteral("Name")),
                        .icon = file.text(group, QStringLiteral("Icon")),
                        .exec = file.text(group, QStringLiteral("Exec")),
                        .tryExec = file.text(group, QStringLiteral("TryExec")),
                        .workingFolder = file.text(group, QStringLiteral("Path")),
                        .mimeTypes = file.list(group, QStringLiteral("MimeType")),
                        .isHidden = file.flag(group, QStringLiteral("Hidden")),
                        .needsTerminal = file.flag(group, QStringLiteral("Terminal")),
                        .isDBusActivatable = file.flag(group, QStringLiteral("DBusActivatable"))};
}

bool DesktopEntry::isInstalled() const
{
    return tryExec.isEmpty() || !QStandardPaths::findExecutable(tryExec).isEmpty();
}

QStringList DesktopEntry::commandWords() const
{
    QStringList texts;
    for (const Word &word : split(exec).value_or(QList<Word>()))
        texts.append(word.text);
    return texts;
}

std::optional<ProgramCall> DesktopEntry::callFor(const QString &filePath) const
{
    const std::optional<QList<Word>> words = split(exec);
    if (!words || words->isEmpty() || putsFileIntoScript(*words))
        return std::nullopt;
    ProgramCall call{.program = QStandardPaths::findExecutable(expanded(words->first(), *this, filePath)),
                     .arguments = {},
                     .workingFolder = workingFolder};
    for (const Word &word : words->mid(1)) {
        if (word.text == u"%i" && !icon.isEmpty())
            call.arguments << QStringLiteral("--icon") << icon;
        else if (const QString text = expanded(word, *this, filePath); !text.isEmpty() || word.isQuoted)
            call.arguments.append(text);
    }
    // It has the file's type and no place for a file: as desktops do, at the end.
    if (std::none_of(words->begin(), words->end(), namesFile))
        call.arguments.append(filePath);
    return call.program.isEmpty() ? std::nullopt : std::optional(call);
}
