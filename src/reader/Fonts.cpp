#include "reader/Fonts.h"

QFont scaledFont(QFont font, double factor)
{
    // The size that is not given reads as -1.
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(qRound(font.pixelSize() * factor));
    return font;
}

QFont boldFont(const QFont &font, double factor)
{
    QFont bold = scaledFont(font, factor);
    bold.setBold(true);
    return bold;
}
