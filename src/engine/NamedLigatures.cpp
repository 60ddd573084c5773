#include "engine/NamedLigatures.h"

#include "engine/Guarded.h"

#include <array>
#include <cstring>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace
{
// Fonts remembered at once; a document with more is relearnt in parts. Chosen: papers have some ten.
constexpr std::size_t kMaxFonts = 256;

// The longest name of a glyph that PostScript allows has 127 characters.
using GlyphName = std::array<char, 128>;

FT_Face faceOf(fz_context *context, fz_font *font)
{
    return static_cast<FT_Face>(fz_font_ft_face(context, font));
}

/// The characters that a glyph's name spells; none unless it names two or more letters that are all known.
struct Letters {
    std::array<int, 8> unicode = {};
    std::size_t count = 0;
};

Letters spelledBy(GlyphName &name)
{
    // What follows a dot only tells variants of one glyph apart.
    if (char *dot = std::strchr(name.data(), '.'))
        *dot = '\0';
    Letters letters;
    char *rest = nullptr;
    for (const char *part = strtok_r(name.data(), "_", &rest); part; part = strtok_r(nullptr, "_", &rest)) {
        const int unicode = fz_unicode_from_glyph_name_strict(part);
        if (unicode <= 0 || letters.count == letters.unicode.size())
            return {};
        letters.unicode[letters.count++] = unicode;
    }
    return letters.count > 1 ? letters : Letters();
}

Letters lettersOf(FT_Face face, int glyph)
{
    GlyphName name;
    if (FT_Get_Glyph_Name(face, static_cast<FT_UInt>(glyph), name.data(), name.size()) != 0)
        return {};
    return spelledBy(name);
}

fz_matrix placeOf(const fz_text_span *span, const fz_text_item &item)
{
    fz_matrix place = span->trm;
    place.e = item.x;
    place.f = item.y;
    return place;
}

/// Adds the item and, without glyphs of their own, the letters of its ligature but the first: so MuPDF writes
/// the further characters of any glyph.
void show(fz_context *context, fz_text *text, const fz_text_span *span, const fz_text_item &item,
          const Letters &letters)
{
    const fz_matrix place = placeOf(span, item);
    const auto add = [&](int glyph, int unicode) {
        fz_show_glyph(context, text, span->font, place, glyph, unicode, span->wmode, span->bidi_level,
                      static_cast<fz_bidi_direction>(span->markup_dir),
                      static_cast<fz_text_language>(span->language));
    };
    add(item.gid, item.ucs);
    for (std::size_t i = 1; i < letters.count; ++i)
        add(-1, letters.unicode[i]);
}

/// Hands text on and knows nothing else. MuPDF makes it, as its devices are made: without a constructor.
struct SpellingDevice {
    fz_device super;
    fz_device *target;
    NamedLigatures *ligatures;
};

/// Calls `handOn` with the text as it is to be read. Neither it nor anything here has a destructor to skip
/// when MuPDF jumps.
template <typename HandOn>
void spell(fz_context *context, fz_device *device, const fz_text *text, const HandOn &handOn)
{
    const auto *spelling = reinterpret_cast<SpellingDevice *>(device);
    fz_text *spelled = spelling->ligatures->spelledOut(text);
    if (!spelled)
        return handOn(spelling->target, text);
    // A text that cannot be handed on is lost alone: memory has run out.
    (void)guarded(context, [&] { handOn(spelling->target, spelled); });
    fz_drop_text(context, spelled);
}

void fillText(fz_context *context, fz_device *device, const fz_text *text, fz_matrix place,
              fz_colorspace *space, const float *color, float alpha, fz_color_params parameters)
{
    spell(context, device, text, [&](fz_device *target, const fz_text *spelled) {
        fz_fill_text(context, target, spelled, place, space, color, alpha, parameters);
    });
}

void strokeText(fz_context *context, fz_device *device, const fz_text *text, const fz_stroke_state *stroke,
                fz_matrix place, fz_colorspace *space, const float *color, float alpha,
                fz_color_params parameters)
{
    spell(context, device, text, [&](fz_device *target, const fz_text *spelled) {
        fz_stroke_text(context, target, spelled, stroke, place, space, color, alpha, parameters);
    });
}

void ignoreText(fz_context *context, fz_device *device, const fz_text *text, fz_matrix place)
{
    spell(context, device, text, [&](fz_device *target, const fz_text *spelled) {
        fz_ignore_text(context, target, spelled, place);
    });
}

// Text that clips is handed on as text alone: the end of its clip is not handed on, so that the target would
// note one clip more for each until the page ends.
void clipText(fz_context *context, fz_device *device, const fz_text *text, fz_matrix place, fz_rect)
{
    ignoreText(context, device, text, place);
}

void clipStrokeText(fz_context *context, fz_device *device, const fz_text *text, const fz_stroke_state *,
                    fz_matrix place, fz_rect)
{
    ignoreText(context, device, text, place);
}
} // namespace

