#include "platform/CryptoLibrary.h"

#include "platform/LoadedLibrary.h"

namespace
{
constexpr char kName[] = "libcrypto.so.3";

CryptoLibrary load()
{
    const LoadedLibrary library({kName});
    CryptoLibrary crypto;
    const bool isWhole = library.find("EVP_MD_CTX_new", crypto.newContext) &&
                         library.find("EVP_MD_CTX_free", crypto.freeContext) &&
                         library.find("EVP_sha256", crypto.sha256) &&
                         library.find("EVP_DigestInit_ex", crypto.initDigest) &&
                         library.find("EVP_DigestUpdate", crypto.updateDigest) &&
                         library.find("EVP_DigestFinal_ex", crypto.finishDigest) &&
                         library.find("EVP_PKEY_new_raw_public_key", crypto.newPublicKey) &&
                         library.find("EVP_PKEY_free", crypto.freeKey) &&
                         library.find("EVP_DigestVerifyInit", crypto.initVerification) &&
                         library.find("EVP_DigestVerify", crypto.verify) &&
                         library.find("OPENSSL_thread_stop", crypto.stopThread);
    if (!isWhole)
        endWithoutLibrary(kName);
    return crypto;
}
} // namespace

const CryptoLibrary &CryptoLibrary::loaded()
{
    static const CryptoLibrary library = load();
    return library;
}
