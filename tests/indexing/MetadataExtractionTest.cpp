#include "indexing/MetadataExtraction.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
TEST(FindISBN, IgnoresCase)
{
    EXPECT_EQ(findISBN(QStringLiteral("with isbn 0-306-40615-2 inside")), QStringLiteral("0306406152"));
}

TEST(FindISBN, KeepsTheDigitsOfTheLabel)
{
    EXPECT_EQ(findISBN(QStringLiteral("ISBN-10: 0-306-40615-2")), QStringLiteral("100306406152"));
    EXPECT_EQ(findISBN(QStringLiteral("ISBN-13: 978-3-16-148410-0")), QStringLiteral("139783161484100"));
}

TEST(FindISBN, TakesTheFirstOfSeveral)
{
    EXPECT_EQ(findISBN(QStringLiteral("ISBN 1111111111 ISBN 2222222222")), QStringLiteral("1111111111"));
}

TEST(FindISBN, KeepsALetterAsCheckDigit)
{
    EXPECT_EQ(findISBN(QStringLiteral("ISBN:080442957X")), QStringLiteral("080442957X"));
    EXPECT_EQ(findISBN(QStringLiteral("isbn 080442957x")), QStringLiteral("080442957x"));
}

TEST(FindISBN, ReadsAcrossLineBreaksAndBlanks)
{
    EXPECT_EQ(findISBN(QStringLiteral("ISBN\n978 0\n306 40615 7")), QStringLiteral("9780306406157"));
}

TEST(FindISBN, NeedsTheLabelAndTenDigits)
{
    EXPECT_FALSE(findISBN(QStringLiteral("0-306-40615-2")));
    EXPECT_FALSE(findISBN(QStringLiteral("ISBN 0-306-40615")));
    EXPECT_FALSE(findISBN(QString()));
}

TEST(FindISBN, LeavesATextMadeToKeepItBusy)
{
    const QString dashes = QString(QStringLiteral("-")).repeated(100'000);
    EXPECT_FALSE(findISBN(u"ISBN 1" + dashes + u"2" + dashes + u"3" + dashes + u"end"));
    EXPECT_FALSE(findISBN(QStringLiteral("ISBN 978 ").repeated(100'000)));
}

TEST(FileStem, IsTheNameWithoutItsExtension)
{
    EXPECT_EQ(fileStem(QStringLiteral("/a/b/Some paper.v2.pdf")), u"Some paper.v2");
    EXPECT_EQ(fileStem(QStringLiteral("/a/b.c/paper")), u"paper");
    EXPECT_EQ(fileStem(QStringLiteral("/a/.pdf")), u".pdf");
    EXPECT_EQ(fileStem(QStringLiteral("/a/paper.")), u"paper.");
}

TEST(MetadataFromDocument, TakesTitleAndAuthorOfTheDocument)
{
    const PaperMetadata metadata = metadataFromDocument({QStringLiteral("Title"), QStringLiteral("A. One")},
                                                        QStringLiteral("/x/file.pdf"));
    EXPECT_EQ(metadata.title, u"Title");
    EXPECT_EQ(metadata.authors, u"A. One");
    EXPECT_FALSE(metadata.year);
    EXPECT_TRUE(metadata.subjects.isEmpty());
}

TEST(MetadataFromDocument, TakesTheFileNameWithoutATitle)
{
    EXPECT_EQ(metadataFromDocument({}, QStringLiteral("/x/file.pdf")).title, u"file");
    EXPECT_EQ(metadataFromDocument({QStringLiteral(""), {}}, QStringLiteral("/x/file.pdf")).title, u"file");
    EXPECT_EQ(metadataFromDocument({}, QStringLiteral("/x/file.pdf")).authors, u"");
}

TEST(MergedWithBook, PrefersTheBook)
{
    const PaperMetadata merged =
        mergedWithBook({QStringLiteral("PDF"), QStringLiteral("pdf"), {}, {}},
                       {QStringLiteral("Book"), QStringLiteral("book"), 1987, {QStringLiteral("Topology")}});
    EXPECT_EQ(
        merged,
        (PaperMetadata{QStringLiteral("Book"), QStringLiteral("book"), 1987, {QStringLiteral("Topology")}}));
}

TEST(MergedWithBook, KeepsWhatTheBookDoesNotKnow)
{
    const PaperMetadata ofPDF{QStringLiteral("PDF"), QStringLiteral("pdf"), {}, {}};
    EXPECT_EQ(mergedWithBook(ofPDF, {}), ofPDF);
    const PaperMetadata merged =
        mergedWithBook(ofPDF, {{}, QStringLiteral("book"), {}, {QStringLiteral("s")}});
    EXPECT_EQ(merged,
              (PaperMetadata{QStringLiteral("PDF"), QStringLiteral("book"), {}, {QStringLiteral("s")}}));
}
} // namespace
