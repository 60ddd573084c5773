#include "store/PaperRow.h"

#include "store/Database.h"
#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QMap>

class PaperRowTest : public testing::Test
{
protected:
    /// The paper in a row of `papers` in which every column can be replaced; one replaced by "-" is missing.
    std::optional<Paper> read(const QMap<QString, SqlValue> &replaced = {})
    {
        QMap<QString, SqlValue> values{
            {QStringLiteral("id"), QStringLiteral("a")},
            {QStringLiteral("title"), QStringLiteral("T")},
            {QStringLiteral("authors"), QStringLiteral("A")},
            {QStringLiteral("year"), qint64(2019)},
            {QStringLiteral("filepath"), QStringLiteral("/p.pdf")},
            {QStringLiteral("cover_path"), QStringLiteral("/c.jpg")},
            {QStringLiteral("page_count"), qint64(12)},
        };
        values.insert(replaced);
        values.removeIf([](const auto &value) { return value.value() == SqlValue(QStringLiteral("-")); });
        Result<Statement> row =
            m_database.prepare(u"SELECT ? AS " + QStringList(values.keys()).join(QStringLiteral(", ? AS ")),
                               SqlValues(values.begin(), values.end()));
        EXPECT_TRUE(row && row->step() == Statement::Step::Row);
        return PaperRow(*row).paper();
    }

    TemporaryFolder m_folder;
    Database m_database{m_folder.path(QStringLiteral("library.db"))};
};

TEST_F(PaperRowTest, BecomesAPaper)
{
    const Paper expected{.id = QStringLiteral("a"),
                         .title = QStringLiteral("T"),
                         .authors = QStringLiteral("A"),
                         .year = 2019,
                         .pageCount = 12,
                         .coverPath = QStringLiteral("/c.jpg"),
                         .filepath = QStringLiteral("/p.pdf"),
                         .tags = {}};
    EXPECT_EQ(read(), expected);
}

TEST_F(PaperRowTest, YieldsNoPaperWithoutIdTitleOrPath)
{
    for (const char *column : {"id", "title", "filepath"}) {
        const QString name = QLatin1String(column);
        EXPECT_EQ(read({{name, SqlValue()}}), std::nullopt) << column;
        EXPECT_EQ(read({{name, qint64(7)}}), std::nullopt) << column;
        EXPECT_EQ(read({{name, QStringLiteral("-")}}), std::nullopt) << column;
    }
}

TEST_F(PaperRowTest, TakesDefaultsForWhatIsNullMissingOrOfAnotherType)
{
    const auto expectDefaults = [](const std::optional<Paper> &found) {
        ASSERT_TRUE(found);
        EXPECT_EQ(found->authors, QString());
        EXPECT_EQ(found->year, std::nullopt);
        EXPECT_EQ(found->pageCount, 0);
        EXPECT_EQ(found->coverPath, QString());
    };
    const auto authors = QStringLiteral("authors");
    const auto year = QStringLiteral("year");
    const auto pages = QStringLiteral("page_count");
    const auto cover = QStringLiteral("cover_path");
    const SqlValue missing = QStringLiteral("-");
    expectDefaults(read({{authors, {}}, {year, {}}, {pages, {}}, {cover, {}}}));
    expectDefaults(read({{authors, missing}, {year, missing}, {pages, missing}, {cover, missing}}));
    expectDefaults(read({{authors, qint64(1)}, {year, QStringLiteral("2019")}, {pages, 1.5}, {cover, 2.5}}));
}

TEST_F(PaperRowTest, KeepsAYearOfZero)
{
    EXPECT_EQ(read({{QStringLiteral("year"), qint64(0)}})->year, 0);
}
