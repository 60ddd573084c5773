#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// A paper that never was, for pictures of the library.
struct SamplePaper {
    QString title;
    QString authors;
    int year = 0;
    QStringList tags;
    QString abstract;
};

/// A few dozen of them, always the same.
QList<SamplePaper> samplePapers();

/// Writes the paper as a PDF of a few pages into `folder`, whose first page looks like a paper's, and answers
/// its path.
QString writeSamplePdf(const SamplePaper &paper, const QString &folder);
