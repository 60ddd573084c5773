#include "desktop/DocumentAhead.h"

#include "reader/ReaderDocument.h"
#include "support/PdfBuilder.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace
{

class DocumentAheadTest : public testing::Test
{
protected:
    QString pdf(const QString &name, int pages) const
    {
        PdfBuilder builder;
        for (int page = 0; page < pages; ++page)
            builder.page({QStringLiteral("text")});
        return m_folder.write(name, builder.build());
    }
    static QList<PDFOpenRequest> requestsFor(const QString &path)
    {
        return {{.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(path)}};
    }

private:
    int m_argc = 0;
    QCoreApplication m_application{m_argc, nullptr};
    TemporaryFolder m_folder;
};

} // namespace

TEST_F(DocumentAheadTest, GivesTheDocumentOfTheFirstRequest)
{
    const QString path = pdf(QStringLiteral("two.pdf"), 2);
    DocumentAhead ahead(requestsFor(path));
    const auto document = ahead.take(path);
    ASSERT_TRUE(document->open().result());
    EXPECT_EQ(document->pageCount(), 2);
}

TEST_F(DocumentAheadTest, GivesADocumentOfItsOwnToEveryFurtherWindow)
{
    const QString path = pdf(QStringLiteral("two.pdf"), 2);
    DocumentAhead ahead(requestsFor(path));
    const auto first = ahead.take(path);
    const auto second = ahead.take(path);
    EXPECT_TRUE(first->open().result());
    EXPECT_TRUE(second->open().result());
}

TEST_F(DocumentAheadTest, GivesAnotherDocumentForAnotherPath)
{
    const QString other = pdf(QStringLiteral("three.pdf"), 3);
    DocumentAhead ahead(requestsFor(pdf(QStringLiteral("two.pdf"), 2)));
    const auto document = ahead.take(other);
    ASSERT_TRUE(document->open().result());
    EXPECT_EQ(document->pageCount(), 3);
}

TEST_F(DocumentAheadTest, OpensNothingAheadForTheLibraryWindow)
{
    const QString path = pdf(QStringLiteral("two.pdf"), 2);
    DocumentAhead ahead({});
    const auto document = ahead.take(path);
    EXPECT_TRUE(document->open().result());
}
