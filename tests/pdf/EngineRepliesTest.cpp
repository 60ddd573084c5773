// What the program makes of an engine that answers nonsense.
#include "EngineSample.h"
#include "FakeEngine.h"

#include <limits>

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
/// The code with which `ask` fails when the engine of a document of `pageCount` pages answers `reply`.
template <typename Ask> PDFErrorCode codeFor(const Reply &reply, const Ask &ask, std::uint32_t pageCount = 3)
{
    const FakeEngine engine({FakeEngine::opened(pageCount), FakeEngine::reply(2, reply)});
    const OpenResult document = oneWord().open(engine.program());
    const auto result = ask(**document);
    EXPECT_FALSE(result);
    EXPECT_FALSE(hasChildren()) << "an engine that answers nonsense is not asked again";
    return codeOf(result.error());
}

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

const auto askGeometries = [](PDFDocument &document) {
    return document.pageGeometries(0, 2);
};
const auto askText = [](PDFDocument &document) {
    return document.placedText(0);
};
const auto askOutline = [](PDFDocument &document) {
    return document.outline();
};
const auto askLinks = [](PDFDocument &document) {
    return document.links(0);
};
const auto askLabels = [](PDFDocument &document) {
    return document.pageLabels();
};
const auto askDrawing = [](PDFDocument &document) {
    return document.draw(0, {.clip = QRect(0, 0, 10, 10)});
};
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

TEST(EngineReplies, RefusesShapesThatAreNone)
{
    const PageShape sound = {100, 100, 0, {}, {}, {}, {}};
    PageShape nowhere = sound;
    nowhere.media.left = kNotANumber;
    EXPECT_EQ(codeFor(ShapesReply{{sound, nowhere}}, askGeometries), PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeFor(ShapesReply{{sound}}, askGeometries), PDFErrorCode::EngineFailed) << "one too few";
    EXPECT_EQ(codeFor(ShapesReply{{sound, sound, sound}}, askGeometries), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesTextWhoseBoxesAreNone)
{
    EXPECT_EQ(codeFor(PlacedTextReply{"ab", {{}, {0, 0, kNotANumber, 0}}}, askText),
              PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeFor(PlacedTextReply{"ab", {{}}}, askText), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesPlacesBeyondTheDocument)
{
    EXPECT_EQ(codeFor(OutlineReply{{{0, "One", PageTarget{3, 0, 0}}}}, askOutline),
              PDFErrorCode::EngineFailed);
    EXPECT_EQ(codeFor(LinksReply{{{{}, PageTarget{3, 0, 0}, {}}}}, askLinks), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesOutlinesThatAreNoTree)
{
    EXPECT_EQ(codeFor(OutlineReply{{{0, "One", {}}, {2, "Two", {}}}}, askOutline),
              PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesAddressesThatStartPrograms)
{
    EXPECT_EQ(codeFor(LinksReply{{{{}, std::nullopt, "file:///usr/bin/true"}}}, askLinks),
              PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesPageLabelsOutOfOrder)
{
    const LabelRange range = {1, LabelStyle::Decimal, 1, ""};
    EXPECT_EQ(codeFor(PageLabelsReply{{range, range}}, askLabels), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesAnotherReplyThanADrawing)
{
    EXPECT_EQ(codeFor(TextReply{"drawn"}, askDrawing), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, RefusesToHaveStoppedWhatNobodyStopped)
{
    EXPECT_EQ(codeFor(FailedReply{Failure::Stopped, ""}, askDrawing), PDFErrorCode::EngineFailed);
}

TEST(EngineReplies, AnEngineThatDrawsNothingGivesAnEmptyPicture)
{
    const FakeEngine engine({FakeEngine::opened(), FakeEngine::reply(2, DrawnReply{})});
    const OpenResult document = oneWord().open(engine.program());
    const PDFPagePicture picture = askDrawing(**document).value();
    EXPECT_EQ(picture.pixels()[10 * 10 * 4 - 1], 0);
}

TEST(EngineReplies, BelievesWhatIsSound)
{
    const FakeEngine engine(
        {FakeEngine::opened(), FakeEngine::reply(2, PlacedTextReply{"\ufeffa", {{}, {1, 2, 3, 4}}})});
    const OpenResult document = oneWord().open(engine.program());
    const PDFPageText text = (*document)->placedText(0).value();
    EXPECT_EQ(text.string().size(), 2) << "a byte order mark is a character like others";
    EXPECT_EQ(text.bounds({1, 2}), QRectF(1, 2, 2, 2));
}
