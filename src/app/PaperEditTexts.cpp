#include "app/PaperEditTexts.h"

#include "base/DecimalInteger.h"

namespace
{
constexpr int kNotAYear = 1;

Error notAYear()
{
    return {QStringLiteral("PaperEditTexts"),
            kNotAYear,
            QStringLiteral("The year must be a whole number, such as 1998."),
            {}};
}
} // namespace

PaperEditTexts PaperEditTexts::of(const Paper &paper)
{
    return {paper.title, paper.authors, paper.year ? QString::number(*paper.year) : QString()};
}

Result<PaperEdit> paperEdit(const PaperEditTexts &before, const PaperEditTexts &after)
{
    PaperEdit edit;
    const QString title = after.title.trimmed();
    if (after.title != before.title && !title.isEmpty())
        edit.title = title;
    if (after.authors != before.authors)
        edit.authors = after.authors.trimmed();
    const QString yearText = after.year.trimmed();
    if (yearText.isEmpty() || yearText == before.year)
        return edit;
    edit.year = decimalInteger(yearText);
    if (!edit.year)
        return notAYear();
    return edit;
}

bool carries(const Paper &paper, const PaperEdit &edit)
{
    return (!edit.title || *edit.title == paper.title) && (!edit.authors || *edit.authors == paper.authors) &&
           (!edit.year || edit.year == paper.year);
}
