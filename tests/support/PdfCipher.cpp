#include "support/PdfCipher.h"

#include <QCryptographicHash>
#include <QString>
#include <array>
#include <numeric>

namespace
{
constexpr int kKeyBytes = 5;
constexpr int kPermissions = -4;

// The padding string that the format prescribes for passwords shorter than 32 bytes.
const QByteArray kPadding =
    QByteArray::fromHex("28bf4e5e4e758a4164004e56fffa01082e2e00b6d0683e802f0ca9fe6453697a");

QByteArray md5(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5);
}

QByteArray rc4(const QByteArray &key, QByteArray bytes)
{
    std::array<quint8, 256> state;
    std::iota(state.begin(), state.end(), quint8(0));
    quint8 j = 0;
    for (int i = 0; i < 256; ++i) {
        j = quint8(j + state[i] + quint8(key[i % key.size()]));
        std::swap(state[i], state[j]);
    }
    quint8 a = 0;
    quint8 b = 0;
    for (char &byte : bytes) {
        a = quint8(a + 1);
        b = quint8(b + state[a]);
        std::swap(state[a], state[b]);
        byte = char(quint8(byte) ^ state[quint8(state[a] + state[b])]);
    }
    return bytes;
}

QByteArray padded(const QByteArray &password)
{
    return QByteArray(password + kPadding).left(kPadding.size());
}

QByteArray littleEndian(quint32 number, int bytes)
{
    QByteArray out;
    for (int i = 0; i < bytes; ++i)
        out.append(char(number >> (8 * i) & 0xff));
    return out;
}

QByteArray hexString(const QByteArray &bytes)
{
    return '<' + bytes.toHex() + '>';
}
} // namespace

PdfCipher::PdfCipher(const QByteArray &userPassword)
    : m_ownerEntry(rc4(md5(padded("owner")).left(kKeyBytes), padded(userPassword)))
    , m_key(
          md5(padded(userPassword) + m_ownerEntry + littleEndian(quint32(kPermissions), 4) + fileIdentifier())
              .left(kKeyBytes))
{
}

QByteArray PdfCipher::encrypted(int number, const QByteArray &bytes) const
{
    const QByteArray key = md5(m_key + littleEndian(quint32(number), 3) + littleEndian(0, 2));
    return rc4(key.left(kKeyBytes + 5), bytes);
}

QByteArray PdfCipher::dictionary() const
{
    return "<</Filter/Standard/V 1/R 2/O" + hexString(m_ownerEntry) + "/U" + hexString(rc4(m_key, kPadding)) +
           "/P " + QByteArray::number(kPermissions) + ">>";
}

QByteArray PdfCipher::fileIdentifier()
{
    return QByteArrayLiteral("0123456789abcdef");
}
