#include "ui/TextStyles.h"

namespace
{
QFont scaled(QFont font, double factor)
{
    // A font is sized either in points or in pixels; the other one reads as -1.
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(qRound(font.pixelSize() * factor));
    return font;
}
} // namespace

QColor textColor(const QPalette &palette, TextTone tone)
{
    QColor color = palette.color(QPalette::WindowText);
    if (tone == TextTone::Secondary)
        color.setAlphaF(0.68F * color.alphaF());
    return color;
}

QFont captionFont(const QFont &base)
{
    return scaled(base, 0.92);
}

QFont smallCaptionFont(const QFont &base)
{
    return scaled(base, 0.84);
}

QFont headingFont(const QFont &base)
{
    QFont font = scaled(base, 1.25);
    font.setWeight(QFont::DemiBold);
    return font;
}
