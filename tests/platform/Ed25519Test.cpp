#include "platform/Ed25519.h"

#include "support/Printing.h"
#include "support/SigningKey.h"

#include <gtest/gtest.h>

namespace
{
// The second test vector of RFC 8032: one byte and its signature.
const QByteArray kKey =
    QByteArray::fromHex("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c").toBase64();
const QByteArray kMessage = QByteArray::fromHex("72");
const QByteArray kSignature =
    QByteArray::fromHex("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da"
                        "085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb00d291612bb0c00");
} // namespace

TEST(Ed25519, AcceptsASignatureOfTheStandardsOwn)
{
    const auto key = Ed25519PublicKey::fromBase64(kKey);
    ASSERT_TRUE(key);
    EXPECT_TRUE(key->verifies(kMessage, kSignature));
}

TEST(Ed25519, RefusesEveryOtherMessageAndSignature)
{
    const auto key = *Ed25519PublicKey::fromBase64(kKey);
    EXPECT_FALSE(key.verifies("s", kSignature));
    EXPECT_FALSE(key.verifies("", kSignature));
    EXPECT_FALSE(key.verifies(kMessage + '\0', kSignature));
    for (const int position : {0, 31, 32, 63}) {
        QByteArray other = kSignature;
        other[position] = static_cast<char>(other[position] ^ 1);
        EXPECT_FALSE(key.verifies(kMessage, other)) << position;
    }
}

TEST(Ed25519, RefusesASignatureOfAnotherLength)
{
    const auto key = *Ed25519PublicKey::fromBase64(kKey);
    EXPECT_FALSE(key.verifies(kMessage, {}));
    EXPECT_FALSE(key.verifies(kMessage, kSignature.left(63)));
    EXPECT_FALSE(key.verifies(kMessage, kSignature + '\0'));
}

TEST(Ed25519, RefusesWhatAnotherKeySigned)
{
    const auto key = *Ed25519PublicKey::fromBase64(SigningKey('a').publicKeyBase64());
    EXPECT_TRUE(key.verifies("package", SigningKey('a').signatureOf("package")));
    EXPECT_FALSE(key.verifies("package", SigningKey('b').signatureOf("package")));
}

TEST(Ed25519, TakesNothingButThirtyTwoBytesInBase64ForAKey)
{
    EXPECT_FALSE(Ed25519PublicKey::fromBase64(""));
    EXPECT_FALSE(Ed25519PublicKey::fromBase64(QByteArray(31, 'k').toBase64()));
    EXPECT_FALSE(Ed25519PublicKey::fromBase64(QByteArray(33, 'k').toBase64()));
    EXPECT_FALSE(Ed25519PublicKey::fromBase64("!" + kKey));
}
