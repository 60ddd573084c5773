#include "ui/Symbols.h"

#include <QApplication>
#include <QPalette>
#include <gtest/gtest.h>

namespace
{
/// Puts the application's palette back when it goes.
struct PaletteGuard {
    QPalette before = QApplication::palette();
    ~PaletteGuard() { QApplication::setPalette(before); }
};

/// The mean lightness of what is not transparent.
int lightness(const QIcon &icon)
{
    const QImage image = icon.pixmap(32, 32).toImage();
    qint64 sum = 0;
    qint64 count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.alpha() > 128) {
                sum += color.lightness();
                ++count;
            }
        }
    }
    return count == 0 ? -1 : static_cast<int>(sum / count);
}
} // namespace

TEST(Symbols, HaveAPictureEach)
{
    for (int symbol = 0; symbol <= static_cast<int>(Symbol::Copy); ++symbol) {
        const QIcon icon = symbolIcon(static_cast<Symbol>(symbol));
        EXPECT_GE(lightness(icon), 0) << "symbol " << symbol;
    }
}

TEST(Symbols, StandOutOnTheirBackground)
{
    const PaletteGuard guard;
    QPalette palette = guard.before;
    palette.setColor(QPalette::Window, Qt::white);
    QApplication::setPalette(palette);
    EXPECT_LT(lightness(symbolIcon(Symbol::Import)), 128);
    palette.setColor(QPalette::Window, Qt::black);
    QApplication::setPalette(palette);
    EXPECT_GT(lightness(symbolIcon(Symbol::Import)), 128);
}
