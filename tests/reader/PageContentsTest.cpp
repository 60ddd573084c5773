#include "reader/PageContents.h"

#include "support/FakePages.h"

#include <gtest/gtest.h>

TEST(PageContents, ForgetsThePagesFarthestFromTheVisibleOnes)
{
    PageContents contents;
    const PDFPageText text = placedLines({QString(20000, u'x')});
    for (qint64 page = 0; page < 60; ++page)
        contents.setText(page, text);
    EXPECT_GT(contents.bytes(), kPageTextBytes);
    contents.forgetBeyond({50, 52});
    EXPECT_LE(contents.bytes(), kPageTextBytes);
    EXPECT_EQ(contents.text(0), nullptr);
    EXPECT_NE(contents.text(40), nullptr);
    EXPECT_NE(contents.text(59), nullptr);
}

TEST(PageContents, ForgetsNoVisiblePage)
{
    PageContents contents;
    const PDFPageText text = placedLines({QString(400000, u'x')});
    for (qint64 page = 0; page < 4; ++page)
        contents.setText(page, text);
    contents.forgetBeyond({1, 2});
    EXPECT_NE(contents.text(1), nullptr);
    EXPECT_NE(contents.text(2), nullptr);
    EXPECT_EQ(contents.text(3), nullptr);
}

TEST(PageContents, CountsLinksAndForgetsThemWithTheirPage)
{
    PageContents contents;
    const QList<PDFLink> links(1000, PDFLink{QRectF(0, 0, 10, 10), PDFDestination{1, {}}});
    contents.setLinks(0, links);
    const qsizetype bytes = contents.bytes();
    EXPECT_GE(bytes, 1000 * qsizetype(sizeof(PDFLink)));
    contents.setLinks(0, links);
    EXPECT_EQ(contents.bytes(), bytes) << "once a page";
    for (qint64 page = 1; contents.bytes() <= kPageTextBytes; ++page)
        contents.setLinks(page, links);
    contents.forgetBeyond({0, 0});
    EXPECT_LE(contents.bytes(), kPageTextBytes);
    EXPECT_TRUE(contents.links(0));
    contents.clear();
    EXPECT_EQ(contents.bytes(), 0);
}

TEST(PageContents, FindsTheTopmostLinkAtAPoint)
{
    PageContents contents;
    const PDFLink below = {QRectF(0, 0, 100, 100), PDFDestination{1, {}}};
    const PDFLink above = {QRectF(50, 0, 100, 100), PDFDestination{2, {}}};
    contents.setLinks(0, {below, above});
    EXPECT_EQ(contents.linkAt(0, {60, 50}), above);
    EXPECT_EQ(contents.linkAt(0, {40, 50}), below);
    EXPECT_EQ(contents.linkAt(0, {300, 50}), std::nullopt);
    EXPECT_EQ(contents.linkAt(1, {60, 50}), std::nullopt);
}
