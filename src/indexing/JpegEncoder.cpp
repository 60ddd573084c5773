#include "indexing/JpegEncoder.h"

#include "pdf/PDFDocument.h"

#include <turbojpeg.h>

namespace
{
struct Destroy {
    void operator()(void *encoder) const { tjDestroy(encoder); }
};

bool isWhole(const PDFBitmap &picture)
{
    return picture.width > 0 && picture.height > 0 &&
           picture.pixels.size() == qsizetype(3) * picture.width * picture.height;
}
} // namespace

JpegData::JpegData(unsigned char *bytes, unsigned long size)
    : m_bytes(bytes)
    , m_size(static_cast<qsizetype>(size))
{
}

void JpegData::Free::operator()(unsigned char *bytes) const
{
    tjFree(bytes);
}

JpegData encodeJpeg(const PDFBitmap &picture, int quality)
{
    const std::unique_ptr<void, Destroy> encoder(tjInitCompress());
    if (!encoder || !isWhole(picture))
        return {};
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    const int status =
        tjCompress2(encoder.get(), reinterpret_cast<const unsigned char *>(picture.pixels.constData()),
                    picture.width, 0, picture.height, TJPF_RGB, &bytes, &size, TJSAMP_420, quality, 0);
    JpegData jpeg(bytes, size);
    return status == 0 ? std::move(jpeg) : JpegData();
}
