#include "OpenedDocument.h"

#include "pdf/protocol/Limits.h"
#include "support/PdfBuilder.h"

#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

const PdfPage kPage = {.mediaBox = PdfBox{0, 0, 600, 800}};

std::vector<LinkEntry> linksOf(const QByteArray &annotations, PdfPage page = kPage)
{
    page.entries = "/Annots[" + annotations + ']';
    return OpenedDocument(PdfBuilder().page(page).page(kPage).build()).links();
}

QByteArray link(const QByteArray &entries)
{
    return "<</Type/Annot/Subtype/Link/Rect[100 600 200 700]" + entries + ">>";
}

QByteArray web(const QByteArray &address)
{
    return link("/A<</S/URI/URI(" + address + ")>>");
}

constexpr PageBox kBox = {100, 100, 200, 200};
} // namespace

TEST(Links, LeadIntoTheDocument)
{
    const LinkEntry expected = {kBox, PageTarget{1, 50, 100}, {}};
    EXPECT_THAT(linksOf(link("/Dest[1/XYZ 50 700 0]")), ElementsAre(expected));
    EXPECT_THAT(linksOf(link("/A<</S/GoTo/D[1/XYZ 50 700 0]>>")), ElementsAre(expected));
}

TEST(Links, LeadToTheWeb)
{
    EXPECT_THAT(linksOf(web("https://example.org/a?b#c")),
                ElementsAre(LinkEntry{kBox, std::nullopt, "https://example.org/a?b#c"}));
    EXPECT_THAT(linksOf(web("HTTP://example.org")),
                ElementsAre(LinkEntry{kBox, std::nullopt, "HTTP://example.org"}));
    EXPECT_THAT(linksOf(web("mailto:someone@example.org")),
                ElementsAre(LinkEntry{kBox, std::nullopt, "mailto:someone@example.org"}));
}

TEST(Links, LeadNowhereElse)
{
    EXPECT_THAT(linksOf(web("file:///etc/passwd") + web("javascript:alert(1)") + web("smb://host/x") +
                        web("") + web("https:") + web("https://example.org/\\nb")),
                IsEmpty());
    EXPECT_THAT(linksOf(link("/A<</S/Launch/F(program)>>") + link("/A<</S/GoToR/F(x.pdf)/D[0/Fit]>>") +
                        link("/A<</S/JavaScript/JS(app.alert\\(1\\))>>") + link("") + link("/Dest[7/Fit]")),
                IsEmpty());
    EXPECT_THAT(linksOf(web("http://" + QByteArray(int(kMaxAddressBytes), 'x'))), IsEmpty());
}

TEST(Links, ABadOneCostsOnlyItself)
{
    EXPECT_THAT(linksOf("99999 0 R 42 null" + link("/Dest[(x)]") + web("https://example.org")).size(), 1u);
}

TEST(Links, TurnWithThePage)
{
    PdfPage page = kPage;
    page.rotation = 90;
    EXPECT_THAT(linksOf(web("https://example.org"), page),
                ElementsAre(LinkEntry{{600, 100, 700, 200}, std::nullopt, "https://example.org"}));
}

TEST(Links, EndAtTheEdgeOfThePage)
{
    PdfPage page = kPage;
    page.cropBox = PdfBox{150, 0, 600, 650};
    EXPECT_EQ(linksOf(web("https://example.org"), page).at(0).box, (PageBox{0, 0, 50, 50}));
    page.cropBox = PdfBox{300, 0, 600, 800};
    EXPECT_THAT(linksOf(web("https://example.org"), page), IsEmpty());
}

TEST(Links, OverTwoLinesHaveABoxForEach)
{
    const std::vector<LinkEntry> links =
        linksOf(link("/QuadPoints[150 700 200 700 150 690 200 690 100 680 120 680 100 670 120 670]"
                     "/Dest[1/Fit]"));
    ASSERT_EQ(links.size(), 2u);
    EXPECT_EQ(links[0].box, (PageBox{150, 100, 200, 110}));
    EXPECT_EQ(links[1].box, (PageBox{100, 120, 120, 130}));
}

TEST(Links, QuadrilateralsThatLieElsewhereAreNotBelieved)
{
    EXPECT_EQ(linksOf(link("/QuadPoints[0 0 1 0 0 1 1 1]/Dest[1/Fit]")).at(0).box, kBox);
    EXPECT_EQ(linksOf(link("/QuadPoints[1 2 3]/Dest[1/Fit]")).at(0).box, kBox);
}

TEST(Links, HiddenOnesAreNotThere)
{
    EXPECT_THAT(linksOf(link("/F 2/Dest[1/Fit]")), IsEmpty());
}

TEST(Links, EndAtTheNumberThatIsTold)
{
    EXPECT_EQ(linksOf(link("/Dest[1/Fit]").repeated(int(kMaxLinks) + 7)).size(), kMaxLinks);
}

TEST(Links, OfAPageThatIsNotThereFail)
{
    OpenedDocument document(PdfBuilder().page(kPage).build());
    EXPECT_EQ(std::get<FailedReply>(document.document().links({5})).failure, Failure::PageUnavailable);
}
