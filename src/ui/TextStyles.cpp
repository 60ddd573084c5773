#include "ui/TextStyles.h"

#include "reader/Fonts.h"

QColor textColor(const QPalette &palette, TextTone tone)
{
    QColor color = palette.color(QPalette::WindowText);
    if (tone == TextTone::Secondary)
        color.setAlphaF(0.68F * color.alphaF());
    return color;
}

QFont captionFont(const QFont &base)
{
    return scaledFont(base, 0.92);
}

QFont smallCaptionFont(const QFont &base)
{
    return scaledFont(base, 0.84);
}

QFont headingFont(const QFont &base)
{
    QFont font = scaledFont(base, 1.25);
    font.setWeight(QFont::DemiBold);
    return font;
}
