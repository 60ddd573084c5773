#pragma once

#include "indexing/BookRecord.h"
#include "pdf/PDFDocument.h"

#include <QString>

/// What decides a paper's row and feeds the topic tagger.
struct PaperMetadata {
    QString title;
    QString authors;            ///< empty when unknown
    std::optional<qint64> year; ///< only a book record knows it
    QStringList subjects;       ///< of the book record

    friend bool operator==(const PaperMetadata &, const PaperMetadata &) = default;
};

/// The first ISBN that is printed in `text` with its label: all decimal digits and "x" of the match, those of
/// a label "ISBN-10" or "ISBN-13" included. No check digit is tested.
std::optional<QString> findISBN(const QString &text);

/// The last part of `path` without its extension.
QString fileStem(const QString &path);

/// What the document says of itself; without a title, the file's name serves.
PaperMetadata metadataFromDocument(const PDFAttributes &attributes, const QString &path);

/// `metadata` with what the book record knows better: every text of it that is not empty, its year even
/// when it has none, and its subjects.
PaperMetadata mergedWithBook(PaperMetadata metadata, const BookRecord &book);
