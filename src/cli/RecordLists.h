#pragma once

#include "cli/Output.h"
#include "cli/PaperText.h"
#include "store/RecordJson.h"

#include <QJsonArray>
#include <QList>

/// The records' own JSON forms as one array.
template <typename Record> QJsonDocument asJson(const QList<Record> &records)
{
    QJsonArray array;
    for (const Record &record : records)
        array.append(toJson(record));
    return QJsonDocument(array);
}

/// The papers as a list to read, or as their JSON array.
inline void printPapers(const QList<Paper> &papers, const Output &output)
{
    if (output.isJson())
        return output.json(asJson(papers));
    for (const Paper &paper : papers)
        printPaper(paper, output);
    if (papers.isEmpty())
        output.line(QStringLiteral("No papers."));
}

/// One paper with every field, or its JSON object.
inline void printOnePaper(const Paper &paper, const Output &output)
{
    if (output.isJson())
        return output.json(QJsonDocument(toJson(paper)));
    printPaperDetails(paper, output);
}
