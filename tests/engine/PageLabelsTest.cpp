#include "OpenedDocument.h"

#include "pdf/protocol/Limits.h"
#include "support/PdfBuilder.h"

#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kFirst = PdfBuilder::kFirstFreeObject;

PdfBuilder labelled(const QByteArray &tree)
{
    return PdfBuilder().page(QStringList()).catalogue("/PageLabels " + tree);
}

std::vector<LabelRange> labelsOf(const PdfBuilder &builder)
{
    return OpenedDocument(builder.build()).pageLabels();
}

std::vector<LabelRange> labelsOf(const QByteArray &tree)
{
    return labelsOf(labelled(tree));
}
} // namespace

TEST(PageLabels, AreAbsentWhereTheDocumentHasNone)
{
    EXPECT_THAT(labelsOf(PdfBuilder().page(QStringList())), IsEmpty());
    EXPECT_THAT(labelsOf(QByteArray("42")), IsEmpty());
    EXPECT_THAT(labelsOf(QByteArray("<<>>")), IsEmpty());
}

TEST(PageLabels, KnowEveryStyle)
{
    EXPECT_THAT(
        labelsOf(QByteArray("<</Nums[0<</S/D>> 1<</S/R>> 2<</S/r>> 3<</S/A>> 4<</S/a>> 5<<>>]>>")),
        ElementsAre(LabelRange{0, LabelStyle::Decimal, 1, ""}, LabelRange{1, LabelStyle::UpperRoman, 1, ""},
                    LabelRange{2, LabelStyle::LowerRoman, 1, ""},
                    LabelRange{3, LabelStyle::UpperLetters, 1, ""},
                    LabelRange{4, LabelStyle::LowerLetters, 1, ""}, LabelRange{5, LabelStyle::None, 1, ""}));
}

TEST(PageLabels, HavePrefixAndFirstNumber)
{
    EXPECT_THAT(labelsOf(QByteArray("<</Nums[0<</S/D/P(App. )/St 7>>]>>")),
                ElementsAre(LabelRange{0, LabelStyle::Decimal, 7, "App. "}));
}

TEST(PageLabels, ComeFromATreeOfSeveralLevelsInTheirOrder)
{
    EXPECT_THAT(
        labelsOf(labelled("100000 0 R")
                     .object(kFirst, "<</Kids[100001 0 R 100002 0 R]>>")
                     .object(kFirst + 1, "<</Limits[5 5]/Nums[5<</S/D>>]>>")
                     .object(kFirst + 2, "<</Kids[100003 0 R]>>")
                     .object(kFirst + 3, "<</Nums[0<</S/r>>]>>")),
        ElementsAre(LabelRange{0, LabelStyle::LowerRoman, 1, ""}, LabelRange{5, LabelStyle::Decimal, 1, ""}));
}

TEST(PageLabels, ALoopCostsNothing)
{
    EXPECT_THAT(
        labelsOf(labelled("100000 0 R")
                     .object(kFirst, "<</Kids[100000 0 R 100001 0 R]/Nums[0<</S/r>>]>>")
                     .object(kFirst + 1, "<</Kids[100000 0 R 100001 0 R]/Nums[5<</S/D>>]>>")),
        ElementsAre(LabelRange{0, LabelStyle::LowerRoman, 1, ""}, LabelRange{5, LabelStyle::Decimal, 1, ""}));
}

TEST(PageLabels, NonsenseCostsOnlyItself)
{
    EXPECT_THAT(
        labelsOf(QByteArray("<</Kids[99999 0 R 42]/Nums[-3<</S/D>> (x) 7 2<</S 9/P 9/St(z)>> "
                            "3<</S/r/St -9>> 3<</S/D>> 4]>>")),
        ElementsAre(LabelRange{2, LabelStyle::None, 1, ""}, LabelRange{3, LabelStyle::LowerRoman, 1, ""}));
}

TEST(PageLabels, PrefixesArePlainLines)
{
    const QByteArray prefix = PdfBuilder::utf16(QStringLiteral("a\n\u202eb") + QString(900, u'x')).toHex();
    EXPECT_EQ(labelsOf(QByteArray("<</Nums[0<</P<" + prefix + ">>>]>>")).at(0).prefix,
              "a b" + std::string(kMaxLabelCharacters - 3, 'x'));
}

TEST(PageLabels, EndAtTheNumberOfRangesThatIsTold)
{
    QByteArray ranges;
    for (int i = 0; i < int(kMaxLabelRanges) + 10; ++i)
        ranges += QByteArray::number(i) + "<<>>";
    EXPECT_LE(labelsOf("<</Nums[" + ranges + "]>>").size(), kMaxLabelRanges);
}

TEST(PageLabels, NodesNestedWithoutMeasureEnd)
{
    constexpr int kLevels = 10'000;
    EXPECT_THAT(labelsOf(QByteArray("<</Kids[").repeated(kLevels) + QByteArray("]>>").repeated(kLevels)),
                IsEmpty());
}
