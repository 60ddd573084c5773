#pragma once

#include <QFont>

/// `font` at `factor` times its size, which is given either in points or in pixels.
QFont scaledFont(QFont font, double factor);
/// The same in bold.
QFont boldFont(const QFont &font, double factor);
