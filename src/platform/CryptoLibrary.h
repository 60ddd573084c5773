#pragma once

#include <openssl/crypto.h>
#include <openssl/evp.h>

/// The few functions of OpenSSL's libcrypto that are used, found in the library when it is first asked for.
struct CryptoLibrary {
    decltype(&::EVP_MD_CTX_new) newContext = nullptr;
    decltype(&::EVP_MD_CTX_free) freeContext = nullptr;
    decltype(&::EVP_sha256) sha256 = nullptr;
    decltype(&::EVP_DigestInit_ex) initDigest = nullptr;
    decltype(&::EVP_DigestUpdate) updateDigest = nullptr;
    decltype(&::EVP_DigestFinal_ex) finishDigest = nullptr;
    decltype(&::EVP_PKEY_new_raw_public_key) newPublicKey = nullptr;
    decltype(&::EVP_PKEY_free) freeKey = nullptr;
    decltype(&::EVP_DigestVerifyInit) initVerification = nullptr;
    decltype(&::EVP_DigestVerify) verify = nullptr;
    decltype(&::OPENSSL_thread_stop) stopThread = nullptr;

    /// Loads the library once a process. Without it the program ends, saying so.
    static const CryptoLibrary &loaded();
};
