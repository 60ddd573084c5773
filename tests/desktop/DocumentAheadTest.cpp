#include "desktop/DocumentAhead.h"

#include "support/FakePDFDocument.h"

#include <atomic>
#include <gtest/gtest.h>

namespace
{

class DocumentAheadTest : public testing::Test
{
protected:
    static QList<PDFOpenRequest> requestsFor(const QStringList &paths)
    {
        QList<PDFOpenRequest> requests;
        for (const QString &path : paths)
            requests.append({.id = QUuid::createUuid(), .url = QUrl::fromLocalFile(path)});
        return requests;
    }

    std::unique_ptr<ReaderDocument> make(const QString &path)
    {
        m_made.append(path);
        return std::make_unique<ReaderDocument>([this](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
            ++m_openings;
            return std::unique_ptr<PDFDocument>(documentOf({"text"}));
        });
    }

    const DocumentOpening::MakeDocument m_makeDocument = [this](const QString &path) {
        return make(path);
    };
    QStringList m_made;
    std::atomic<int> m_openings = 0;
};

} // namespace

TEST_F(DocumentAheadTest, OpensTheDocumentOfTheFirstRequestOnce)
{
    DocumentAhead ahead(requestsFor({QStringLiteral("/a.pdf"), QStringLiteral("/b.pdf")}), m_makeDocument);
    EXPECT_EQ(m_made, QStringList{QStringLiteral("/a.pdf")}) << "before anybody takes it";
    const auto document = ahead.take(QStringLiteral("/a.pdf"));
    EXPECT_EQ(m_made.size(), 1);
    ASSERT_TRUE(document->open().result());
    EXPECT_EQ(m_openings, 1);
}

TEST_F(DocumentAheadTest, MakesADocumentOfItsOwnForEveryFurtherWindow)
{
    DocumentAhead ahead(requestsFor({QStringLiteral("/a.pdf")}), m_makeDocument);
    const auto first = ahead.take(QStringLiteral("/a.pdf"));
    const auto second = ahead.take(QStringLiteral("/a.pdf"));
    EXPECT_EQ(m_made.size(), 2);
    EXPECT_TRUE(first->open().result());
    EXPECT_TRUE(second->open().result());
}

TEST_F(DocumentAheadTest, MakesAnotherDocumentForAnotherPath)
{
    DocumentAhead ahead(requestsFor({QStringLiteral("/a.pdf")}), m_makeDocument);
    const auto document = ahead.take(QStringLiteral("/b.pdf"));
    EXPECT_EQ(m_made, (QStringList{QStringLiteral("/a.pdf"), QStringLiteral("/b.pdf")}));
}

TEST_F(DocumentAheadTest, OpensNothingForTheLibraryWindow)
{
    DocumentAhead ahead({}, m_makeDocument);
    EXPECT_TRUE(m_made.isEmpty());
}