NamedLigatures::NamedLigatures(fz_context *context)
    : m_context(context)
{
}

NamedLigatures::~NamedLigatures()
{
    forget();
}

fz_device *NamedLigatures::newDevice(fz_device *target)
{
    auto *device =
        reinterpret_cast<SpellingDevice *>(fz_new_device_of_size(m_context, sizeof(SpellingDevice)));
    device->target = target;
    device->ligatures = this;
    device->super.fill_text = fillText;
    device->super.stroke_text = strokeText;
    device->super.clip_text = clipText;
    device->super.clip_stroke_text = clipStrokeText;
    device->super.ignore_text = ignoreText;
    return &device->super;
}

fz_text *NamedLigatures::spelledOut(const fz_text *text)
{
    bool isPlain = true;
    for (const fz_text_span *span = text->head; span && isPlain; span = span->next)
        isPlain = !hasLigature(span);
    if (isPlain)
        return nullptr;

    fz_text *spelled = nullptr;
    const bool isComplete = !guarded(m_context, [&] {
        spelled = fz_new_text(m_context);
        for (const fz_text_span *span = text->head; span; span = span->next) {
            Glyphs &glyphs = glyphsOf(span->font);
            for (int i = 0; i < span->len; ++i)
                show(m_context, spelled, span, span->items[i],
                     isLigature(span, i, glyphs)
                         ? lettersOf(faceOf(m_context, span->font), span->items[i].gid)
                         : Letters());
        }
    });
    if (isComplete)
        return spelled;
    fz_drop_text(m_context, spelled);
    return nullptr;
}

NamedLigatures::Glyphs &NamedLigatures::glyphsOf(fz_font *font)
{
    if (const auto known = m_fonts.find(font); known != m_fonts.end())
        return known->second;
    if (m_fonts.size() >= kMaxFonts)
        forget();
    const FT_Face face = faceOf(m_context, font);
    const bool hasNames = face && FT_HAS_GLYPH_NAMES(face) && face->num_glyphs > 0;
    const std::size_t count = hasNames ? static_cast<std::size_t>(face->num_glyphs) : 0;
    return m_fonts.emplace(fz_keep_font(m_context, font), Glyphs(count, kUnknown)).first->second;
}

bool NamedLigatures::hasLigature(const fz_text_span *span)
{
    Glyphs &glyphs = glyphsOf(span->font);
    if (glyphs.empty())
        return false;
    for (int i = 0; i < span->len; ++i) {
        if (isLigature(span, i, glyphs))
            return true;
    }
    return false;
}

/// Whether the item is a ligature of which only the first letter is there. Where the font's own map gives
/// them all, it gives a character for the whole, or the others follow without a glyph.
bool NamedLigatures::isLigature(const fz_text_span *span, int item, Glyphs &glyphs)
{
    const fz_text_item &shown = span->items[item];
    if (shown.gid < 0 || static_cast<std::size_t>(shown.gid) >= glyphs.size())
        return false;
    int &first = glyphs[static_cast<std::size_t>(shown.gid)];
    if (first == kUnknown)
        first = lettersOf(faceOf(m_context, span->font), shown.gid).unicode[0];
    const bool isSpelled = item + 1 < span->len && span->items[item + 1].gid < 0;
    return first != 0 && first == shown.ucs && !isSpelled;
}

void NamedLigatures::forget()
{
    for (const auto &[font, glyphs] : m_fonts)
        fz_drop_font(m_context, font);
    m_fonts.clear();
}
