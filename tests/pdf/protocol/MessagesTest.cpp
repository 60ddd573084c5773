#include "pdf/protocol/Messages.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Writer.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{
using Bytes = std::vector<std::uint8_t>;

std::span<const std::uint8_t> payloadOf(const Bytes &message)
{
    return std::span(message).subspan(kHeaderBytes);
}

std::optional<MessageHeader> headerOf(const Bytes &message, std::uint32_t maxPayloadBytes)
{
    return decodedHeader(std::span(message).first<kHeaderBytes>(), maxPayloadBytes);
}

Bytes built(void (*build)(Writer &))
{
    Writer out;
    build(out);
    return out.take();
}

PictureReply picture(std::uint32_t width, std::uint32_t height)
{
    return {width, height, Bytes(std::size_t(width) * height * kBytesPerPixel, 0x7f)};
}
PageShape shape()
{
    return {600, 800, 1, {-10, -10, 610, 810}, {0, 0, 600, 800}, {1, 1, 599, 799}, {2, 2, 3, 3}};
}

bool isSound(const Reply &reply)
{
    const Bytes message = encoded(1, reply);
    return decodedReply(headerOf(message, UINT32_MAX)->kind, payloadOf(message)) == reply;
}

bool isSound(const Request &request)
{
    const Bytes message = encoded(1, request);
    return decodedRequest(headerOf(message, UINT32_MAX)->kind, payloadOf(message)) == request;
}

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
} // namespace

TEST(Messages, EveryRequestComesBackAsItWasSent)
{
    const std::vector<Request> requests = {OpenRequest{7, {}},
                                           OpenRequest{7, "caf\u00e9"},
                                           PageTextRequest{41},
                                           ThumbnailRequest{2, 300, 400},
                                           ShapesRequest{3, 1000},
                                           PlacedTextRequest{41},
                                           DrawRequest{5, 1.5f, 3, 1, 10, 20, 7680, 4320},
                                           OutlineRequest{},
                                           LinksRequest{6},
                                           PageLabelsRequest{}};
    for (const Request &request : requests) {
        const Bytes message = encoded(12, request);
        const std::optional<MessageHeader> header = headerOf(message, kMaxRequestBytes);
        ASSERT_TRUE(header);
        EXPECT_EQ(header->request, 12u);
        EXPECT_EQ(header->payloadBytes, message.size() - kHeaderBytes);
        EXPECT_EQ(decodedRequest(header->kind, payloadOf(message)), request);
    }
}

TEST(Messages, EveryReplyComesBackAsItWasSent)
{
    const std::vector<Reply> replies = {
        OpenedReply{1, 17, "A title", std::nullopt},
        OpenedReply{1, 0, std::nullopt, ""},
        TextReply{"caf\u00e9 \u05d0\n"},
        TextReply{""},
        picture(3, 2),
        ShapesReply{{shape(), std::nullopt}},
        PlacedTextReply{"\u05d0\n", {{1, 2, 3, 4}, {}}},
        DrawnReply{},
        OutlineReply{{{0, "One", PageTarget{4, 1, 2}}, {1, std::nullopt, std::nullopt}, {0, "Two", {}}}},
        LinksReply{{{{1, 2, 3, 4}, PageTarget{4, 1, 2}, {}}, {{}, std::nullopt, "https://example.org"}}},
        PageLabelsReply{{{0, LabelStyle::LowerRoman, 1, "p. "}, {4, LabelStyle::None, 1, ""}}},
        FailedReply{Failure::NeedsPassword, "why"},
        FailedReply{Failure::Stopped, ""},
    };
    for (const Reply &reply : replies) {
        const Bytes message = encoded(3, reply);
        const std::optional<MessageHeader> header = headerOf(message, UINT32_MAX);
        ASSERT_TRUE(header);
        EXPECT_EQ(decodedReply(header->kind, payloadOf(message)), reply);
    }
}

TEST(Messages, NumbersAreLittleEndian)
{
    const Bytes expected = {4, 0, 0, 0, 2, 0, 0, 0, 0x0d, 0x0c, 0x0b, 0x0a, 0x04, 0x03, 0x02, 0x01};
    EXPECT_EQ(encoded(0x0a0b0c0d, Request(PageTextRequest{0x01020304})), expected);
}

