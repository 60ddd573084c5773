#pragma once

#include "pdf/protocol/Replies.h"
#include "pdf/protocol/Requests.h"

#include <span>

// What the program and its PDF engine say to each other over a stream socket. A message is a header of three
// little-endian numbers (bytes that follow, kind, request) and the fields of its struct in their order. The
// program asks, and the engine answers each request with exactly one reply that carries the request's number.
//
// To add a message: a struct, its kind, its place in `Request` or `Reply`, and its fields in
// RequestFields.cpp or ReplyFields.cpp.
//
// What is too large to copy (a page drawn on a screen) the engine puts into a memory file of the program's,
// whose descriptor comes beside the first byte of the request. The program makes it as large as it must be
// and seals it, so that it has nothing to believe of it, and the engine needs no right to make files.
//
// A request is stopped without a message: see `StopFlag`.

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
