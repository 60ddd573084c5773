#include "indexing/TopicTagger.h"

#include "base/TextClasses.h"
#include "indexing/BookService.h"
#include "indexing/MetadataExtraction.h"
#include "indexing/PageReader.h"
#include "indexing/TopicTable.h"
#include "indexing/TopicTags.h"
#include "platform/InputFile.h"
#include "store/ReservedTags.h"

#include <algorithm>

namespace
{
/// The texts of the document's first pages that have one, joined with single blanks.
Result<QString> textOfFirstPages(PDFDocument &document, std::stop_token stop)
{
    PageReader pages(document, std::move(stop));
    const qint64 count = std::min(document.pageCount(), TopicTagger::kPages);
    QByteArray joined;
    for (qint64 index = 0; index < count && !pages.isOver(); ++index) {
        const auto text = pages.read(index);
        if (!text)
            return text.error();
        if (!*text || (*text)->isEmpty())
            continue;
        if (!joined.isEmpty())
            joined += ' ';
        joined += **text;
    }
    return QString::fromUtf8(joined);
}

/// The user's own tags and the reserved ones.
QStringList tagsToKeep(const QStringList &tags)
{
    QStringList kept;
    std::copy_if(tags.begin(), tags.end(), std::back_inserter(kept),
                 [](const QString &tag) { return !isTopicName(tag) && tag != QLatin1String(kUntaggedTag); });
    return kept;
}
} // namespace

TopicTagger::TopicTagger(BookService &books, OpenPDF openPDF)
    : m_books(books)
    , m_openPDF(std::move(openPDF))
{
}

QStringList TopicTagger::retagPaper(const Paper &paper, std::stop_token stop) const
{
    const Result<QString> text = firstPages(paper.filepath, stop);
    if (!text)
        return paper.tags;
    const QStringList subjects = subjectsFor(firstCharacters(*text, kISBNCharacters), stop);
    if (stop.stop_requested())
        return paper.tags;
    QStringList tags = tagsToKeep(paper.tags) + topicTags(paper.title, *text, subjects);
    if (std::all_of(tags.begin(), tags.end(), isReservedTag))
        tags.append(QLatin1String(kUntaggedTag));
    return tags;
}

Result<QString> TopicTagger::firstPages(const QString &path, std::stop_token stop) const
{
    const Result<InputFile> file = InputFile::open(path);
    if (!file)
        return file.error();
    const Result<std::unique_ptr<PDFDocument>> document = m_openPDF(*file, stop);
    if (!document)
        return document.error();
    return textOfFirstPages(**document, std::move(stop));
}

QStringList TopicTagger::subjectsFor(const QString &text, std::stop_token stop) const
{
    const std::optional<QString> isbn = findISBN(text);
    const std::optional<BookRecord> book = isbn ? m_books.lookupBook(*isbn, std::move(stop)) : std::nullopt;
    return book ? book->subjects : QStringList();
}
