#pragma once

#include <mupdf/fitz.h>
#include <string>
#include <vector>

/// Characters of a line that keep their order when the line is turned round: a letter with its marks, or all
/// that one glyph stands for.
struct TextCluster {
    char32_t base = 0;
    std::u32string rest;
    fz_rect box = fz_empty_rect; ///< of the whole glyph, on the page
};

/// Stands in a line for a character that is not to be seen.
inline constexpr int kHiddenCharacter = 0;

/// Whether a character is of a script that is written from right to left.
bool isRightToLeft(char32_t character);

/// Whether a character takes no room along its line: a mark, or a further letter of the glyph before it.
bool hasNoWidth(const fz_stext_char *c, const fz_stext_line *line);

/// How many characters without width follow `c` when not all of them are marks: then they are the further
/// letters of the glyph of `c`. 0 otherwise.
int furtherLetters(const fz_stext_char *c, const fz_stext_line *line);

/// The clusters of a line in the order in which they were drawn.
std::vector<TextCluster> clustersOf(const fz_stext_line *line);

/// Whether the right-to-left letters of a line were drawn from right to left, so that they are in logical
/// order already. Most programs draw every line from left to right.
bool isDrawnRightToLeft(const fz_stext_line *line);

/// The characters of a line in the order in which they were drawn, with a blank for each gap between two that
/// were drawn from right to left: MuPDF adds blanks only in the other direction. Each is a cluster of its
/// own.
std::vector<TextCluster> charactersDrawnRightToLeft(const fz_stext_line *line);