TEST(Messages, TheLargestRepliesFitIntoTheirBounds)
{
    const auto expectFit = [](const Request &request, const Reply &reply) {
        const std::size_t bytes = encoded(1, reply).size() - kHeaderBytes;
        EXPECT_LE(bytes, maxReplyBytes(request));
        EXPECT_GE(bytes + kMaxNumbersBytes, maxReplyBytes(request)) << "the bound is looser than it must be";
    };
    const std::string attribute(kMaxAttributeBytes, 'x');
    expectFit(OpenRequest{}, OpenedReply{1, 1, attribute, attribute});
    expectFit(PageTextRequest{}, TextReply{std::string(kMaxPageTextBytes, 'x')});
    expectFit(ThumbnailRequest{0, kMaxThumbnailSide, kMaxThumbnailSide},
              picture(kMaxThumbnailSide, kMaxThumbnailSide));
    expectFit(ThumbnailRequest{0, 300, 400}, picture(300, 400));
    const ShapesReply shapes = {std::vector<std::optional<PageShape>>(kMaxShapes, shape())};
    EXPECT_LE(encoded(1, shapes).size() - kHeaderBytes, maxReplyBytes(ShapesRequest{0, kMaxShapes}));
    expectFit(PlacedTextRequest{},
              PlacedTextReply{std::string(kMaxPageTextBytes, 'x'), std::vector<PageBox>(kMaxPageTextBytes)});
    const OutlineEntry item = {0, std::string(kMaxLabelBytes, 'x'), PageTarget{}};
    EXPECT_LE(encoded(1, OutlineReply{std::vector<OutlineEntry>(kMaxOutlineItems, item)}).size() -
                  kHeaderBytes,
              maxReplyBytes(OutlineRequest{}));
    const LinkEntry link = {{}, std::nullopt, "http://" + std::string(kMaxAddressBytes - 7, 'x')};
    EXPECT_LE(encoded(1, LinksReply{std::vector<LinkEntry>(kMaxLinks, link)}).size() - kHeaderBytes,
              maxReplyBytes(LinksRequest{}));
    const LabelRange range = {0, LabelStyle::Decimal, 1, std::string(kMaxLabelBytes, 'x')};
    EXPECT_LE(encoded(1, PageLabelsReply{std::vector<LabelRange>(kMaxLabelRanges, range)}).size() -
                  kHeaderBytes,
              maxReplyBytes(PageLabelsRequest{}));
    expectFit(ThumbnailRequest{0, 1, 1}, FailedReply{Failure::Unable, std::string(kMaxReasonBytes, 'x')});
}

TEST(Messages, RefusesAHeaderThatClaimsTooMuch)
{
    const auto withLength = [](std::uint32_t length) {
        Writer out;
        out.number(length);
        out.number(2);
        out.number(1);
        return out.take();
    };
    EXPECT_TRUE(headerOf(withLength(kMaxRequestBytes), kMaxRequestBytes));
    EXPECT_FALSE(headerOf(withLength(kMaxRequestBytes + 1), kMaxRequestBytes));
    EXPECT_FALSE(headerOf(withLength(0xffffffff), kMaxTextReplyBytes));
}

TEST(Messages, RefusesEveryTruncatedMessage)
{
    const std::vector<Reply> replies = {OpenedReply{1, 17, "title", "author"},
                                        TextReply{"words"},
                                        picture(2, 2),
                                        FailedReply{Failure::Damaged, "why"},
                                        ShapesReply{{shape()}},
                                        PlacedTextReply{"ab", {{}, {}}},
                                        OutlineReply{{{0, "One", PageTarget{}}}},
                                        LinksReply{{{{}, std::nullopt, "mailto:someone"}}},
                                        PageLabelsReply{{{0, LabelStyle::Decimal, 1, "p"}}}};
    for (const Reply &reply : replies) {
        const Bytes message = encoded(1, reply);
        const MessageKind kind = headerOf(message, UINT32_MAX)->kind;
        for (std::size_t size = 0; size + kHeaderBytes < message.size(); ++size)
            EXPECT_FALSE(decodedReply(kind, payloadOf(message).first(size))) << size << " of a message";
    }
}

