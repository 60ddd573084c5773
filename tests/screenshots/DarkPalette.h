#pragma once

#include <QPalette>

/// A dark desktop's.
inline QPalette darkPalette()
{
    QPalette palette(QColor(0x2b, 0x2d, 0x31), QColor(0x1f, 0x20, 0x24));
    palette.setColor(QPalette::Base, QColor(0x18, 0x19, 0x1c));
    palette.setColor(QPalette::AlternateBase, QColor(0x1d, 0x1e, 0x22));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x8b, 0xd9));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7a, 0xb8, 0xf5));
    return palette;
}
