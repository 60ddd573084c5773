#include "indexing/Chunker.h"

#include "indexing/PaperText.h"
#include "support/Printing.h"
#include "support/Words.h"

#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;

/// "page:first-last" of each chunk of pages with this many words, the words numbered through.
std::vector<std::string> chunksOfPages(std::initializer_list<int> wordCounts)
{
    PaperText text;
    int word = 1;
    qint64 page = 1;
    for (const int count : wordCounts) {
        text.addPage(page++, words(word, word + count - 1));
        word += count;
    }
    std::vector<std::string> described;
    for (const Chunk &chunk : chunksOf(text)) {
        EXPECT_EQ(chunk.index, static_cast<qint64>(described.size()));
        const QList<QByteArray> chunkWords = chunk.text.split(' ');
        const int first = chunkWords.first().mid(1).toInt();
        const int last = chunkWords.last().mid(1).toInt();
        EXPECT_EQ(chunk.text, words(first, last));
        described.push_back(std::to_string(chunk.pageNum) + ":" + std::to_string(first) + "-" +
                            std::to_string(last));
    }
    return described;
}

TEST(Chunker, CutsNothingFromNoWords)
{
    EXPECT_THAT(chunksOfPages({}), ElementsAre());
    EXPECT_THAT(chunksOfPages({0, 0}), ElementsAre());
}

TEST(Chunker, KeepsAShortPageWhole)
{
    EXPECT_THAT(chunksOfPages({1}), ElementsAre("1:1-1"));
    EXPECT_THAT(chunksOfPages({640}), ElementsAre("1:1-640"));
}

TEST(Chunker, RepeatsTheTailOfALastChunkOfMoreThanAStride)
{
    EXPECT_THAT(chunksOfPages({641}), ElementsAre("1:1-641", "1:641-641"));
    EXPECT_THAT(chunksOfPages({700}), ElementsAre("1:1-700", "1:641-700"));
    EXPECT_THAT(chunksOfPages({768}), ElementsAre("1:1-768", "1:641-768"));
    EXPECT_THAT(chunksOfPages({1408}), ElementsAre("1:1-768", "1:641-1408", "1:1281-1408"));
}

TEST(Chunker, OverlapsTheChunksOfAPage)
{
    EXPECT_THAT(chunksOfPages({769}), ElementsAre("1:1-768", "1:641-769"));
    EXPECT_THAT(chunksOfPages({1500}), ElementsAre("1:1-768", "1:641-1408", "1:1281-1500"));
}

TEST(Chunker, EndsAChunkAtTheEndOfItsPage)
{
    EXPECT_THAT(chunksOfPages({10, 10}), ElementsAre("1:1-10", "2:11-20"));
    EXPECT_THAT(chunksOfPages({700, 10}), ElementsAre("1:1-700", "2:701-710"));
    EXPECT_THAT(chunksOfPages({768, 10}), ElementsAre("1:1-768", "2:769-778"));
    EXPECT_THAT(chunksOfPages({769, 10}), ElementsAre("1:1-768", "1:641-769", "2:770-779"));
    EXPECT_THAT(chunksOfPages({1408, 10}), ElementsAre("1:1-768", "1:641-1408", "2:1409-1418"));
}

TEST(Chunker, CutsTheLastPageWithWordsAsTheEndOfThePaper)
{
    EXPECT_THAT(chunksOfPages({10, 700, 0}), ElementsAre("1:1-10", "2:11-710", "2:651-710"));
}

TEST(Chunker, DoesNotCopyTheText)
{
    PaperText text;
    text.addPage(1, words(1, 100));
    const QList<Chunk> chunks = chunksOf(text);
    EXPECT_EQ(chunks.first().text.constData(), text.fullText().constData());
}
} // namespace
