#include "OpenedDocument.h"

#include "pdf/protocol/CleanText.h"
#include "pdf/protocol/Limits.h"
#include "support/PdfBuilder.h"

#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;

constexpr int kRoot = PdfBuilder::kFirstFreeObject;

QByteArray reference(int number)
{
    return QByteArray::number(number) + " 0 R";
}

/// Three pages of 600 by 800 points, the third on its side, and an outline whose root is the object `kRoot`.
PdfBuilder withOutline()
{
    return PdfBuilder()
        .page(PdfPage{.mediaBox = PdfBox{0, 0, 600, 800}})
        .page(PdfPage{.mediaBox = PdfBox{0, 0, 600, 800}})
        .page(PdfPage{.mediaBox = PdfBox{0, 0, 600, 800}, .rotation = 90})
        .catalogue("/Outlines " + reference(kRoot));
}

/// An outline of one item with these entries.
std::vector<OutlineEntry> outlineOf(const QByteArray &entries, PdfBuilder builder = withOutline())
{
    return OpenedDocument(builder.object(kRoot, "<</First " + reference(kRoot + 1) + ">>")
                              .object(kRoot + 1, "<<" + entries + ">>")
                              .build())
        .outline();
}

std::optional<PageTarget> targetOf(const QByteArray &entries)
{
    return outlineOf("/Title(x)" + entries).at(0).target;
}

std::vector<std::string> shown(const std::vector<OutlineEntry> &entries)
{
    std::vector<std::string> out;
    for (const OutlineEntry &entry : entries)
        out.push_back(std::string(entry.depth, '>') + entry.label.value_or("-"));
    return out;
}

QByteArray item(const QByteArray &title, const QByteArray &links)
{
    return "<</Title(" + title + ')' + links + ">>";
}

QByteArray first(int number)
{
    return "/First " + reference(number);
}

QByteArray next(int number)
{
    return "/Next " + reference(number);
}
} // namespace

TEST(Outline, IsEmptyWithoutOne)
{
    EXPECT_TRUE(OpenedDocument(PdfBuilder().page(QStringList()).build()).outline().empty());
    EXPECT_TRUE(OpenedDocument(withOutline().object(kRoot, "42").build()).outline().empty());
    EXPECT_TRUE(OpenedDocument(withOutline().build()).outline().empty());
}

TEST(Outline, FollowsTheDocumentsOrder)
{
    OpenedDocument document(withOutline()
                                .object(kRoot, "<<" + first(kRoot + 1) + ">>")
                                .object(kRoot + 1, item("1", first(kRoot + 2) + next(kRoot + 4)))
                                .object(kRoot + 2, item("1.1", next(kRoot + 3)))
                                .object(kRoot + 3, item("1.2", ""))
                                .object(kRoot + 4, item("2", first(kRoot + 5)))
                                .object(kRoot + 5, item("2.1", ""))
                                .build());
    EXPECT_THAT(shown(document.outline()), ElementsAre("1", ">1.1", ">1.2", "2", ">2.1"));
}

TEST(Outline, ALoopCostsNoItem)
{
    OpenedDocument document(withOutline()
                                .object(kRoot, "<<" + first(kRoot + 1) + ">>")
                                .object(kRoot + 1, item("1", next(kRoot + 2)))
                                .object(kRoot + 2, item("2", first(kRoot + 1) + next(kRoot + 3)))
                                .object(kRoot + 3, item("3", next(kRoot + 3)))
                                .build());
    EXPECT_THAT(shown(document.outline()), ElementsAre("1", "2", "3"));
}

TEST(Outline, ABadItemCostsOnlyItself)
{
    OpenedDocument document(
        withOutline()
            .object(kRoot, "<<" + first(kRoot + 1) + ">>")
            .object(kRoot + 1, item("1", "/Dest[/Nonsense]" + next(kRoot + 2)))
            .object(kRoot + 2, "<</Title 42/Dest 99999 0 R" + first(kRoot + 50) + next(kRoot + 3) + ">>")
            .object(kRoot + 3, item("3", "/Dest(nobody)" + next(kRoot + 4)))
            .object(kRoot + 4, "(no dictionary)")
            .build());
    EXPECT_THAT(shown(document.outline()), ElementsAre("1", "-", "3"));
}

TEST(Outline, EndsAtTheDepthThatIsShown)
{
    PdfBuilder builder = withOutline().object(kRoot, "<<" + first(kRoot + 1) + ">>");
    const int depth = int(kMaxOutlineDepth) + 50;
    for (int i = 1; i <= depth; ++i)
        builder.object(kRoot + i, item("down", first(kRoot + i + 1) + next(kRoot + 1000 + i)));
    builder.object(kRoot + 1001, item("last", ""));
    const std::vector<OutlineEntry> entries = OpenedDocument(builder.build()).outline();
    ASSERT_EQ(entries.size(), kMaxOutlineDepth + 1);
    EXPECT_EQ(entries[kMaxOutlineDepth - 1].depth, kMaxOutlineDepth - 1);
    EXPECT_EQ(entries.back(), (OutlineEntry{0, "last", std::nullopt}));
}