TEST(Messages, RefusesBytesAfterTheLastField)
{
    Bytes message = encoded(1, Request(ThumbnailRequest{0, 1, 1}));
    message.push_back(0);
    EXPECT_FALSE(decodedRequest(MessageKind::Thumbnail, payloadOf(message)));
    message = encoded(1, Reply(TextReply{"words"}));
    message.push_back(0);
    EXPECT_FALSE(decodedReply(MessageKind::Text, payloadOf(message)));
}

TEST(Messages, RefusesUnknownKindsAndThoseOfTheOtherSide)
{
    const Bytes number = built([](Writer &out) { out.number(1); });
    EXPECT_TRUE(decodedRequest(MessageKind::PageText, number));
    EXPECT_FALSE(decodedRequest(MessageKind(0), number));
    EXPECT_FALSE(decodedRequest(MessageKind(77), number));
    EXPECT_FALSE(decodedRequest(MessageKind::Text, number));
    EXPECT_FALSE(decodedReply(MessageKind::PageText, number));
}

TEST(Messages, RefusesTextThatIsNotUtf8)
{
    for (const char *text : {"\xff", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xe2\x82"}) {
        EXPECT_FALSE(decodedReply(MessageKind::Text, payloadOf(encoded(1, Reply(TextReply{text})))));
        const Bytes opened = encoded(1, Reply(OpenedReply{1, 1, text, std::nullopt}));
        EXPECT_FALSE(decodedReply(MessageKind::Opened, payloadOf(opened)));
    }
}

TEST(Messages, RefusesTextsBeyondTheirLimits)
{
    const auto opened = [](std::size_t characters) {
        return encoded(1, Reply(OpenedReply{1, 1, std::string(characters, 'x'), std::nullopt}));
    };
    EXPECT_TRUE(decodedReply(MessageKind::Opened, payloadOf(opened(kMaxAttributeCharacters))));
    EXPECT_FALSE(decodedReply(MessageKind::Opened, payloadOf(opened(kMaxAttributeCharacters + 1))));
    const Bytes text = encoded(1, Reply(TextReply{std::string(kMaxPageTextBytes + 1, 'x')}));
    EXPECT_FALSE(decodedReply(MessageKind::Text, payloadOf(text)));
    const Bytes reason =
        encoded(1, Reply(FailedReply{Failure::Damaged, std::string(kMaxReasonBytes + 1, 'x')}));
    EXPECT_FALSE(decodedReply(MessageKind::Failed, payloadOf(reason)));
}

TEST(Messages, RefusesAttributesThatAreNotClean)
{
    for (const char *text :
         {"two\nlines", "a\ttab", "\x1b[2J", "\u009b", "\u2028x", " ahead", "behind\u00a0"}) {
        const Bytes title = encoded(1, Reply(OpenedReply{1, 1, text, std::nullopt}));
        EXPECT_FALSE(decodedReply(MessageKind::Opened, payloadOf(title))) << text;
        const Bytes author = encoded(1, Reply(OpenedReply{1, 1, std::nullopt, text}));
        EXPECT_FALSE(decodedReply(MessageKind::Opened, payloadOf(author))) << text;
    }
}

TEST(Messages, RefusesALengthBeyondThePayload)
{
    const Bytes text = built([](Writer &out) {
        out.number(1000);
        out.number(0);
    });
    EXPECT_FALSE(decodedReply(MessageKind::Text, text));
}

TEST(Messages, RefusesPicturesWhoseSizeAndPixelsDisagree)
{
    PictureReply reply = picture(4, 4);
    reply.pixels.pop_back();
    EXPECT_FALSE(decodedReply(MessageKind::Picture, payloadOf(encoded(1, Reply(reply)))));
    // 65536 * 65536 * 3 is 0 in 32 bits.
    EXPECT_FALSE(
        decodedReply(MessageKind::Picture, payloadOf(encoded(1, Reply(PictureReply{65536, 65536, {}})))));
    EXPECT_FALSE(decodedReply(MessageKind::Picture, payloadOf(encoded(1, Reply(PictureReply{0, 4, {}})))));
    const PictureReply tooWide = picture(kMaxThumbnailSide + 1, 1);
    EXPECT_FALSE(decodedReply(MessageKind::Picture, payloadOf(encoded(1, Reply(tooWide)))));
}

TEST(Messages, RefusesPageCountsPageNumbersAndSizesOutOfRange)
{
    EXPECT_FALSE(
        decodedReply(MessageKind::Opened, payloadOf(encoded(1, Reply(OpenedReply{1, 0x80000000, {}, {}})))));
    EXPECT_FALSE(decodedRequest(MessageKind::PageText,
                                payloadOf(encoded(1, Request(PageTextRequest{kMaxPageCount})))));
    EXPECT_FALSE(
        decodedRequest(MessageKind::Thumbnail, payloadOf(encoded(1, Request(ThumbnailRequest{0, 0, 9})))));
    const Request tooLarge = ThumbnailRequest{0, 9, kMaxThumbnailSide + 1};
    EXPECT_FALSE(decodedRequest(MessageKind::Thumbnail, payloadOf(encoded(1, tooLarge))));
}

TEST(Messages, RefusesUnknownFailuresAndPresenceOtherThanYesAndNo)
{
    for (std::uint32_t failure : {0u, 8u, 0xffffffffu})
        EXPECT_FALSE(decodedReply(MessageKind::Failed,
                                  payloadOf(encoded(1, Reply(FailedReply{Failure(failure), ""})))));
    const Bytes opened = built([](Writer &out) {
        for (std::uint32_t number : {1u, 1u, 2u, 0u, 0u})
            out.number(number);
    });
    EXPECT_FALSE(decodedReply(MessageKind::Opened, opened));
}

TEST(Messages, RefusesCoordinatesThatAreNoPlaces)
{
    for (float nonsense : {kNotANumber, kInfinity, -kInfinity, 2 * kMaxCoordinate, -2 * kMaxCoordinate}) {
        PageShape page = shape();
        page.width = nonsense;
        EXPECT_FALSE(isSound(ShapesReply{{page}}));
        page = shape();
        page.art.top = nonsense;
        EXPECT_FALSE(isSound(ShapesReply{{page}}));
        EXPECT_FALSE(isSound(PlacedTextReply{"a", {{0, 0, 1, nonsense}}}));
        EXPECT_FALSE(isSound(OutlineReply{{{0, "One", PageTarget{0, nonsense, 0}}}}));
        EXPECT_FALSE(isSound(LinksReply{{{{nonsense, 0, 1, 1}, PageTarget{}, {}}}}));
        EXPECT_FALSE(isSound(DrawRequest{0, nonsense, 0, 0, 0, 0, 1, 1}));
    }
}

TEST(Messages, RefusesPagesWithoutSizeAndTurnsBeyondFour)
{
    PageShape page = shape();
    page.height = 0;
    EXPECT_FALSE(isSound(ShapesReply{{page}}));
    page.height = -1;
    EXPECT_FALSE(isSound(ShapesReply{{page}}));
    page = shape();
    page.turns = 4;
    EXPECT_FALSE(isSound(ShapesReply{{page}}));
}

TEST(Messages, RefusesBoxesThatAreInsideOut)
{
    EXPECT_TRUE(isSound(PlacedTextReply{"a", {{1, 1, 1, 1}}}));
    EXPECT_FALSE(isSound(PlacedTextReply{"a", {{2, 1, 1, 1}}}));
    EXPECT_FALSE(isSound(PlacedTextReply{"a", {{1, 2, 1, 1}}}));
}

TEST(Messages, RefusesPlacedTextWithoutABoxForEveryCharacter)
{
    EXPECT_TRUE(isSound(PlacedTextReply{"\u00e9\U0001f600", {{}, {}}}));
    EXPECT_FALSE(isSound(PlacedTextReply{"\u00e9\U0001f600", {{}}}));
    EXPECT_FALSE(isSound(PlacedTextReply{"\u00e9\U0001f600", {{}, {}, {}}}));
    EXPECT_FALSE(isSound(PlacedTextReply{"\xff", {{}}}));
}

TEST(Messages, RefusesMoreItemsThanThereMayBe)
{
    EXPECT_FALSE(isSound(ShapesReply{std::vector<std::optional<PageShape>>(kMaxShapes + 1)}));
    EXPECT_FALSE(isSound(OutlineReply{std::vector<OutlineEntry>(kMaxOutlineItems + 1)}));
    const LinkEntry link = {{}, PageTarget{}, {}};
    EXPECT_TRUE(isSound(LinksReply{std::vector<LinkEntry>(kMaxLinks, link)}));
    EXPECT_FALSE(isSound(LinksReply{std::vector<LinkEntry>(kMaxLinks + 1, link)}));
}

TEST(Messages, ACountAloneTakesNoMemory)
{
    const Bytes count = built([](Writer &out) { out.number(kMaxOutlineItems); });
    EXPECT_FALSE(decodedReply(MessageKind::OutlineTold, count));
}

TEST(Messages, RefusesOutlinesThatSkipALevel)
{
    EXPECT_FALSE(isSound(OutlineReply{{{1, "One", {}}}}));
    EXPECT_FALSE(isSound(OutlineReply{{{0, "One", {}}, {2, "Two", {}}}}));
    std::vector<OutlineEntry> stairs;
    for (std::uint32_t depth = 0; depth < kMaxOutlineDepth; ++depth)
        stairs.push_back({depth, "Down", {}});
    EXPECT_TRUE(isSound(OutlineReply{stairs}));
    stairs.push_back({kMaxOutlineDepth, "Too far", {}});
    EXPECT_FALSE(isSound(OutlineReply{stairs}));
}

TEST(Messages, RefusesLabelsThatAreNotClean)
{
    for (const char *label : {"two\nlines", "\x1b[2J", "\u202eback", "a\u200fb", "\u2066x", "\u061cx"}) {
        EXPECT_FALSE(isSound(OutlineReply{{{0, label, {}}}})) << label;
        EXPECT_FALSE(isSound(PageLabelsReply{{{0, LabelStyle::Decimal, 1, label}}})) << label;
    }
    EXPECT_FALSE(isSound(OutlineReply{{{0, std::string(kMaxLabelCharacters + 1, 'x'), {}}}}));
}

TEST(Messages, RefusesAddressesThatAreNotOfTheWeb)
{
    for (const char *address : {"file:///etc/passwd", "javascript:alert(1)", "", "http://", "https://a b"})
        EXPECT_FALSE(isSound(LinksReply{{{{}, std::nullopt, address}}})) << address;
}

TEST(Messages, RefusesLabelRangesOutOfOrderAndNumbersBelowOne)
{
    EXPECT_FALSE(
        isSound(PageLabelsReply{{{3, LabelStyle::Decimal, 1, ""}, {3, LabelStyle::Decimal, 1, ""}}}));
    EXPECT_FALSE(
        isSound(PageLabelsReply{{{3, LabelStyle::Decimal, 1, ""}, {2, LabelStyle::Decimal, 1, ""}}}));
    EXPECT_FALSE(isSound(PageLabelsReply{{{0, LabelStyle::Decimal, 0, ""}}}));
    EXPECT_FALSE(isSound(PageLabelsReply{{{0, LabelStyle(6), 1, ""}}}));
}

TEST(Messages, RefusesDrawingsBeyondEveryScreen)
{
    EXPECT_TRUE(isSound(DrawRequest{0, 1, 0, 0, kMaxDrawingExtent, 0, 4320, 7680}));
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 0, 0, 0, 0, 4321, 7680}));
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 0, 0, 0, 0, 0, 1}));
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 0, 0, 0, 0, 1, 0}));
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 0, 0, 0, 0, 65536, 65536})); // 0 in 32 bits
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 0, 0, kMaxDrawingExtent + 1, 0, 1, 1}));
    EXPECT_FALSE(isSound(DrawRequest{0, 0, 0, 0, 0, 0, 1, 1}));
    EXPECT_FALSE(isSound(DrawRequest{0, kMaxDrawingScale + 1, 0, 0, 0, 0, 1, 1}));
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 4, 0, 0, 0, 1, 1}));
    EXPECT_FALSE(isSound(DrawRequest{0, 1, 0, 2, 0, 0, 1, 1}));
}

TEST(Messages, RefusesPasswordsThatWouldBeCut)
{
    using namespace std::string_literals;
    EXPECT_TRUE(isSound(OpenRequest{1, std::string(kMaxPasswordBytes, 'x')}));
    EXPECT_FALSE(isSound(OpenRequest{1, std::string(kMaxPasswordBytes + 1, 'x')}));
    EXPECT_FALSE(isSound(OpenRequest{1, "before\0after"s}));
    EXPECT_LE(encoded(1, OpenRequest{1, std::string(kMaxPasswordBytes, 'x')}).size(), kMaxRequestBytes);
}
