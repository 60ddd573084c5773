#include "systemsearch/FileSearchIndex.h"
#include "support/Printing.h"
#include "systemsearch/PublishedItems.h"

#include <future>

class FileSearchIndexTest : public PublishedItems
{
protected:
    static void expectNone(const std::optional<Error> &error)
    {
        EXPECT_FALSE(error) << (error ? error->message() : QString()).toStdString();
    }

    const SearchableItem m_knots = item(QStringLiteral("a"), {.title = QStringLiteral("Knots")});
    const SearchableItem m_links = item(QStringLiteral("b"), {.title = QStringLiteral("Links")});
};

TEST_F(FileSearchIndexTest, DoesWhatItIsToldInOrderBeforeItEnds)
{
    {
        FileSearchIndex index(m_path);
        index.indexItems({m_knots, m_links}, expectNone);
        index.deleteItems({QStringLiteral("a")}, expectNone);
    }
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList());
    EXPECT_EQ(find(QStringLiteral("links")), QStringList(QStringLiteral("b")));
}

TEST_F(FileSearchIndexTest, HoldsOnlyTheWholeListAfterIt)
{
    std::promise<void> done;
    FileSearchIndex index(m_path);
    index.indexItems({m_knots}, expectNone);
    index.replaceItems({m_links}, [&](const std::optional<Error> &error) {
        expectNone(error);
        done.set_value();
    });
    done.get_future().wait();
    EXPECT_EQ(find(QStringLiteral("knots")), QStringList());
    EXPECT_EQ(find(QStringLiteral("links")), QStringList(QStringLiteral("b")));
}

TEST_F(FileSearchIndexTest, StartsNothingBeforeItIsTold)
{
    {
        FileSearchIndex index(m_path);
    }
    EXPECT_FALSE(QFile::exists(m_path));
}