TEST(Outline, EndsAtTheLengthThatIsShown)
{
    PdfBuilder builder = withOutline().object(kRoot, "<<" + first(kRoot + 1) + ">>");
    for (int i = 1; i <= int(kMaxOutlineItems) + 5; ++i)
        builder.object(kRoot + i, item("on", next(kRoot + i + 1)));
    EXPECT_EQ(OpenedDocument(builder.build()).outline().size(), kMaxOutlineItems);
}

TEST(Outline, LabelsArePlainLines)
{
    const auto label = [](const QString &title) {
        return outlineOf("/Title<" + PdfBuilder::utf16(title).toHex() + '>').at(0).label;
    };
    EXPECT_EQ(label(QStringLiteral(" Two\r\nlines\tand more ")), "Two  lines and more");
    EXPECT_EQ(label(QStringLiteral("\u202eevil\u202c \u200fmarks\u2067")), "evil marks");
    EXPECT_EQ(label(QStringLiteral("שלום")), "שלום");
    EXPECT_EQ(label(QString(5000, u'x')), std::string(kMaxLabelCharacters, 'x'));
    EXPECT_EQ(label(QStringLiteral("\u200e\u0007 ")), std::nullopt);
    EXPECT_EQ(label({}), std::nullopt);
}

TEST(Outline, FindsPagesByTheirObjectAndByTheirNumber)
{
    EXPECT_EQ(targetOf("/Dest[" + PdfBuilder::pageReference(1) + "/Fit]"), (PageTarget{1, 0, 0}));
    EXPECT_EQ(targetOf("/Dest[1/Fit]"), (PageTarget{1, 0, 0}));
    EXPECT_EQ(targetOf("/A<</S/GoTo/D[1/Fit]>>"), (PageTarget{1, 0, 0}));
}

TEST(Outline, PositionsAreOnThePageAsShown)
{
    EXPECT_EQ(targetOf("/Dest[1/XYZ 100 700 0]"), (PageTarget{1, 100, 100}));
    EXPECT_EQ(targetOf("/Dest[1/XYZ null 700 null]"), (PageTarget{1, 0, 100}));
    EXPECT_EQ(targetOf("/Dest[1/XYZ 100 null null]"), (PageTarget{1, 100, 0}));
    EXPECT_EQ(targetOf("/Dest[1/FitH 700]"), (PageTarget{1, 0, 100}));
    EXPECT_EQ(targetOf("/Dest[1/FitBH 700]"), (PageTarget{1, 0, 100}));
    EXPECT_EQ(targetOf("/Dest[1/FitV 100]"), (PageTarget{1, 100, 0}));
    EXPECT_EQ(targetOf("/Dest[1/FitR 100 300 200 700]"), (PageTarget{1, 100, 100}));
    EXPECT_EQ(targetOf("/Dest[2/XYZ 100 700 0]"), (PageTarget{2, 700, 100}));
}

TEST(Outline, PositionsBeyondThePageAreAtItsEdge)
{
    EXPECT_EQ(targetOf("/Dest[1/XYZ -5000 5000 0]"), (PageTarget{1, 0, 0}));
    EXPECT_EQ(targetOf("/Dest[1/XYZ 123456789.5 -123456789.5 0]"), (PageTarget{1, 600, 800}));
}

TEST(Outline, FindsDestinationsByName)
{
    const auto named = [](const QByteArray &catalogue, const QByteArray &destination) {
        return outlineOf("/Title(x)/Dest" + destination, withOutline().catalogue(catalogue)).at(0).target;
    };
    EXPECT_EQ(named("/Dests<</here[1/Fit]>>", "/here"), (PageTarget{1, 0, 0}));
    EXPECT_EQ(named("/Dests<</here<</D[1/Fit]>>>>", "/here"), (PageTarget{1, 0, 0}));
    EXPECT_EQ(named("/Names<</Dests<</Names[(here)[1/Fit]]>>>>", "(here)"), (PageTarget{1, 0, 0}));
    EXPECT_EQ(named("/Names<</Dests<</Names[(here)[1/Fit]]>>>>", "(there)"), std::nullopt);
}

TEST(Outline, LeadsNowhereElse)
{
    EXPECT_EQ(targetOf("/Dest[3/Fit]"), std::nullopt);
    EXPECT_EQ(targetOf("/Dest[-1/Fit]"), std::nullopt);
    EXPECT_EQ(targetOf("/Dest[]"), std::nullopt);
    EXPECT_EQ(targetOf("/Dest[2 0 R/Fit]"), std::nullopt);
    EXPECT_EQ(targetOf("/A<</S/GoToR/F(other.pdf)/D[0/Fit]>>"), std::nullopt);
    EXPECT_EQ(targetOf("/A<</S/Launch/F(program)>>"), std::nullopt);
}
