#include "ui/CardWords.h"

#include "store/ReservedTags.h"
#include "ui/PaperListModel.h"

#include <QStringList>
#include <algorithm>

namespace
{
/// Of the text before a passage's first match: about a line and a half of a card. Chosen, so that the match
/// stands within the lines that are shown.
constexpr qsizetype kCharactersBeforeMatch = 36;

/// The end of `text`, at most `kCharactersBeforeMatch` long, that begins with a whole word.
QString lastWords(const QString &text)
{
    const qsizetype from = text.size() - kCharactersBeforeMatch;
    const qsizetype blank = text.indexOf(u' ', from - 1);
    return blank < 0 || blank == text.size() - 1 ? text.right(kCharactersBeforeMatch) : text.mid(blank + 1);
}
} // namespace

bool isCurrentlyReading(const Paper &paper)
{
    return paper.tags.contains(QLatin1String(kCurrentlyReadingTag));
}

QList<SnippetSpan> passageSpans(const QString &snippet, const QString &query)
{
    QList<SnippetSpan> spans = markUpSnippet(snippet.simplified(), query);
    const auto match =
        std::find_if(spans.begin(), spans.end(), [](const auto &span) { return span.isMatch; });
    if (match == spans.begin() || match == spans.end())
        return spans;
    const auto before = std::prev(match);
    if (before->isCut || before->text.size() <= kCharactersBeforeMatch)
        return spans;
    before->text = lastWords(before->text);
    spans.erase(spans.begin(), before);
    spans.prepend({.text = QStringLiteral("…"), .isCut = true});
    return spans;
}

QString passagePlace(const PaperCard &card)
{
    if (!card.passage)
        return {};
    const QString page = QStringLiteral("Page %1").arg(card.passagePage);
    if (card.morePassages == 0)
        return page;
    if (card.morePassages == 1)
        return page + u" · 1 more passage";
    return page + QStringLiteral(" · %1 more passages").arg(card.morePassages);
}

QString spokenCard(const PaperCard &card)
{
    QStringList parts{card.paper.title, card.paper.authors};
    if (card.paper.year)
        parts.append(QString::number(*card.paper.year));
    if (card.passage) {
        QString passage;
        for (const SnippetSpan &span : markUpSnippet(card.passage->simplified()))
            passage += span.text;
        parts << passage << passagePlace(card);
    }
    if (isCurrentlyReading(card.paper))
        parts.append(QStringLiteral("currently reading"));
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString spokenFileMissing()
{
    return QStringLiteral("file missing");
}
