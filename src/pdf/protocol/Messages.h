#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

// What the program and its PDF engine say to each other over a stream socket. A message is a header of three
// little-endian numbers (bytes that follow, kind, request) and the fields of its struct in their order. The
// program asks, and the engine answers each request with exactly one reply that carries the request's number.
//
// To add a message: a struct, its kind, its place in `Request` or `Reply`, and its fields in Messages.cpp.
// What is too large to copy (a page drawn on a screen) travels as a sealed memory file beside its reply's
// first byte; a request that asks to stop another carries that one's number and has no reply of its own.

enum class MessageKind : std::uint32_t {
    Open = 1,
    PageText = 2,
    Thumbnail = 3,
    Opened = 0x101,
    Text = 0x102,
    Picture = 0x103,
    Failed = 0x1ff,
};

/// The first request: read the document. Nothing else is answered before it.
struct OpenRequest {
    static constexpr MessageKind kKind = MessageKind::Open;
    std::uint32_t version = 0; ///< `kProtocolVersion` of the asker
    friend bool operator==(const OpenRequest &, const OpenRequest &) = default;
};

/// Asks for the text of one page.
struct PageTextRequest {
    static constexpr MessageKind kKind = MessageKind::PageText;
    std::uint32_t page = 0; ///< 0-based
    friend bool operator==(const PageTextRequest &, const PageTextRequest &) = default;
};

/// Asks for the art box of one page, drawn to fit inside a box of pixels.
struct ThumbnailRequest {
    static constexpr MessageKind kKind = MessageKind::Thumbnail;
    std::uint32_t page = 0; ///< 0-based
    std::uint32_t maxWidth = 0;
    std::uint32_t maxHeight = 0;
    friend bool operator==(const ThumbnailRequest &, const ThumbnailRequest &) = default;
};

using Request = std::variant<OpenRequest, PageTextRequest, ThumbnailRequest>;

/// The document is open.
struct OpenedReply {
    static constexpr MessageKind kKind = MessageKind::Opened;
    std::uint32_t version = 0;
    std::uint32_t pageCount = 0; ///< as claimed by the document, cut to `kMaxPageCount`
    std::optional<std::string> title;
    std::optional<std::string> author;
    friend bool operator==(const OpenedReply &, const OpenedReply &) = default;
};

/// The text of a page: UTF-8 in logical order.
struct TextReply {
    static constexpr MessageKind kKind = MessageKind::Text;
    std::string text;
    friend bool operator==(const TextReply &, const TextReply &) = default;
};

/// A picture: rows from the top of `width` pixels of red, green and blue, without padding.
struct PictureReply {
    static constexpr MessageKind kKind = MessageKind::Picture;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> pixels;
    friend bool operator==(const PictureReply &, const PictureReply &) = default;
};

/// Why a request was not done.
enum class Failure : std::uint32_t {
    NotAPDF = 1,
    Damaged = 2,
    NeedsPassword = 3,
    PageUnavailable = 4,
    Unable = 5, ///< the engine itself cannot work: no sandbox, another version, no document open
};

struct FailedReply {
    static constexpr MessageKind kKind = MessageKind::Failed;
    Failure failure = Failure::Unable;
    std::string reason; ///< for people
    friend bool operator==(const FailedReply &, const FailedReply &) = default;
};

using Reply = std::variant<OpenedReply, TextReply, PictureReply, FailedReply>;

inline constexpr std::size_t kHeaderBytes = 12;

struct MessageHeader {
    std::uint32_t payloadBytes = 0; ///< bytes after the header
    MessageKind kind = MessageKind::Failed;
    std::uint32_t request = 0;
};

/// The whole message, header first.
std::vector<std::uint8_t> encoded(std::uint32_t requestNumber, const Request &request);
std::vector<std::uint8_t> encoded(std::uint32_t requestNumber, const Reply &reply);

/// The most bytes after the header that a sound reply to this request has.
std::uint32_t maxReplyBytes(const Request &request);

/// The header of a message that may have at most `maxPayloadBytes`; nothing when it claims more.
std::optional<MessageHeader> decodedHeader(std::span<const std::uint8_t, kHeaderBytes> bytes,
                                           std::uint32_t maxPayloadBytes);

/// The message in a payload; nothing unless every field, length and text of it is sound.
std::optional<Request> decodedRequest(MessageKind kind, std::span<const std::uint8_t> payload);
std::optional<Reply> decodedReply(MessageKind kind, std::span<const std::uint8_t> payload);
