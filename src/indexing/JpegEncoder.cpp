#include "indexing/JpegEncoder.h"

#include "base/Log.h"
#include "pdf/PDFDocument.h"
#include "platform/LoadedLibrary.h"

#include <optional>
#include <turbojpeg.h>

namespace
{
constexpr char kLibraryName[] = "libturbojpeg.so.0";

/// The few functions of libjpeg-turbo that are used.
struct TurboJpegLibrary {
    decltype(&::tjInitCompress) newEncoder = nullptr;
    decltype(&::tjDestroy) destroy = nullptr;
    decltype(&::tjCompress2) compress = nullptr;
    decltype(&::tjFree) free = nullptr;
};

std::optional<TurboJpegLibrary> load()
{
    const LoadedLibrary library({kLibraryName});
    TurboJpegLibrary jpeg;
    if (library.find("tjInitCompress", jpeg.newEncoder) && library.find("tjDestroy", jpeg.destroy) &&
        library.find("tjCompress2", jpeg.compress) && library.find("tjFree", jpeg.free))
        return jpeg;
    logLine(u"JpegEncoder: no covers without the shared library " % QLatin1String(kLibraryName));
    return {};
}

/// Loaded once a process; nothing where there is none.
const std::optional<TurboJpegLibrary> &turboJpeg()
{
    static const std::optional<TurboJpegLibrary> library = load();
    return library;
}

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
    turboJpeg()->free(bytes);
}

JpegData encodeJpeg(const PDFBitmap &picture, int quality)
{
    const std::optional<TurboJpegLibrary> &library = turboJpeg();
    if (!library || !isWhole(picture))
        return {};
    const std::unique_ptr<void, decltype(library->destroy)> encoder(library->newEncoder(), library->destroy);
    if (!encoder)
        return {};
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    const int status =
        library->compress(encoder.get(), reinterpret_cast<const unsigned char *>(picture.pixels.constData()),
                          picture.width, 0, picture.height, TJPF_RGB, &bytes, &size, TJSAMP_420, quality, 0);
    JpegData jpeg(bytes, size);
    return status == 0 ? std::move(jpeg) : JpegData();
}
