#pragma once

#include "pdf/protocol/Replies.h"

#include <mupdf/fitz.h>
#include <string>
#include <vector>

/// Text under construction: UTF-8, and the box of every character where boxes are wanted.
class PlacedText
{
public:
    enum class Boxes { Wanted, Unwanted };

    /// Boxes end at `bounds`.
    PlacedText(Boxes boxes, fz_rect bounds);

    bool wantsBoxes() const { return m_boxesAre == Boxes::Wanted; }
    const std::string &text() const { return m_text; }

    /// Where to append characters; `place` tells afterwards where they stand.
    std::string &unplaced() { return m_text; }
    /// Gives `box` to every character that was appended and has none yet.
    void place(fz_rect box);
    /// Appends the end of a line, which stands nowhere.
    void endLine();
    /// Keeps the first `bytes` of the text, which end with a character.
    void cut(std::size_t bytes);

    std::string takeText() { return std::move(m_text); }
    std::vector<PageBox> takeBoxes() { return std::move(m_boxes); }

private:
    void placeAll(const PageBox &box);

    Boxes m_boxesAre;
    fz_rect m_bounds;
    std::string m_text;
    std::size_t m_placedBytes = 0;
    std::vector<PageBox> m_boxes;
};
