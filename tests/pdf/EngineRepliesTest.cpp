// What the program makes of an engine that answers nonsense.
#include "EngineSample.h"
#include "FakeEngine.h"

namespace
{
using namespace std::chrono_literals;

/// The code with which opening fails when the engine sends `bytes` and waits.
PDFErrorCode codeForReply(const QByteArray &bytes)
{
    const FakeEngine engine({bytes});
    const OpenResult result = oneWord().open(engine.program());
    EXPECT_FALSE(result);
    EXPECT_FALSE(hasChildren());
    return codeOf(result.error());
}
} // namespace

TEST(EngineReplies, BrokenRepliesEndTheEngine)
{
    const std::uint32_t opened = std::uint32_t(MessageKind::Opened);
    EXPECT_EQ(codeForReply("this is no message of the protocol"), PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(numbers({0xffffffff, opened, 1})), PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(numbers({kMaxOpenedReplyBytes + 1, opened, 1})), PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(numbers({4, opened, 1, 1})), PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(numbers({16, opened, 1, kProtocolVersion, 0xffffffff, 0, 0})),
              PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(numbers({0, 0x777, 1})), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesRepliesToAnotherRequestOrOfAnotherKind)
{
    EXPECT_EQ(codeForReply(FakeEngine::reply(2, OpenedReply{kProtocolVersion, 1, {}, {}})),
              PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(FakeEngine::reply(1, TextReply{"words"})), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesAnotherVersion)
{
    EXPECT_EQ(codeForReply(FakeEngine::opened(1, kProtocolVersion + 1)), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesAttributesThatAreNotClean)
{
    EXPECT_EQ(codeForReply(FakeEngine::reply(1, OpenedReply{kProtocolVersion, 1, "\x1b[2J", std::nullopt})),
              PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeForReply(FakeEngine::reply(1, OpenedReply{kProtocolVersion, 1, std::nullopt, " author"})),
              PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesAReplyLargerThanAnySoundOne)
{
    const FakeEngine engine(
        {FakeEngine::opened(), numbers({kMaxTextReplyBytes + 1, std::uint32_t(MessageKind::Text), 2})});
    const OpenResult document = oneWord().open(engine.program(), {.pageText = 1h});
    ASSERT_TRUE(document);
    EXPECT_EQ(codeOf((*document)->pageText(0).error()), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesAPictureLargerThanAsked)
{
    const PictureReply picture = {20, 10, std::vector<std::uint8_t>(20 * 10 * kBytesPerPixel)};
    const FakeEngine engine({FakeEngine::opened(), FakeEngine::reply(2, picture)});
    const OpenResult document = oneWord().open(engine.program());
    ASSERT_TRUE(document);
    EXPECT_EQ(codeOf((*document)->thumbnail(0, 19, 10).error()), PDFErrorCode::EngineFailed);
}
