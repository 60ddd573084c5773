// The floor of a reader's start: quirevault-bench-reader-floor FILE. A bare Qt window that draws the first
// page with MuPDF in its own process, fitted to its width. Prints when it was painted, in microseconds since
// 1970.
#include "PaintedTime.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>
#include <mupdf/fitz.h>

namespace
{
/// What MuPDF makes of page 1; kept until the end of the program.
struct DrawnPage {
    fz_document *document = nullptr;
    fz_page *page = nullptr;
    fz_pixmap *pixels = nullptr;
};

/// Page 1 on white, `width` pixels wide; null where it cannot be drawn.
QImage firstPage(const char *path, int width)
{
    static DrawnPage drawn;
    fz_context *context = fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT);
    fz_try(context)
    {
        fz_register_document_handlers(context);
        drawn.document = fz_open_document(context, path);
        drawn.page = fz_load_page(context, drawn.document, 0);
        const fz_rect box = fz_bound_page(context, drawn.page);
        const float scale = float(width) / (box.x1 - box.x0);
        const fz_matrix place = fz_scale(scale, scale);
        drawn.pixels = fz_new_pixmap_with_bbox(context, fz_device_bgr(context),
                                               fz_round_rect(fz_transform_rect(box, place)), nullptr, 1);
        fz_clear_pixmap_with_value(context, drawn.pixels, 255);
        fz_device *device = fz_new_draw_device(context, place, drawn.pixels);
        fz_run_page(context, drawn.page, device, fz_identity, nullptr);
        fz_close_device(context, device);
    }
    fz_catch(context) return {};
    return QImage(fz_pixmap_samples(context, drawn.pixels), fz_pixmap_width(context, drawn.pixels),
                  fz_pixmap_height(context, drawn.pixels), QImage::Format_RGB32);
}

class PageWindow : public QWidget
{
public:
    explicit PageWindow(const char *path)
        : m_path(path)
    {
        resize(kBenchWindow);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).drawImage(0, 0, firstPage(m_path, width()));
        tellPainted();
    }

private:
    const char *m_path;
};
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    PageWindow window(argc > 1 ? argv[1] : "");
    window.show();
    return QApplication::exec();
}
