// What becomes of the file in the hands of others: damaged, removed, of another version, used by several.
#include "support/Printing.h"
#include "systemsearch/FileSearchIndex.h"
#include "systemsearch/PublishedItems.h"

#include <QDir>
#include <future>
#include <thread>

class ItemFileTest : public PublishedItems
{
protected:
    const SearchableItem m_knots = item(QStringLiteral("a"), {.title = QStringLiteral("Knots")});

    void write(const QByteArray &content)
    {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Publishes as the program does; answers the error.
    std::optional<Error> publish(const QList<SearchableItem> &items)
    {
        std::optional<Error> failure;
        {
            FileSearchIndex index(m_path);
            index.indexItems(items, [&](const std::optional<Error> &error) { failure = error; });
        }
        return failure;
    }
};

TEST_F(ItemFileTest, IsMadeWithItsFolder)
{
    ItemFile file(m_folder.path(QStringLiteral("a/b/search.db")));
    EXPECT_TRUE(file.forWriting());
}

TEST_F(ItemFileTest, OfRubbishIsMadeAnewByTheNextPublication)
{
    write("This is no database, and long enough for nobody to take it for one. " + QByteArray(4096, 'x'));
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList());
    EXPECT_EQ(publish({m_knots}), std::nullopt);
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("a")));
}

TEST_F(ItemFileTest, ThatIsEmptyIsMadeAnew)
{
    write("");
    EXPECT_EQ(publish({m_knots}), std::nullopt);
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("a")));
}

TEST_F(ItemFileTest, OfAnotherVersionIsMadeAnew)
{
    put({m_knots});
    ASSERT_TRUE(database().execute(QStringLiteral("PRAGMA user_version = 99")));
    ItemSearch other(m_path);
    EXPECT_EQ(other.find({QStringLiteral("knots")}), QStringList());
    EXPECT_EQ(publish({item(QStringLiteral("b"), {.title = QStringLiteral("Knots")})}), std::nullopt);
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList(QStringLiteral("b")));
}

TEST_F(ItemFileTest, DamagedInTheMiddleIsThrownAwayByWhoeverMeetsTheDamage)
{
    QList<SearchableItem> items;
    for (int i = 0; i < 2000; ++i)
        items.append(item(QString::number(i), {.title = QStringLiteral("Knots %1").arg(i)}));
    ASSERT_EQ(publish(items), std::nullopt);
    QFile file(m_path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    constexpr qint64 kPage = 4096;
    for (qint64 at = kPage; at < file.size(); at += kPage) {
        file.seek(at);
        file.write(QByteArray(kPage, '\xff'));
    }
    file.close();
    EXPECT_EQ(publish(items), std::nullopt);
    EXPECT_EQ(find(QStringLiteral("knots")).size(), 20);
    EXPECT_EQ(m_search.papers({QStringLiteral("1999")}).size(), 1);
}

TEST_F(ItemFileTest, ThatASearchFindsDamagedIsThrownAway)
{
    ASSERT_EQ(publish({m_knots}), std::nullopt);
    ItemFile file(m_path);
    ASSERT_TRUE(file.forReading());
    EXPECT_FALSE(file.discardIfDamaged({QStringLiteral("DatabaseManager"), 5, {}, {}}));
    EXPECT_TRUE(QFile::exists(m_path));
    EXPECT_TRUE(file.discardIfDamaged({QStringLiteral("DatabaseManager"), 11, {}, {}}));
    EXPECT_FALSE(QFile::exists(m_path));
}

TEST_F(ItemFileTest, IsNotThrownAwayByWhoFoundAnEarlierOneDamaged)
{
    ASSERT_EQ(publish({m_knots}), std::nullopt);
    ItemFile late(m_path);
    ASSERT_TRUE(late.forReading());
    QFile::remove(m_path);
    ASSERT_EQ(publish({m_knots}), std::nullopt);
    EXPECT_TRUE(late.discardIfDamaged({QStringLiteral("DatabaseManager"), 11, {}, {}}));
    EXPECT_EQ(find(QStringLiteral("knots")).size(), 1);
}

TEST_F(ItemFileTest, RemovedWhileItIsInUseIsMadeAgain)
{
    put({m_knots});
    QFile::remove(m_path);
    put({m_knots});
    EXPECT_EQ(find(QStringLiteral("knots")).size(), 1);
}

TEST_F(ItemFileTest, ThatCannotBeMadeIsAnErrorThatNamesIt)
{
    const QString path = m_folder.write(QStringLiteral("file"), "") + u"/search.db";
    std::optional<Error> failure;
    {
        FileSearchIndex index(path);
        index.indexItems({m_knots}, [&](const std::optional<Error> &error) { failure = error; });
    }
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->message().contains(path)) << failure->message().toStdString();
}

TEST_F(ItemFileTest, IsMadeOnceByManyWhoWriteAtOnce)
{
    constexpr int kWriters = 8;
    std::vector<std::future<std::optional<Error>>> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        writers.push_back(std::async(std::launch::async, [this, writer] {
            QList<SearchableItem> items;
            for (int i = 0; i < 50; ++i)
                items.append(
                    item(QStringLiteral("%1-%2").arg(writer).arg(i), {.title = QStringLiteral("Knots")}));
            return publish(items);
        }));
    }
    for (auto &writer : writers)
        EXPECT_EQ(writer.get(), std::nullopt);
    EXPECT_EQ(database().number(QStringLiteral("SELECT count(*) FROM items")).value(), kWriters * 50);
}
