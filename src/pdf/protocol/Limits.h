#pragma once

#include <cstdint>

// What either side of the engine's socket accepts. Everything beyond is a broken peer, not a big document.

/// Raised with every change of the messages; both programs come from one build, so nothing older is
/// understood.
inline constexpr std::uint32_t kProtocolVersion = 1;

/// Of one request without its header. The largest has three numbers; room is left for a password.
inline constexpr std::uint32_t kMaxRequestBytes = 4096;

/// Of one page's text. Chosen: ten times what a page set solid in 4-point type holds.
inline constexpr std::uint32_t kMaxPageTextBytes = 1 << 20;

/// Of the title and of the author; UTF-8 needs at most four bytes for each character.
inline constexpr std::uint32_t kMaxAttributeCharacters = 1000;
inline constexpr std::uint32_t kMaxAttributeBytes = 4 * kMaxAttributeCharacters;

/// Of the sentence that says why something failed.
inline constexpr std::uint32_t kMaxReasonBytes = 500;

/// Of a thumbnail, in pixels on either side.
inline constexpr std::uint32_t kMaxThumbnailSide = 2048;
inline constexpr std::uint32_t kBytesPerPixel = 3;

/// Of one reply without its header, beside its texts and its picture: numbers and lengths.
inline constexpr std::uint32_t kMaxNumbersBytes = 64;

inline constexpr std::uint32_t kMaxFailedReplyBytes = kMaxReasonBytes + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxOpenedReplyBytes = 2 * kMaxAttributeBytes + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxTextReplyBytes = kMaxPageTextBytes + kMaxNumbersBytes;

/// A page count is only what a document claims; this is as far as page numbers reach.
inline constexpr std::uint32_t kMaxPageCount = 0x7fffffff;
