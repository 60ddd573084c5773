#pragma once

#include <cstdint>

// What either side of the engine's socket accepts. Everything beyond is a broken peer, not a big document.

/// Raised with every change of the messages; both programs come from one build, so nothing older is
/// understood.
inline constexpr std::uint32_t kProtocolVersion = 2;

/// Of one request without its header. The largest carries a password.
inline constexpr std::uint32_t kMaxRequestBytes = 4096;

/// Of a password. Chosen: the longest that encryption looks at has 127 bytes.
inline constexpr std::uint32_t kMaxPasswordBytes = 1024;

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

/// Of a drawn clip, in pixels: a screen of 7680 by 4320.
inline constexpr std::uint32_t kMaxDrawingPixels = 7680 * 4320;
inline constexpr std::uint32_t kBytesPerDrawnPixel = 4;

/// How far clips reach from a page's upper left, in pixels. Chosen: where floats still tell pixels apart.
inline constexpr std::uint32_t kMaxDrawingExtent = 1 << 23;

/// Pixels a point. Chosen: ten times what shows the finest print.
inline constexpr float kMaxDrawingScale = 200;

/// Of any coordinate, either way, in points. Chosen: ten kilometres; pages end at 5 metres by the standard.
inline constexpr float kMaxCoordinate = 3e7f;

/// Of the pages whose shapes are told at once.
inline constexpr std::uint32_t kMaxShapes = 1000;

/// Of an outline. Chosen: twice what the longest manuals have.
inline constexpr std::uint32_t kMaxOutlineItems = 20'000;
inline constexpr std::uint32_t kMaxOutlineDepth = 100;

/// Of an outline item's label and of the prefix of page labels.
inline constexpr std::uint32_t kMaxLabelCharacters = 250;
inline constexpr std::uint32_t kMaxLabelBytes = 4 * kMaxLabelCharacters;

/// Of the ranges of pages that are numbered alike. Chosen: journals give every page one of its own.
inline constexpr std::uint32_t kMaxLabelRanges = 20'000;

/// Of the links of one page. Chosen: ten times what the fullest index has.
inline constexpr std::uint32_t kMaxLinks = 5000;
inline constexpr std::uint32_t kMaxAddressBytes = 2048;

/// Of one reply without its header, beside its texts and its picture: numbers and lengths.
inline constexpr std::uint32_t kMaxNumbersBytes = 64;

inline constexpr std::uint32_t kMaxFailedReplyBytes = kMaxReasonBytes + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxOpenedReplyBytes = 2 * kMaxAttributeBytes + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxTextReplyBytes = kMaxPageTextBytes + kMaxNumbersBytes;

/// Four coordinates.
inline constexpr std::uint32_t kBoxBytes = 16;
inline constexpr std::uint32_t kMaxPlacedTextReplyBytes =
    (1 + kBoxBytes) * kMaxPageTextBytes + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxShapeBytes = 4 * kBoxBytes + 16;
inline constexpr std::uint32_t kMaxTargetBytes = 16;
inline constexpr std::uint32_t kMaxOutlineReplyBytes =
    kMaxOutlineItems * (kMaxLabelBytes + kMaxTargetBytes + 12) + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxLinksReplyBytes =
    kMaxLinks * (kBoxBytes + kMaxTargetBytes + kMaxAddressBytes + 8) + kMaxNumbersBytes;
inline constexpr std::uint32_t kMaxPageLabelsReplyBytes =
    kMaxLabelRanges * (kMaxLabelBytes + 16) + kMaxNumbersBytes;

/// A page count is only what a document claims; this is as far as page numbers reach.
inline constexpr std::uint32_t kMaxPageCount = 0x7fffffff;
