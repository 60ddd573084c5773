#pragma once

#include "indexing/CoverStore.h"
#include "indexing/PDFIndexer.h"
#include "platform/InputFile.h"
#include "store/BookmarkEvents.h"
#include "store/DatabaseManager.h"
#include "store/NativeLibraryService.h"
#include "store/SystemSearchPublisher.h"
#include "support/FakeBookService.h"
#include "support/FakeClock.h"
#include "support/FakePDFDocument.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

/// Publishes nowhere.
class SilentPublisher : public SystemSearchPublisher
{
public:
    void publish(const Paper &) override {}
    void publish(const QList<Paper> &) override {}
    void withdraw(const QString &) override {}
};

/// A library on disk and an indexer that reads the documents a test describes.
class IndexerFixture : public testing::Test
{
protected:
    IndexerFixture()
    {
        m_openPDF = [this](const InputFile &, std::stop_token) {
            return m_makeDocument();
        };
    }

    PDFIndexer indexer() { return PDFIndexer({m_db, m_library, m_books, m_covers, m_clock, m_openPDF}); }
    Result<Paper> tryIndex(const QString &path, std::stop_token stop = {})
    {
        return indexer().indexFile(path, stop);
    }
    Paper index(const QString &path)
    {
        const Result<Paper> paper = tryIndex(path);
        EXPECT_TRUE(paper) << paper.error().message().toStdString();
        return paper ? *paper : Paper();
    }

    /// Every file from now on holds this document.
    void useDocument(std::function<void(FakePDFDocument &)> describe)
    {
        m_makeDocument = [describe = std::move(describe)]() -> Result<std::unique_ptr<PDFDocument>> {
            auto document = std::make_unique<FakePDFDocument>();
            describe(*document);
            return std::unique_ptr<PDFDocument>(std::move(document));
        };
    }
    void usePages(std::vector<QByteArray> pages)
    {
        useDocument([pages = std::move(pages)](FakePDFDocument &document) { document.pages = pages; });
    }

    qint64 count(const QString &table)
    {
        const auto rows = m_db.query(u"SELECT count(*) AS n FROM " + table).result();
        EXPECT_TRUE(rows) << rows.error().message().toStdString();
        return rows->first().integer(QLatin1String("n")).value_or(-1);
    }
    Row onlyRow(const QString &sql)
    {
        const auto rows = m_db.query(sql).result();
        EXPECT_TRUE(rows && rows->size() == 1) << sql.toStdString();
        return rows->first();
    }
    QStringList covers() const { return QDir(m_coversFolder).entryList(QDir::Files); }

    TemporaryFolder m_folder;
    QString m_coversFolder = m_folder.path(QStringLiteral("library/covers"));
    QString m_pdf = m_folder.write(QStringLiteral("Paper.pdf"), "content of the paper");
    SilentPublisher m_publisher;
    BookmarkEvents m_bookmarkEvents;
    DatabaseManager m_db{m_folder.path(QStringLiteral("library/library.db"))};
    NativeLibraryService m_library{m_db, m_publisher, m_bookmarkEvents};
    FakeBookService m_books;
    CoverStore m_covers{m_coversFolder};
    FakeClock m_clock;
    std::function<Result<std::unique_ptr<PDFDocument>>()> m_makeDocument = [] {
        return Result<std::unique_ptr<PDFDocument>>(documentOf({"some words"}));
    };
    OpenPDF m_openPDF;
};
