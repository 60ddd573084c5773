#pragma once

#include <QByteArrayView>
#include <memory>

struct PDFBitmap;

/// An encoded picture, in the encoder's own memory.
class JpegData
{
public:
    JpegData() = default;
    JpegData(unsigned char *bytes, unsigned long size);

    bool isEmpty() const { return m_size == 0; }
    QByteArrayView view() const { return {m_bytes.get(), m_size}; }

private:
    struct Free {
        void operator()(unsigned char *bytes) const;
    };
    std::unique_ptr<unsigned char, Free> m_bytes;
    qsizetype m_size = 0;
};

/// The picture as JPEG of this quality (1 to 100), its colour halved in both directions as is usual. Empty
/// when the picture is, when its pixels are not as many as it says, or when the encoder fails.
JpegData encodeJpeg(const PDFBitmap &picture, int quality);
