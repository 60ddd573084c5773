#include "store/PaperTags.h"

#include "support/TestLibrary.h"

class PaperTagsTest : public testing::Test
{
protected:
    QList<Paper> withTags(QList<Paper> papers, TagLookup lookup)
    {
        const auto read = [&](Database &database) {
            return addTagsTo(papers, database, lookup);
        };
        EXPECT_TRUE(m_library.db.perform(Urgency::PersonWaits, read).result());
        return papers;
    }
    void tag(const QString &id, const QString &tag)
    {
        ASSERT_TRUE(m_library.service.addTag(id, tag).result());
    }

    TestLibrary m_library;
    const QString m_x = QStringLiteral("x");
    const QString m_y = QStringLiteral("y");
};

TEST_F(PaperTagsTest, AreTheSameHoweverTheyAreFound)
{
    QList<Paper> papers;
    for (int i = 0; i < 3 * kIdsPerStatement / 2; ++i) {
        const QString id = QString::number(i);
        m_library.addPaper(id, id);
        papers.prepend(Paper{
            .id = id, .title = {}, .authors = {}, .year = {}, .coverPath = {}, .filepath = {}, .tags = {}});
        if (i % 3 > 0)
            tag(id, m_y);
        if (i % 3 > 1)
            tag(id, m_x);
    }
    const QList<Paper> byId = withTags(papers, TagLookup::ById);
    EXPECT_EQ(byId, withTags(papers, TagLookup::Scan));
    EXPECT_EQ(byId[0].tags, (QStringList{m_x, m_y}));
    EXPECT_EQ(byId[1].tags, QStringList{m_y});
    EXPECT_TRUE(byId[2].tags.isEmpty());
}

TEST_F(PaperTagsTest, OfOtherPapersAreLeftOut)
{
    m_library.addPaper(m_x, m_x);
    m_library.addPaper(m_y, m_y);
    tag(m_x, m_x);
    tag(m_y, m_y);
    const QList<Paper> papers{Paper{
        .id = m_y, .title = {}, .authors = {}, .year = {}, .coverPath = {}, .filepath = {}, .tags = {}}};
    for (const TagLookup lookup : {TagLookup::ById, TagLookup::Scan})
        EXPECT_EQ(withTags(papers, lookup).first().tags, QStringList{m_y});
}

TEST_F(PaperTagsTest, ShareTheTextOfEqualNames)
{
    m_library.addPaper(m_x, m_x);
    m_library.addPaper(m_y, m_y);
    tag(m_x, QStringLiteral("Topology"));
    tag(m_y, QStringLiteral("Topology"));
    const QList<Paper> papers = *m_library.service.allPapers().result();
    EXPECT_EQ(papers[0].tags[0].constData(), papers[1].tags[0].constData());
}

TEST_F(PaperTagsTest, ThatCannotBeReadAreAnError)
{
    m_library.run(QStringLiteral("DROP TABLE tags"));
    QList<Paper> papers{Paper{
        .id = m_x, .title = {}, .authors = {}, .year = {}, .coverPath = {}, .filepath = {}, .tags = {}}};
    for (const TagLookup lookup : {TagLookup::ById, TagLookup::Scan}) {
        const auto read = [&](Database &database) {
            return addTagsTo(papers, database, lookup);
        };
        EXPECT_FALSE(m_library.db.perform(Urgency::PersonWaits, read).result());
    }
}
