#include "indexing/MetadataExtraction.h"

#include <QRegularExpression>
#include <algorithm>

std::optional<QString> findISBN(const QString &text)
{
    static const QRegularExpression expression(
        QStringLiteral(R"(ISBN(?:-1[03])?:?\s*(?:97[89][-\s]*)?(?:\d[-\s]*){9}[0-9xX])"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = expression.match(text);
    if (!match.hasMatch())
        return {};
    QString isbn;
    for (const QChar c : match.capturedView()) {
        if (c.isDigit() || c == u'x' || c == u'X')
            isbn.append(c);
    }
    return isbn;
}

QString fileStem(const QString &path)
{
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    const qsizetype dot = name.lastIndexOf(u'.');
    // A name that begins or ends with its only dot has no extension.
    return dot > 0 && dot < name.size() - 1 ? name.left(dot) : name;
}

PaperMetadata metadataFromDocument(const PDFAttributes &attributes, const QString &path)
{
    PaperMetadata metadata;
    metadata.title = attributes.title.value_or(QString());
    if (metadata.title.isEmpty())
        metadata.title = fileStem(path);
    metadata.authors = attributes.author.value_or(QLatin1String(""));
    return metadata;
}

PaperMetadata mergedWithBook(PaperMetadata metadata, const BookRecord &book)
{
    if (!book.title.isEmpty())
        metadata.title = book.title;
    if (!book.authors.isEmpty())
        metadata.authors = book.authors;
    metadata.year = book.year;
    metadata.subjects = book.subjects;
    return metadata;
}
