#include "platform/Ed25519.h"

#include <memory>
#include <openssl/evp.h>

namespace
{
using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Digest = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;

const unsigned char *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}
} // namespace

std::optional<Ed25519PublicKey> Ed25519PublicKey::fromBase64(const QByteArray &text)
{
    const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || decoded.decoded.size() != kKeyBytes)
        return {};
    return Ed25519PublicKey(decoded.decoded);
}

bool Ed25519PublicKey::verifies(const QByteArray &message, const QByteArray &signature) const
{
    if (signature.size() != kSignatureBytes)
        return false;
    const Key key(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, bytesOf(m_key), kKeyBytes),
                  &EVP_PKEY_free);
    const Digest digest(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    // The algorithm takes the whole message at once and no digest beside its own.
    return key && digest && EVP_DigestVerifyInit(digest.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           EVP_DigestVerify(digest.get(), bytesOf(signature), kSignatureBytes, bytesOf(message),
                            static_cast<size_t>(message.size())) == 1;
}
