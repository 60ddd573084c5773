#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

// What the program asks of its PDF engine. Pages count from 0.

enum class MessageKind : std::uint32_t {
    Open = 1,
    PageText = 2,
    Thumbnail = 3,
    Shapes = 4,
    PlacedText = 5,
    Draw = 6,
    Outline = 7,
    Links = 8,
    PageLabels = 9,
    Opened = 0x101,
    Text = 0x102,
    Picture = 0x103,
    ShapesTold = 0x104,
    TextPlaced = 0x105,
    Drawn = 0x106,
    OutlineTold = 0x107,
    LinksTold = 0x108,
    PageLabelsTold = 0x109,
    Failed = 0x1ff,
};

/// The first request: read the document. Nothing else is answered before it. The memory of a `StopFlag` may
/// come beside it.
struct OpenRequest {
    static constexpr MessageKind kKind = MessageKind::Open;
    std::uint32_t version = 0;           ///< `kProtocolVersion` of the asker
    std::optional<std::string> password; ///< what a person entered, without NUL
    friend bool operator==(const OpenRequest &, const OpenRequest &) = default;
};

/// Asks for the text of one page.
struct PageTextRequest {
    static constexpr MessageKind kKind = MessageKind::PageText;
    std::uint32_t page = 0;
    friend bool operator==(const PageTextRequest &, const PageTextRequest &) = default;
};

/// Asks for the art box of one page, drawn to fit inside a box of pixels.
struct ThumbnailRequest {
    static constexpr MessageKind kKind = MessageKind::Thumbnail;
    std::uint32_t page = 0;
    std::uint32_t maxWidth = 0;
    std::uint32_t maxHeight = 0;
    friend bool operator==(const ThumbnailRequest &, const ThumbnailRequest &) = default;
};

/// Asks for size, boxes and rotation of `count` pages from `firstPage` on.
struct ShapesRequest {
    static constexpr MessageKind kKind = MessageKind::Shapes;
    std::uint32_t firstPage = 0;
    std::uint32_t count = 0;
    friend bool operator==(const ShapesRequest &, const ShapesRequest &) = default;
};

/// Asks for the text of one page with the box of every character.
struct PlacedTextRequest {
    static constexpr MessageKind kKind = MessageKind::PlacedText;
    std::uint32_t page = 0;
    friend bool operator==(const PlacedTextRequest &, const PlacedTextRequest &) = default;
};

/// Asks for a part of a page, drawn into the memory file that comes beside the request: `height` rows from
/// the top of `width` pixels of blue, green, red and 255.
struct DrawRequest {
    static constexpr MessageKind kKind = MessageKind::Draw;
    std::uint32_t page = 0;
    float scale = 1;          ///< pixels a point
    std::uint32_t turns = 0;  ///< quarters clockwise, added to the page's own rotation
    std::uint32_t isDark = 0; ///< 1: colours inverted by their lightness, pictures left alone
    std::uint32_t left = 0;   ///< of the part in the whole page, in pixels
    std::uint32_t top = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    friend bool operator==(const DrawRequest &, const DrawRequest &) = default;
};

struct OutlineRequest {
    static constexpr MessageKind kKind = MessageKind::Outline;
    friend bool operator==(const OutlineRequest &, const OutlineRequest &) = default;
};

/// Asks for the links of one page.
struct LinksRequest {
    static constexpr MessageKind kKind = MessageKind::Links;
    std::uint32_t page = 0;
    friend bool operator==(const LinksRequest &, const LinksRequest &) = default;
};

/// Asks how the document numbers its pages.
struct PageLabelsRequest {
    static constexpr MessageKind kKind = MessageKind::PageLabels;
    friend bool operator==(const PageLabelsRequest &, const PageLabelsRequest &) = default;
};

using Request = std::variant<OpenRequest, PageTextRequest, ThumbnailRequest, ShapesRequest, PlacedTextRequest,
                             DrawRequest, OutlineRequest, LinksRequest, PageLabelsRequest>;
