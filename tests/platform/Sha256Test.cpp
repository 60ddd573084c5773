#include "platform/Sha256.h"

#include "support/Printing.h"
#include "support/TemporaryFolder.h"

#include <QCryptographicHash>
#include <gtest/gtest.h>

namespace
{
std::optional<QString> hashOf(const QByteArray &content, std::stop_token stop = {})
{
    const TemporaryFolder folder;
    QFile file(folder.write(QStringLiteral("file"), content));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return sha256HexOfFile(file.handle(), stop);
}

QString referenceHash(const QByteArray &content)
{
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

TEST(Sha256, HashesBytes)
{
    EXPECT_EQ(sha256Hex(QByteArray()), u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256Hex(QByteArray("abc")),
              u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Sha256, HashesAnEmptyFile)
{
    EXPECT_EQ(hashOf({}), referenceHash({}));
}

TEST(Sha256, HashesFilesAroundTheBlockSize)
{
    constexpr qsizetype kBlock = 1024 * 1024;
    for (const qsizetype size : {kBlock - 1, kBlock, kBlock + 1, 3 * kBlock + 17}) {
        QByteArray content(size, 'q');
        content[size / 2] = '\0';
        EXPECT_EQ(hashOf(content), referenceHash(content)) << size;
    }
}

TEST(Sha256, ReadsFromTheStartAndLeavesThePosition)
{
    const TemporaryFolder folder;
    QFile file(folder.write(QStringLiteral("file"), "abcdef"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    ASSERT_TRUE(file.seek(3));
    EXPECT_EQ(sha256HexOfFile(file.handle()), referenceHash("abcdef"));
    EXPECT_EQ(file.read(3), "def");
}

TEST(Sha256, AnswersNothingOnceStopped)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(hashOf("abc", stop.get_token()));
}

TEST(Sha256, AnswersNothingWhenReadingFails)
{
    EXPECT_FALSE(sha256HexOfFile(-1));
}
} // namespace
