#include "platform/Ed25519.h"

#include "platform/CryptoLibrary.h"

#include <memory>

namespace
{
using Key = std::unique_ptr<EVP_PKEY, decltype(CryptoLibrary::freeKey)>;
using Context = std::unique_ptr<EVP_MD_CTX, decltype(CryptoLibrary::freeContext)>;

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
    const CryptoLibrary &crypto = CryptoLibrary::loaded();
    const Key key(crypto.newPublicKey(EVP_PKEY_ED25519, nullptr, bytesOf(m_key), kKeyBytes), crypto.freeKey);
    const Context context(crypto.newContext(), crypto.freeContext);
    // The algorithm takes the whole message at once and no digest beside its own.
    return key && context &&
           crypto.initVerification(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           crypto.verify(context.get(), bytesOf(signature), kSignatureBytes, bytesOf(message),
                         static_cast<size_t>(message.size())) == 1;
}
