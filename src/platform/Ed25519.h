#pragma once

#include <QByteArray>
#include <optional>

/// The public half of an Ed25519 key, which tells whether its other half signed something. Call from any
/// thread.
class Ed25519PublicKey
{
public:
    /// The length of a key and of a signature, which the algorithm fixes.
    static constexpr qsizetype kKeyBytes = 32;
    static constexpr qsizetype kSignatureBytes = 64;

    /// The key that these 32 bytes in base64 are; none when they are something else.
    static std::optional<Ed25519PublicKey> fromBase64(const QByteArray &text);

    /// Whether `signature` (64 bytes) is that of all of `message`. Anything but a certain yes is a no.
    bool verifies(const QByteArray &message, const QByteArray &signature) const;

private:
    explicit Ed25519PublicKey(QByteArray key)
        : m_key(std::move(key))
    {
    }

    QByteArray m_key;
};
