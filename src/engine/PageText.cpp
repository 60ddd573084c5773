#include "engine/PageText.h"

#include "engine/Guarded.h"
#include "engine/Handles.h"
#include "engine/LogicalOrder.h"
#include "engine/NamedLigatures.h"
#include "engine/PageFailure.h"
#include "engine/PlacedText.h"
#include "engine/TextClusters.h"
#include "pdf/protocol/CleanText.h"
#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

namespace
{
/// The text page of `page`; nothing, with the reason in `failure`, when it cannot be had. What a page says
/// before the engine stumbles over it is kept.
TextPageHandle extracted(fz_context *context, pdf_page *page, NamedLigatures &ligatures, fz_cookie *stop,
                         std::optional<CallFailure> &failure)
{
    fz_stext_page *textPage = nullptr;
    fz_device *device = nullptr;
    fz_device *spelling = nullptr;
    failure = guarded(context, [&] {
        const fz_stext_options options = {0, 1}; // ligatures spelled out, hyphens kept, pictures ignored
        textPage = fz_new_stext_page(context, pdf_bound_page(context, page));
        device = fz_new_stext_device(context, textPage, &options);
        spelling = ligatures.newDevice(device);
        pdf_run_page(context, page, spelling, fz_identity, stop);
        fz_close_device(context, spelling);
    });
    DeviceHandle(spelling, {context}).reset();
    if (device)
        (void)guarded(context, [&] { fz_close_device(context, device); });
    DeviceHandle(device, {context}).reset();
    if (textPage && textPage->first_block)
        failure.reset();
    return {textPage, {context}};
}

bool isOutside(const fz_stext_char *c, fz_rect box)
{
    const fz_rect bounds = fz_rect_from_quad(c->quad);
    return bounds.x1 < box.x0 || bounds.x0 > box.x1 || bounds.y1 < box.y0 || bounds.y0 > box.y1;
}

/// Hides the characters that nobody sees, and makes control characters blanks. They stay in the line, which
/// holds their fonts. MuPDF can leave out what is off the page by itself, but asks for the outline of every
/// character to do so.
void clean(fz_stext_line *line, fz_rect box)
{
    const bool isInside = fz_contains_rect(box, line->bbox);
    for (fz_stext_char *c = line->first_char; c; c = c->next) {
        if (!isInside && isOutside(c, box))
            c->c = kHiddenCharacter;
        else if (isControl(static_cast<char32_t>(c->c)) && c->c != kHiddenCharacter)
            c->c = ' ';
    }
}

/// Appends the letters of the glyph of `c`, each with its part of the glyph's width; answers the character
/// after them.
const fz_stext_char *appendGlyph(PlacedText &out, const fz_stext_char *c, const fz_stext_line *line)
{
    const int letters = hasNoWidth(c, line) ? 1 : 1 + furtherLetters(c, line);
    const fz_quad whole = c->quad;
    const auto between = [](fz_point from, fz_point to, float part) {
        return fz_make_point(from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part);
    };
    for (int i = 0; i < letters; ++i, c = c->next) {
        if (c->c == kHiddenCharacter)
            continue;
        const float start = static_cast<float>(i) / static_cast<float>(letters);
        const float end = static_cast<float>(i + 1) / static_cast<float>(letters);
        const fz_quad part = {between(whole.ul, whole.ur, start), between(whole.ul, whole.ur, end),
                              between(whole.ll, whole.lr, start), between(whole.ll, whole.lr, end)};
        appendUtf8(out.unplaced(), static_cast<char32_t>(c->c));
        out.place(fz_rect_from_quad(part));
    }
    return c;
}

void appendLeftToRight(PlacedText &out, const fz_stext_line *line)
{
    if (out.wantsBoxes()) {
        for (const fz_stext_char *c = line->first_char; c;)
            c = appendGlyph(out, c, line);
        return;
    }
    for (const fz_stext_char *c = line->first_char; c; c = c->next) {
        if (c->c != kHiddenCharacter)
            appendUtf8(out.unplaced(), static_cast<char32_t>(c->c));
    }
}

void appendLine(PlacedText &out, const fz_stext_line *line)
{
    const std::size_t start = out.text().size();
    if (hasRightToLeft(line))
        appendInLogicalOrder(out, line);
    else
        appendLeftToRight(out, line);
    if (out.text().size() > start)
        out.endLine();
}

// The longest word for whose sake text is cut earlier; what is longer is no word of any language.
constexpr std::size_t kMaxWordBytes = 4096;

bool isInsideCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

/// Cuts a text that is too long behind a line or a word, or inside one that is too long for that.
void cutToLimit(PlacedText &out)
{
    const std::string &text = out.text();
    if (text.size() <= kMaxPageTextBytes)
        return;
    std::size_t end = text.find_last_of(" \n", kMaxPageTextBytes - 1);
    if (end == std::string::npos || end < kMaxPageTextBytes - kMaxWordBytes) {
        end = kMaxPageTextBytes - 1;
        while (isInsideCharacter(text[end]))
            --end;
    }
    out.cut(end);
    out.endLine();
}

PlacedText textOfLines(const fz_stext_page *page, PlacedText::Boxes boxes)
{
    PlacedText text(boxes, page->mediabox);
    for (const fz_stext_block *block = page->first_block; block; block = block->next) {
        if (block->type != FZ_STEXT_BLOCK_TEXT)
            continue;
        for (fz_stext_line *line = block->u.t.first_line; line && text.text().size() <= kMaxPageTextBytes;
             line = line->next) {
            clean(line, page->mediabox);
            appendLine(text, line);
        }
    }
    cutToLimit(text);
    return text;
}
} // namespace

Reply textOf(fz_context *context, pdf_page *page, NamedLigatures &ligatures, fz_cookie *stop)
{
    std::optional<CallFailure> failure;
    const TextPageHandle textPage = extracted(context, page, ligatures, stop, failure);
    if (failure)
        return pageFailure(*failure);
    return TextReply{textOfLines(textPage.get(), PlacedText::Boxes::Unwanted).takeText()};
}

Reply placedTextOf(fz_context *context, pdf_page *page, NamedLigatures &ligatures, fz_cookie *stop)
{
    std::optional<CallFailure> failure;
    const TextPageHandle textPage = extracted(context, page, ligatures, stop, failure);
    if (failure)
        return pageFailure(*failure);
    PlacedText text = textOfLines(textPage.get(), PlacedText::Boxes::Wanted);
    return PlacedTextReply{text.takeText(), text.takeBoxes()};
}
