#include "support/TestLibrary.h"

namespace
{
class DatabaseTags : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *id : {"a", "b", "c"})
            library.addPaper(QLatin1String(id), QLatin1String(id));
    }

    void tag(const char *paperId, const char *name)
    {
        library.run(QStringLiteral("INSERT INTO tags (paper_id, tag) VALUES (?, ?)"),
                    {QString::fromUtf8(paperId), QString::fromUtf8(name)});
    }

    QStringList pairs()
    {
        QStringList pairs;
        const auto rows =
            library.db.query(QStringLiteral("SELECT paper_id || ':' || tag AS p FROM tags ORDER BY p"))
                .result();
        for (const Row &row : *rows)
            pairs.append(*row.text(QLatin1String("p")));
        return pairs;
    }

    bool rename(const char *from, const char *to)
    {
        return library.db.renameTag(QString::fromUtf8(from), QString::fromUtf8(to)).result().has_value();
    }

    TestLibrary library;
};
} // namespace

TEST_F(DatabaseTags, AreRenamedEverywhere)
{
    tag("a", "Old");
    tag("b", "Old");
    tag("b", "Other");
    ASSERT_TRUE(library.service.createTag(QStringLiteral("Old")).result());
    EXPECT_TRUE(rename("Old", " \tNew \t"));
    EXPECT_EQ(pairs(),
              (QStringList{QStringLiteral("a:New"), QStringLiteral("b:New"), QStringLiteral("b:Other")}));
    EXPECT_EQ(*library.service.allTagNames().result(),
              (QStringList{QStringLiteral("New"), QStringLiteral("Other")}));
}

TEST_F(DatabaseTags, MergeIntoAnExistingTag)
{
    tag("a", "Old");
    tag("a", "New");
    tag("b", "Old");
    tag("c", "New");
    ASSERT_TRUE(library.service.createTag(QStringLiteral("New")).result());
    EXPECT_TRUE(rename("Old", "New"));
    EXPECT_EQ(pairs(),
              (QStringList{QStringLiteral("a:New"), QStringLiteral("b:New"), QStringLiteral("c:New")}));
    EXPECT_EQ(library.count(QStringLiteral("tag_definitions")), 1);
}

TEST_F(DatabaseTags, StayAsTheyAreWhenTheNewNameIsTheOldOnePadded)
{
    tag("a", "Old");
    library.statements.clear();
    EXPECT_TRUE(rename("Old", "  Old\t"));
    EXPECT_EQ(library.statements.all(), QStringList());
}

TEST_F(DatabaseTags, StayAsTheyAreWhenTheNewNameIsBlank)
{
    tag("a", "Old");
    library.statements.clear();
    EXPECT_TRUE(rename("Old", ""));
    EXPECT_TRUE(rename("Old", " \t "));
    EXPECT_EQ(library.statements.all(), QStringList());
}

TEST_F(DatabaseTags, AreRenamedInOneTransaction)
{
    tag("a", "Old");
    library.statements.clear();
    EXPECT_TRUE(rename("Old", "New"));
    EXPECT_EQ(
        library.statements.all(),
        (QStringList{
            QStringLiteral("BEGIN TRANSACTION"),
            QStringLiteral("INSERT OR IGNORE INTO tag_definitions (name) VALUES (?)"),
            QStringLiteral("DELETE FROM tag_definitions WHERE name = ?"),
            QStringLiteral(
                "INSERT OR IGNORE INTO tags (paper_id, tag) SELECT paper_id, ? FROM tags WHERE tag = ?"),
            QStringLiteral("DELETE FROM tags WHERE tag = ?"),
            QStringLiteral("COMMIT"),
        }));
}

TEST_F(DatabaseTags, KeepTheirNamesWhenRenamingFails)
{
    tag("a", "Old");
    library.run(
        QStringLiteral("CREATE TRIGGER refuse BEFORE DELETE ON tags BEGIN SELECT raise(ABORT, 'no'); END"));
    const auto failed = library.db.renameTag(QStringLiteral("Old"), QStringLiteral("New")).result();
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().description, u"no");
    EXPECT_EQ(pairs(), QStringList{QStringLiteral("a:Old")});
    EXPECT_EQ(library.count(QStringLiteral("tag_definitions")), 0);
}

TEST_F(DatabaseTags, AreDeletedWithTheirDefinition)
{
    tag("a", "Old");
    tag("b", "Kept");
    ASSERT_TRUE(library.service.createTag(QStringLiteral("Old")).result());
    ASSERT_TRUE(library.db.deleteTag(QStringLiteral("Old")).result());
    EXPECT_EQ(pairs(), QStringList{QStringLiteral("b:Kept")});
    EXPECT_EQ(library.count(QStringLiteral("tag_definitions")), 0);
}

TEST_F(DatabaseTags, ThatCannotBeDeletedEverywhereAreKeptEverywhere)
{
    tag("a", "Old");
    ASSERT_TRUE(library.service.createTag(QStringLiteral("Old")).result());
    library.run(QStringLiteral(
        "CREATE TRIGGER broken BEFORE DELETE ON tags BEGIN SELECT raise(ABORT, 'out of order'); END"));
    EXPECT_FALSE(library.db.deleteTag(QStringLiteral("Old")).result());
    EXPECT_EQ(pairs(), QStringList{QStringLiteral("a:Old")});
    EXPECT_EQ(library.count(QStringLiteral("tag_definitions")), 1);
}

TEST_F(DatabaseTags, OfAPaperAreReplacedTrimmedAndEachOnce)
{
    tag("a", "Old");
    tag("b", "Old");
    const QStringList tags{QStringLiteral(" One\t"), QStringLiteral("Two"), QStringLiteral("One")};
    ASSERT_TRUE(library.db.replaceTags(QStringLiteral("a"), tags).result());
    EXPECT_EQ(pairs(),
              (QStringList{QStringLiteral("a:One"), QStringLiteral("a:Two"), QStringLiteral("b:Old")}));
}

TEST_F(DatabaseTags, LoseEverySpaceSeparatorAroundTheirNamesAndNoneWithin)
{
    const QString padded = QStringLiteral("\u00A0\u2003\t To\u00A0read \u202F\u3000");
    const QStringList trimmed{QStringLiteral("To\u00A0read")};
    ASSERT_TRUE(library.db.replaceTags(QStringLiteral("a"), {padded}).result());
    EXPECT_EQ(*library.service.allTagNames().result(), trimmed);
    ASSERT_TRUE(library.db.renameTag(trimmed.first(), QStringLiteral("Other")).result());
    ASSERT_TRUE(library.db.renameTag(QStringLiteral("Other"), padded).result());
    EXPECT_EQ(*library.service.allTagNames().result(), trimmed);
    ASSERT_TRUE(library.service.createTag(padded).result());
    EXPECT_EQ(*library.service.allTagNames().result(), trimmed);
}

TEST_F(DatabaseTags, WrittenBeforeAFailureOfReplacingStay)
{
    tag("a", "Old");
    library.run(QStringLiteral("CREATE TRIGGER refuse BEFORE INSERT ON tags WHEN new.tag = 'Two' "
                               "BEGIN SELECT raise(ABORT, 'no'); END"));
    const QStringList tags{QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")};
    EXPECT_FALSE(library.db.replaceTags(QStringLiteral("a"), tags).result());
    EXPECT_EQ(pairs(), QStringList{QStringLiteral("a:One")});
}
