#include "reader/PassageFinder.h"

#include "support/PlacedText.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{

/// What `findPassage` lights, joined by "|"; "none" when nothing.
QString lit(const QString &passage, const PDFPageText &page)
{
    const std::optional<PDFSelection> found = findPassage(passage, 4, page);
    if (!found)
        return QStringLiteral("none");
    EXPECT_EQ(found->pages(), QList<qint64>{4});
    QStringList parts;
    for (const PDFTextRange &range : found->ranges(4))
        parts.append(page.string(range));
    return parts.join(u'|');
}

} // namespace

TEST(PassageFinder, KeepsWordsOfMoreThanTwoCharactersTrimmedOfTheirEdges)
{
    EXPECT_EQ(passageWords(QStringLiteral(
                  "...We (the) \"ab\" co-operate,\n\tof2 x²³ …end… ---- \U0001D400\U0001D401")),
              (QStringList{QStringLiteral("the"), QStringLiteral("co-operate"), QStringLiteral("of2"),
                           QStringLiteral("x²³"), QStringLiteral("end")}));
}

TEST(PassageFinder, CountsACharacterBeyondTheFirstPlaneOnce)
{
    EXPECT_EQ(passageWords(QStringLiteral("\U0001D400\U0001D401\U0001D402")).size(), 1);
}

TEST(PassageFinder, FindsWordsAcrossALineBreak)
{
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("nothing but attention"), {50, 100})
                                 .line(QStringLiteral("heads remain"), {50, 114})
                                 .page();
    EXPECT_EQ(lit(QStringLiteral("attention\nheads"), page), u"attention|heads");
    EXPECT_EQ(lit(QStringLiteral("...attention heads..."), page), u"attention|heads");
}

TEST(PassageFinder, ToleratesAWordThatTheLineEndHyphenates)
{
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("self atten-"), {50, 100})
                                 .line(QStringLiteral("tion layers"), {50, 114})
                                 .page();
    EXPECT_EQ(lit(QStringLiteral("self attention layers"), page), u"self|layers");
    EXPECT_EQ(lit(QStringLiteral("self atten-\ntion layers"), page), u"self|atten|tion|layers");
}

TEST(PassageFinder, IgnoresCaseAndDiacritics)
{
    const PDFPageText page =
        PlacedText().line(QStringLiteral("Poincar\u00e9 na\u00efve STRASSE e\u0301tude"), {50, 100}).page();
    EXPECT_EQ(lit(QStringLiteral("POINCARE"), page), u"Poincar\u00e9");
    EXPECT_EQ(lit(QStringLiteral("nai\u0308ve"), page), u"na\u00efve");
    EXPECT_EQ(lit(QStringLiteral("stra\u00dfe"), page), u"STRASSE");
    EXPECT_EQ(lit(QStringLiteral("etude"), page), u"e\u0301tude");
}

TEST(PassageFinder, FindsNothingWhenNoWordStandsOnThePage)
{
    const PDFPageText page = PlacedText().line(QStringLiteral("one two three"), {50, 100}).page();
    EXPECT_EQ(lit(QStringLiteral("seven eleven"), page), u"none");
    EXPECT_EQ(lit(QStringLiteral("seven"), PDFPageText()), u"none");
    EXPECT_EQ(lit(QString(), page), u"none");
}

TEST(PassageFinder, NeverFindsAPassageOfWordsOfOneOrTwoCharacters)
{
    const PDFPageText page = PlacedText().line(QStringLiteral("we do it as is"), {50, 100}).page();
    EXPECT_EQ(lit(QStringLiteral("we do it"), page), u"none");
}

TEST(PassageFinder, DropsWordsThatThePageDoesNotHave)
{
    const PDFPageText page = PlacedText().line(QStringLiteral("deep network"), {50, 100}).page();
    EXPECT_EQ(lit(QStringLiteral("missing deep absent network lost"), page), u"deep|network");
}

TEST(PassageFinder, MissesOneWordAtMost)
{
    const auto pageWith = [](double otherY) {
        return PlacedText()
            .line(QStringLiteral("alpha beta"), {50, 100})
            .line(QStringLiteral("gamma"), {50, 600})
            .line(QStringLiteral("delta"), {50, otherY})
            .page();
    };
    EXPECT_EQ(lit(QStringLiteral("alpha beta gamma delta"), pageWith(120)), u"alpha|beta|delta");
    EXPECT_EQ(lit(QStringLiteral("alpha beta gamma delta"), pageWith(620)), u"none");
}

