// Imports a folder of real, damaged and hostile files that QUIREVAULT_CORPUS names, and does nothing without.
// Beside the files an INDEX.tsv may say of each what a robust reader does with it (last column).
#include "program/LibraryFixture.h"

#include <QDirIterator>
#include <sqlite3.h>

namespace
{

/// The expectation for each file name, where the corpus states one.
QMap<QString, QString> expectations(const QString &corpus)
{
    QMap<QString, QString> expected;
    QDirIterator indexes(corpus, {QStringLiteral("INDEX.tsv")}, QDir::Files, QDirIterator::Subdirectories);
    while (indexes.hasNext()) {
        QFile index(indexes.next());
        EXPECT_TRUE(index.open(QIODevice::ReadOnly));
        while (!index.atEnd()) {
            const QStringList fields = QString::fromUtf8(index.readLine().trimmed()).split(u'\t');
            expected.insert(fields.first(), fields.last());
        }
    }
    return expected;
}

} // namespace

TEST_F(LibraryFixture, CorpusIsImportedWithOneOutcomeForEveryFile)
{
    const QString corpus = qEnvironmentVariable("QUIREVAULT_CORPUS");
    if (corpus.isEmpty())
        GTEST_SKIP() << "QUIREVAULT_CORPUS names no folder of PDFs";

    const ProgramRun imported = import(corpus);
    EXPECT_TRUE(imported.status == 0 || imported.status == 1) << imported.status;
    const QJsonObject errors = imported.json()[QLatin1String("errors")].toObject();
    const auto indexed = imported.json()[QLatin1String("indexed")].toArray().size();
    EXPECT_GT(indexed, 0);

    const QMap<QString, QString> expected = expectations(corpus);
    qsizetype files = 0;
    QDirIterator all(corpus, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QFileInfo file(all.next());
        if (file.suffix().toLower() != u"pdf")
            continue;
        ++files;
        const QString expectation = expected.value(file.fileName());
        const bool isRefused = errors.contains(file.filePath());
        EXPECT_FALSE(expectation.startsWith(u"is refused") && !isRefused) << file.filePath().toStdString();
        EXPECT_FALSE(expectation == u"opens normally" && isRefused) << file.filePath().toStdString();
    }
    EXPECT_EQ(indexed + errors.size(), files);
    for (const QJsonValue error : errors)
        EXPECT_TRUE(error.toString().contains(u": ")) << "a reason: " << error.toString().toStdString();

    for (const QJsonValue paper :
         m_program.run({QStringLiteral("list"), QStringLiteral("--json")}).json().array()) {
        const QString title = paper[QLatin1String("title")].toString();
        EXPECT_FALSE(title.isEmpty());
        EXPECT_LE(title.size(), 2000);
        EXPECT_TRUE(title.isValidUtf16());
    }
}
