#pragma once

#include "engine/Handles.h"

#include <unordered_map>
#include <vector>

/// Spells out the ligatures that a font tells only by a glyph's name: "f_f_i" is ffi, of which MuPDF reads
/// the first letter alone. Fonts of whole families are made so, and every "office" set in them would be
/// "ofce".
///
/// Use from one thread. Keeps what it learnt of a document's fonts from page to page.
class NamedLigatures
{
public:
    explicit NamedLigatures(fz_context *context);
    ~NamedLigatures();
    NamedLigatures(const NamedLigatures &) = delete;
    NamedLigatures &operator=(const NamedLigatures &) = delete;

    /// A device that hands all text on to `target`, ligatures spelled out; other content is left out. Throws
    /// MuPDF's errors; both devices are the caller's, and `target` must live as long.
    fz_device *newDevice(fz_device *target);

    /// The same text with the letters of its ligatures, to be dropped; nothing when there is none in it.
    fz_text *spelledOut(const fz_text *text);

private:
    /// By glyph id the first letter of its ligature, 0 for a plain glyph; empty for a font without names.
    using Glyphs = std::vector<int>;
    static constexpr int kUnknown = -1; ///< not asked for yet

    Glyphs &glyphsOf(fz_font *font);
    bool hasLigature(const fz_text_span *span);
    bool isLigature(const fz_text_span *span, int item, Glyphs &glyphs);
    void forget();

    fz_context *m_context;
    std::unordered_map<fz_font *, Glyphs> m_fonts; ///< each kept, so that no other font takes its address
};
