#pragma once

#include <memory>
#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

/// Drops a MuPDF object with `drop`, which never fails.
template <auto drop> struct Dropper {
    fz_context *context = nullptr;
    template <typename Object> void operator()(Object *object) const { drop(context, object); }
};

struct ContextDropper {
    void operator()(fz_context *context) const { fz_drop_context(context); }
};

inline void dropPage(fz_context *context, pdf_page *page)
{
    fz_drop_page(context, &page->super);
}

using ContextHandle = std::unique_ptr<fz_context, ContextDropper>;
using StreamHandle = std::unique_ptr<fz_stream, Dropper<fz_drop_stream>>;
using DocumentHandle = std::unique_ptr<pdf_document, Dropper<pdf_drop_document>>;
using ObjectHandle = std::unique_ptr<pdf_obj, Dropper<pdf_drop_obj>>;
using PageHandle = std::unique_ptr<pdf_page, Dropper<dropPage>>;
using TextPageHandle = std::unique_ptr<fz_stext_page, Dropper<fz_drop_stext_page>>;
using DeviceHandle = std::unique_ptr<fz_device, Dropper<fz_drop_device>>;
using PixmapHandle = std::unique_ptr<fz_pixmap, Dropper<fz_drop_pixmap>>;
