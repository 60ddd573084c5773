#include "searchprovider/ShownPaper.h"

#include "base/TextClasses.h"

namespace
{

QString shown(const QString &text)
{
    return firstCharacters(onOneLine(text), kLongestShown);
}

} // namespace

QString shownTitle(const FoundPaper &paper)
{
    return shown(paper.title);
}

QString shownDetails(const FoundPaper &paper)
{
    QStringList details;
    if (!paper.authorNames.isEmpty())
        details.append(shown(paper.authorNames.join(u", ")));
    if (!paper.year.isEmpty())
        details.append(paper.year);
    return details.join(u" · ");
}
