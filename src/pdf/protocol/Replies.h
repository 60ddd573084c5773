#pragma once

#include "pdf/protocol/Requests.h"

#include <vector>

// What the engine answers. Coordinates are points from the upper left of a page as it is shown, after its
// rotation.

/// A rectangle; its edges are in order.
struct PageBox {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;
    friend bool operator==(const PageBox &, const PageBox &) = default;
};

/// A place to go to.
struct PageTarget {
    std::uint32_t page = 0;
    float x = 0;
    float y = 0;
    friend bool operator==(const PageTarget &, const PageTarget &) = default;
};

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

/// Size, rotation and boxes of a page.
struct PageShape {
    float width = 0; ///< greater than 0, as is the height
    float height = 0;
    std::uint32_t turns = 0; ///< the page's rotation in quarters clockwise
    PageBox media;
    PageBox bleed;
    PageBox trim;
    PageBox art;
    friend bool operator==(const PageShape &, const PageShape &) = default;
};

/// One entry a page asked for; nothing for one that cannot be had.
struct ShapesReply {
    static constexpr MessageKind kKind = MessageKind::ShapesTold;
    std::vector<std::optional<PageShape>> shapes;
    friend bool operator==(const ShapesReply &, const ShapesReply &) = default;
};

/// The text of a page, the same as in a `TextReply`, and one box for each of its characters.
struct PlacedTextReply {
    static constexpr MessageKind kKind = MessageKind::TextPlaced;
    std::string text;
    std::vector<PageBox> boxes; ///< empty ones for line ends
    friend bool operator==(const PlacedTextReply &, const PlacedTextReply &) = default;
};

/// The memory file of the request is filled, and the engine has let go of it.
struct DrawnReply {
    static constexpr MessageKind kKind = MessageKind::Drawn;
    friend bool operator==(const DrawnReply &, const DrawnReply &) = default;
};

struct OutlineEntry {
    std::uint32_t depth = 0;          ///< 0 at the top; at most one more than that of the entry before
    std::optional<std::string> label; ///< clean (`isCleanLabel`)
    std::optional<PageTarget> target;
    friend bool operator==(const OutlineEntry &, const OutlineEntry &) = default;
};

/// The outline as one list: every entry is followed by those below it.
struct OutlineReply {
    static constexpr MessageKind kKind = MessageKind::OutlineTold;
    std::vector<OutlineEntry> entries;
    friend bool operator==(const OutlineReply &, const OutlineReply &) = default;
};

struct LinkEntry {
    PageBox box;
    std::optional<PageTarget> target;
    std::string address; ///< of the web where there is no target: `isWebAddress`
    friend bool operator==(const LinkEntry &, const LinkEntry &) = default;
};

struct LinksReply {
    static constexpr MessageKind kKind = MessageKind::LinksTold;
    std::vector<LinkEntry> links;
    friend bool operator==(const LinksReply &, const LinksReply &) = default;
};

enum class LabelStyle : std::uint32_t {
    None = 0, ///< the prefix alone
    Decimal = 1,
    UpperRoman = 2,
    LowerRoman = 3,
    UpperLetters = 4,
    LowerLetters = 5,
};

/// How the pages from `firstPage` up to the next range are numbered.
struct LabelRange {
    std::uint32_t firstPage = 0; ///< greater than that of the range before
    LabelStyle style = LabelStyle::None;
    std::uint32_t firstNumber = 1; ///< at least 1
    std::string prefix;
    friend bool operator==(const LabelRange &, const LabelRange &) = default;
};

struct PageLabelsReply {
    static constexpr MessageKind kKind = MessageKind::PageLabelsTold;
    std::vector<LabelRange> ranges;
    friend bool operator==(const PageLabelsReply &, const PageLabelsReply &) = default;
};

/// Why a request was not done.
enum class Failure : std::uint32_t {
    NotAPDF = 1,
    Damaged = 2,
    NeedsPassword = 3,
    PageUnavailable = 4,
    Unable = 5, ///< the engine itself cannot work: no sandbox, another version, no document open
    WrongPassword = 6,
    Stopped = 7, ///< by the program
};

struct FailedReply {
    static constexpr MessageKind kKind = MessageKind::Failed;
    Failure failure = Failure::Unable;
    std::string reason; ///< for people
    friend bool operator==(const FailedReply &, const FailedReply &) = default;
};

using Reply = std::variant<OpenedReply, TextReply, PictureReply, ShapesReply, PlacedTextReply, DrawnReply,
                           OutlineReply, LinksReply, PageLabelsReply, FailedReply>;
