#pragma once

#include <string>

/// Appends `character` as UTF-8, and a presentation form (a letter in the shape that it takes beside others,
/// or several in one) as the plain letters that people type.
void appendSpelledOut(std::string &text, char32_t character);
