#pragma once

#include <QByteArray>

/// The PDF standard security handler, version 1 revision 2: RC4 with keys of 40 bits. For test files only.
class PdfCipher
{
public:
    explicit PdfCipher(const QByteArray &userPassword);

    /// The bytes of a string or stream of object `number`, generation 0, as they stand in the file.
    QByteArray encrypted(int number, const QByteArray &bytes) const;
    /// The encryption dictionary as written in a file.
    QByteArray dictionary() const;
    /// The file identifier on which the key depends.
    static QByteArray fileIdentifier();

private:
    QByteArray m_ownerEntry;
    QByteArray m_key;
};
