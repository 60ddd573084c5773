#pragma once

#include <QByteArray>
#include <memory>
#include <openssl/evp.h>

/// An Ed25519 key pair of the test's own, always the same.
class SigningKey
{
public:
    /// `seed` tells keys apart.
    explicit SigningKey(char seed = 'q')
        : m_key(EVP_PKEY_new_raw_private_key(
              EVP_PKEY_ED25519, nullptr,
              reinterpret_cast<const unsigned char *>(QByteArray(32, seed).constData()), 32))
    {
    }

    QByteArray publicKeyBase64() const
    {
        QByteArray key(32, '\0');
        size_t size = 32;
        EVP_PKEY_get_raw_public_key(m_key.get(), reinterpret_cast<unsigned char *>(key.data()), &size);
        return key.toBase64();
    }
    QByteArray signatureOf(const QByteArray &message) const
    {
        const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> digest(EVP_MD_CTX_new(),
                                                                             &EVP_MD_CTX_free);
        QByteArray signature(64, '\0');
        size_t size = 64;
        EVP_DigestSignInit(digest.get(), nullptr, nullptr, nullptr, m_key.get());
        EVP_DigestSign(digest.get(), reinterpret_cast<unsigned char *>(signature.data()), &size,
                       reinterpret_cast<const unsigned char *>(message.constData()),
                       static_cast<size_t>(message.size()));
        return signature;
    }

private:
    struct Closer {
        void operator()(EVP_PKEY *key) const { EVP_PKEY_free(key); }
    };
    std::unique_ptr<EVP_PKEY, Closer> m_key;
};