TEST(PassageFinder, DoesNotLightWordsScatteredOverThePage)
{
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("alpha"), {50, 50})
                                 .line(QStringLiteral("beta"), {50, 400})
                                 .line(QStringLiteral("gamma"), {50, 700})
                                 .page();
    EXPECT_EQ(lit(QStringLiteral("alpha beta gamma"), page), u"none");
}

TEST(PassageFinder, ReachesLessThanTwoHundredPointsFromTheAnchor)
{
    const auto pageWith = [](double below) {
        return PlacedText()
            .line(QStringLiteral("alpha"), {50, 100})
            .line(QStringLiteral("gamma"), {50, 100 + below})
            .line(QStringLiteral("delta"), {50, 100 + below})
            .page();
    };
    EXPECT_EQ(lit(QStringLiteral("alpha gamma delta"), pageWith(199)), u"alpha|gamma|delta");
    EXPECT_EQ(lit(QStringLiteral("alpha gamma delta"), pageWith(200)), u"none");
}

TEST(PassageFinder, MeasuresFromTheAnchorAndNotFromTheWordBefore)
{
    // "gamma" is near "beta" below, but the one nearer to the anchor is above.
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("gamma"), {50, 40})
                                 .line(QStringLiteral("alpha"), {50, 100})
                                 .line(QStringLiteral("beta"), {50, 160})
                                 .line(QStringLiteral("gamma"), {50, 174})
                                 .page();
    const auto found = findPassage(QStringLiteral("alpha beta gamma"), 0, page);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bounds(0).top(), 40);
    EXPECT_EQ(found->bounds(0).bottom(), 172);
}

TEST(PassageFinder, PrefersThePlaceWhereTheWordsStandClosest)
{
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("graph"), {50, 100})
                                 .line(QStringLiteral("kernel"), {150, 150})
                                 .line(QStringLiteral("graph kernel"), {50, 500})
                                 .page();
    const auto found = findPassage(QStringLiteral("graph kernel"), 0, page);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bounds(0), QRectF(50, 500, 72, 12));
}

TEST(PassageFinder, PrefersTheEarlierAnchorOfEqualPlaces)
{
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("graph kernel"), {50, 100})
                                 .line(QStringLiteral("graph kernel"), {50, 500})
                                 .page();
    const auto found = findPassage(QStringLiteral("graph kernel"), 0, page);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bounds(0).top(), 100);
}

TEST(PassageFinder, TakesTheFirstOfOccurrencesThatAreEquallyNear)
{
    const PDFPageText page = PlacedText()
                                 .line(QStringLiteral("kernel"), {50, 60})
                                 .line(QStringLiteral("graph."), {50, 100})
                                 .line(QStringLiteral("kernel"), {50, 140})
                                 .page();
    const auto found = findPassage(QStringLiteral("graph. kernel"), 0, page);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bounds(0).top(), 60);
}

TEST(PassageFinder, FindsAWordInsideALongerOne)
{
    const PDFPageText page = PlacedText().line(QStringLiteral("hypergraphs"), {50, 100}).page();
    EXPECT_EQ(lit(QStringLiteral("graph"), page), u"graph");
}

TEST(PassageFinder, LooksAtEveryAnchorOfALongPage)
{
    // Each of the nine thousand anchors has nine thousand candidates for each word.
    PlacedText text;
    for (int row = 0; row < 900; ++row)
        text.line(QStringLiteral("abcd efgh ").repeated(10), {0, 1.0 * row});
    const PDFPageText page = text.page();
    ASSERT_GT(page.string().size(), 90'000);
    EXPECT_EQ(lit(QStringLiteral("abcd efgh ").repeated(100), page), u"abcd|efgh");
}

TEST(PassageFinder, EndsWhenItIsStopped)
{
    const PDFPageText page = PlacedText().line(QStringLiteral("alpha"), {50, 100}).page();
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(findPassage(QStringLiteral("alpha"), 0, page, stop.get_token()));
}
