#include "cli/BookmarkMarkdown.h"

#include "base/TextClasses.h"

#include <QRegularExpression>

namespace
{

/// `text` as one line of plain words.
QString escaped(const QString &text)
{
    static const QRegularExpression anywhere(QStringLiteral(R"(([\\`*_\[\]<>&|~$#]))"));
    // What makes a line a list, a rule or the rule under a heading, and nothing elsewhere in it.
    static const QRegularExpression inFront(QStringLiteral(R"(^(\d{0,9})([-+=.)]))"));
    return onOneLine(text)
        .simplified()
        .replace(anywhere, QStringLiteral(R"(\\1)"))
        .replace(inFront, QStringLiteral(R"(\1\\2)"));
}

QString quoted(const QString &line)
{
    return line.isEmpty() ? QStringLiteral(">") : QString(u"> " + line);
}

QStringList quoteOf(const Bookmark &bookmark)
{
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|[\n\r\v\f\\x{85}\\x{2028}\\x{2029}]"));
    QStringList lines;
    for (const QString &line : bookmark.text.trimmed().split(lineBreak))
        lines.append(quoted(escaped(line)));
    QString source = QStringLiteral("page %1").arg(bookmark.page);
    if (const QString label = escaped(bookmark.label); !label.isEmpty())
        source = QStringLiteral("**%1**, ").arg(label) + source;
    return lines << quoted({}) << quoted(u"— " + source);
}

} // namespace

QString bookmarksAsMarkdown(const Paper &paper, const QList<Bookmark> &bookmarks)
{
    QStringList blocks{u"# " + escaped(paper.title)};
    for (const Bookmark &bookmark : bookmarks)
        blocks.append(quoteOf(bookmark).join(u'\n'));
    if (bookmarks.isEmpty())
        blocks.append(QStringLiteral("No bookmarks."));
    return blocks.join(QStringLiteral("\n\n"));
}
