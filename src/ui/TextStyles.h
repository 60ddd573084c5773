#pragma once

#include <QFont>
#include <QPalette>

/// How much a text stands out.
enum class TextTone { Primary, Secondary };

/// The window text's colour, mixed with the window's for a secondary text. Chosen: still 4.5:1 against the
/// window in Fusion's and Breeze's palettes, light and dark.
QColor textColor(const QPalette &palette, TextTone tone);

/// `base` at the size of captions, and at the size of the lines beneath them.
QFont captionFont(const QFont &base);
QFont smallCaptionFont(const QFont &base);
/// `base` at the size and weight of a heading.
QFont headingFont(const QFont &base);
