#include "cli/PaperPrinting.h"

#include "base/TextClasses.h"
#include "cli/RecordLists.h"
#include "search/SnippetMarkup.h"

namespace
{

/// Enough of an id to name a paper or a bookmark in the next command.
constexpr int kShownIdLength = 8;

void printField(const QString &name, const QString &value, const Output &output)
{
    output.line(QStringLiteral("%1 %2").arg(output.dimmed(name.leftJustified(9)), onOneLine(value)));
}

} // namespace

void printPaperHeading(const QString &id, const QString &title, const QString &authors,
                       std::optional<qint64> year, const Output &output)
{
    output.line(output.dimmed(id.left(kShownIdLength)) + u"  " + onOneLine(title));
    QStringList details;
    if (!authors.isEmpty())
        details.append(onOneLine(authors));
    if (year)
        details.append(QString::number(*year));
    if (!details.isEmpty())
        output.line(QString(kShownIdLength + 2, u' ') + details.join(QStringLiteral(" · ")));
}

void printPaper(const Paper &paper, const Output &output)
{
    printPaperHeading(paper.id, paper.title, paper.authors, paper.year, output);
}

void printPassage(const Passage &passage, const QString &query, const Output &output)
{
    QString text;
    for (const SnippetSpan &span : markUpSnippet(passage.text, query)) {
        const QString shown = onOneLine(span.text);
        text += span.isMatch ? output.emphasised(shown) : shown;
    }
    const QString page = QStringLiteral("p. %1").arg(passage.page).leftJustified(8);
    output.line(u"    " + output.dimmed(page) + u' ' + text);
}

void printBookmark(const Bookmark &bookmark, const Output &output)
{
    QString heading = QStringLiteral("%1  p. %2").arg(bookmark.id.left(kShownIdLength)).arg(bookmark.page);
    if (!bookmark.label.isEmpty())
        heading += u"  " + onOneLine(bookmark.label);
    output.line(u"    " + output.dimmed(heading));
    output.line(u"        " + onOneLine(bookmark.text));
}

void printPapers(const QList<Paper> &papers, const Output &output)
{
    if (output.isJson())
        return output.json(asJson(papers));
    for (const Paper &paper : papers)
        printPaper(paper, output);
    if (papers.isEmpty())
        output.line(QStringLiteral("No papers."));
}

void printOnePaper(const Paper &paper, const Output &output)
{
    if (output.isJson())
        return output.json(QJsonDocument(toJson(paper)));
    printField(QStringLiteral("id"), paper.id, output);
    printField(QStringLiteral("title"), paper.title, output);
    printField(QStringLiteral("authors"), paper.authors, output);
    printField(QStringLiteral("year"), paper.year ? QString::number(*paper.year) : QString(), output);
    printField(QStringLiteral("pages"), QString::number(paper.pageCount), output);
    printField(QStringLiteral("tags"), paper.tags.join(QStringLiteral(", ")), output);
    printField(QStringLiteral("file"), paper.filepath, output);
    printField(QStringLiteral("cover"), paper.coverPath, output);
}
