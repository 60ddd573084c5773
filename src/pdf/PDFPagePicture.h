#pragma once

#include "pdf/protocol/SharedMemory.h"

#include <QRect>
#include <memory>

/// What to draw of a page.
struct PDFDrawing {
    double scale = 1; ///< device pixels a point
    /// The part to draw, in pixels of the whole page as it is shown, turned and scaled. What of it lies
    /// beyond the page is paper.
    QRect clip;
    int rotation = 0; ///< degrees clockwise beyond the page's own: a multiple of 90
    /// For reading in the dark: lightness inverted, hues kept, pictures left alone.
    bool isDark = false;
};

/// A part of a page that was drawn: rows from the top of pixels of blue, green, red and 255, which is
/// QImage::Format_RGB32 on this byte order. Copies share the pixels, which nobody can change.
///
/// A QImage takes them without copying: QImage(pixels(), width(), height(), bytesPerLine(), Format_RGB32,
/// cleanup, new PDFPagePicture(picture)), with a `cleanup` that deletes the copy.
class PDFPagePicture
{
public:
    PDFPagePicture() = default;
    PDFPagePicture(int width, int height, std::shared_ptr<const SharedMemory> pixels)
        : m_width(width)
        , m_height(height)
        , m_pixels(std::move(pixels))
    {
    }

    int width() const { return m_width; }
    int height() const { return m_height; }
    qsizetype bytesPerLine() const { return qsizetype(m_width) * 4; }
    const uchar *pixels() const { return m_pixels ? m_pixels->data() : nullptr; }

private:
    int m_width = 0;
    int m_height = 0;
    std::shared_ptr<const SharedMemory> m_pixels;
};
