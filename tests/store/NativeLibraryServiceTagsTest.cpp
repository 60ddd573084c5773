#include "support/TestLibrary.h"

namespace
{
class LibraryTags : public ::testing::Test
{
protected:
    void SetUp() override { library.addPaper(QStringLiteral("a"), QStringLiteral("A")); }

    TestLibrary library;
};
} // namespace

TEST_F(LibraryTags, AreAddedOnce)
{
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("x")).result());
    EXPECT_EQ(library.count(QStringLiteral("tags")), 1);
}

TEST_F(LibraryTags, AreRemoved)
{
    ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("x")).result());
    EXPECT_TRUE(library.service.removeTag(QStringLiteral("a"), QStringLiteral("x")).result());
    EXPECT_TRUE(library.service.removeTag(QStringLiteral("a"), QStringLiteral("x")).result());
    EXPECT_EQ(library.count(QStringLiteral("tags")), 0);
}

TEST_F(LibraryTags, ThatChangePublishThePaperAsItNowStands)
{
    ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("x")).result());
    ASSERT_TRUE(library.service.removeTag(QStringLiteral("a"), QStringLiteral("x")).result());
    ASSERT_EQ(library.publisher.published.size(), 2);
    EXPECT_EQ(library.publisher.published[0].tags, QStringList{QStringLiteral("x")});
    EXPECT_EQ(library.publisher.published[1].tags, QStringList());
}

TEST_F(LibraryTags, OfAnUnknownPaperAreRefusedAndPublishNothing)
{
    EXPECT_FALSE(library.service.addTag(QStringLiteral("gone"), QStringLiteral("x")).result());
    EXPECT_FALSE(library.service.tagPaper(QStringLiteral("gone"), QStringLiteral("x")).result());
    EXPECT_TRUE(library.service.removeTag(QStringLiteral("gone"), QStringLiteral("x")).result());
    EXPECT_TRUE(library.publisher.published.isEmpty());
}

TEST_F(LibraryTags, OfTheUsersTakeThePlaceOfUntagged)
{
    ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QStringLiteral("Untagged")).result());
    EXPECT_TRUE(library.service.tagPaper(QStringLiteral("a"), QStringLiteral("Topology")).result());
    ASSERT_EQ(library.publisher.published.size(), 2) << "once for each change";
    EXPECT_EQ(library.publisher.published[1].tags, QStringList{QStringLiteral("Topology")});
}

TEST_F(LibraryTags, ThatAreHiddenLeaveAPaperUntagged)
{
    for (const char *tag : {"Untagged", "_currently_reading"})
        EXPECT_TRUE(library.service.tagPaper(QStringLiteral("a"), QLatin1String(tag)).result());
    EXPECT_EQ(library.publisher.published.last().tags,
              (QStringList{QStringLiteral("Untagged"), QStringLiteral("_currently_reading")}));
}

TEST_F(LibraryTags, AreNamedOnceInPlainAscendingOrder)
{
    for (const char *tag : {"beta", "Zeta", "_currently_reading", "both"})
        ASSERT_TRUE(library.service.addTag(QStringLiteral("a"), QLatin1String(tag)).result());
    for (const char *tag : {"both", "Alpha"})
        ASSERT_TRUE(library.service.createTag(QLatin1String(tag)).result());
    EXPECT_EQ(
        *library.service.allTagNames().result(),
        (QStringList{QStringLiteral("Alpha"), QStringLiteral("Zeta"), QStringLiteral("_currently_reading"),
                     QStringLiteral("beta"), QStringLiteral("both")}));
}

TEST_F(LibraryTags, AreDefinedTrimmedAndOnce)
{
    ASSERT_TRUE(library.service.createTag(QStringLiteral(" \tTo read\t ")).result());
    ASSERT_TRUE(library.service.createTag(QStringLiteral("To read")).result());
    EXPECT_EQ(*library.service.allTagNames().result(), QStringList{QStringLiteral("To read")});
}

TEST_F(LibraryTags, WithABlankNameAreTheCallersToRefuse)
{
    ASSERT_TRUE(library.service.createTag(QStringLiteral(" \t")).result());
    EXPECT_EQ(*library.service.allTagNames().result(), QStringList{QString()});
}
