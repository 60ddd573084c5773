#pragma once

#include <QColor>

/// Of a band across the top of the first page of a generated document, by which it is known on a screen.
inline constexpr QColor kMarkColor(204, 26, 153);
