// Documents whose page trees claim nonsense.
#include "OpenedDocument.h"

#include "support/PdfBuilder.h"

namespace
{
QByteArray twoPages(qint64 claimed)
{
    return PdfBuilder()
        .page({QStringLiteral("First")})
        .page({QStringLiteral("Second")})
        .claimPageCount(claimed)
        .build();
}

/// A document of these objects, the first of which are the catalogue and the root of the page tree.
QByteArray documentOf(const QByteArrayList &objects)
{
    QByteArray pdf = "%PDF-1.7\n";
    QByteArray table = "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    return pdf + table + "trailer<</Root 1 0 R/Size " + QByteArray::number(objects.size() + 1) +
           ">>\nstartxref\n" + QByteArray::number(pdf.size()) + "\n%%EOF\n";
}

QByteArray treeOf(const QByteArrayList &nodes)
{
    return documentOf(QByteArrayList{"<</Type/Catalog/Pages 2 0 R>>"} + nodes);
}

QByteArray page(const QByteArray &parent, int width)
{
    return "<</Type/Page/Parent " + parent + " 0 R/MediaBox[0 0 " + QByteArray::number(width) + " 100]>>";
}

/// The width of page `index` tells which page it is.
std::uint32_t widthOf(OpenedDocument &document, std::uint32_t index)
{
    return document.thumbnail(1000, 100, index).width;
}

void expectBothPages(const QByteArray &bytes)
{
    OpenedDocument document(bytes);
    ASSERT_EQ(document.opened().pageCount, 2u);
    EXPECT_EQ(document.text(0), "First\n");
    EXPECT_EQ(document.text(1), "Second\n");
}
} // namespace

TEST(PageTree, IsCountedWhereItClaimsNoPages)
{
    expectBothPages(twoPages(0));
    expectBothPages(twoPages(-1));
}

TEST(PageTree, IsCountedWhereItsClaimIsNoNumberOfPages)
{
    expectBothPages(twoPages(qint64(1) << 31));
    expectBothPages(twoPages(2).replace("/Count 2", "/Count()"));
    expectBothPages(twoPages(2).replace("/Count 2", "/Cou-t 2"));
}

TEST(PageTree, IsCountedThroughAllItsNodes)
{
    OpenedDocument document(treeOf({
        "<</Type/Pages/Count 0/Kids[3 0 R 5 0 R]>>",
        "<</Type/Pages/Parent 2 0 R/Count -7/Kids[4 0 R]>>",
        page("3", 100),
        page("2", 200),
    }));
    ASSERT_EQ(document.opened().pageCount, 2u);
    EXPECT_EQ(widthOf(document, 0), 100u);
    EXPECT_EQ(widthOf(document, 1), 200u);
}

TEST(PageTree, InheritsThroughItsNodesAllTheSame)
{
    OpenedDocument document(treeOf({
        "<</Type/Pages/Count 0/Kids[3 0 R]>>",
        "<</Type/Pages/Parent 2 0 R/Count 0/MediaBox[0 0 300 100]/Kids[4 0 R]>>",
        "<</Type/Page/Parent 3 0 R>>",
    }));
    EXPECT_EQ(widthOf(document, 0), 300u);
}

TEST(PageTree, ThatGoesInCirclesIsCountedOnce)
{
    OpenedDocument document(treeOf({
        "<</Type/Pages/Count 0/Kids[3 0 R 2 0 R 4 0 R]>>",
        page("2", 100),
        "<</Type/Pages/Count 0/Kids[4 0 R 2 0 R 3 0 R]>>",
    }));
    EXPECT_EQ(document.opened().pageCount, 2u);
    EXPECT_EQ(widthOf(document, 1), 100u);
}

TEST(PageTree, IsFollowedToALimitedDepth)
{
    QByteArrayList nodes;
    for (int i = 0; i < 100'000; ++i)
        nodes += "<</Type/Pages/Count 0/Kids[" + QByteArray::number(i + 3) + " 0 R]>>";
    nodes += page("2", 100);
    EXPECT_EQ(OpenedDocument(treeOf(nodes)).failed(),
              (FailedReply{Failure::Damaged, "no page of it can be found"}));
}

TEST(PageTree, LeavesOutWhatIsNoPage)
{
    OpenedDocument document(
        treeOf({"<</Type/Pages/Count 0/Kids[null 99 0 R (text) 3 0 R]>>", page("2", 100)}));
    ASSERT_EQ(document.opened().pageCount, 1u);
    EXPECT_EQ(widthOf(document, 0), 100u);
}

TEST(PageTree, WithoutAnyPageIsDamaged)
{
    const FailedReply damaged = {Failure::Damaged, "no page of it can be found"};
    EXPECT_EQ(OpenedDocument(treeOf({"<</Type/Pages/Count 0/Kids[null]>>"})).failed(), damaged);
    EXPECT_EQ(OpenedDocument(treeOf({"<</Type/Pages/Count 0>>"})).failed(), damaged);
    EXPECT_EQ(OpenedDocument(treeOf({"null"})).failed(), damaged);
}

TEST(PageTree, ThatIsEmptyHasNoPages)
{
    EXPECT_EQ(OpenedDocument(treeOf({"<</Type/Pages/Count 0/Kids[]>>"})).opened().pageCount, 0u);
}
