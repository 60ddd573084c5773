#include "platform/Sha256.h"

#include "platform/CryptoLibrary.h"

#include <QByteArray>
#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr qint64 kBlockBytes = 1024 * 1024;

class Sha256
{
public:
    Sha256() { m_crypto.initDigest(m_context.get(), m_crypto.sha256(), nullptr); }
    ~Sha256()
    {
        m_context.reset();
        // What the library keeps for the thread goes now. At the thread's end is too late where the program
        // ends at the same time: Qt does not wait for the last steps of the threads of its pool.
        m_crypto.stopThread();
    }
    Sha256(const Sha256 &) = delete;
    Sha256 &operator=(const Sha256 &) = delete;

    void add(const char *data, size_t size) { m_crypto.updateDigest(m_context.get(), data, size); }

    QString hex()
    {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
        unsigned int size = 0;
        m_crypto.finishDigest(m_context.get(), digest.data(), &size);
        const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(digest.data()), size);
        return QString::fromLatin1(bytes.toHex());
    }

private:
    const CryptoLibrary &m_crypto = CryptoLibrary::loaded();
    std::unique_ptr<EVP_MD_CTX, decltype(m_crypto.freeContext)> m_context{m_crypto.newContext(),
                                                                          m_crypto.freeContext};
};

/// Room for one block, but no more than a small file needs: untouched memory is cheaper than page faults.
qint64 bufferBytes(int descriptor)
{
    struct stat status;
    if (::fstat(descriptor, &status) != 0)
        return kBlockBytes;
    return std::clamp<qint64>(status.st_size + 1, 4096, kBlockBytes);
}

/// The bytes read, 0 at the end of the file, negative on failure.
ssize_t readBlock(int descriptor, char *buffer, qint64 size, qint64 offset)
{
    ssize_t count;
    do {
        count = ::pread(descriptor, buffer, static_cast<size_t>(size), offset);
    } while (count < 0 && errno == EINTR);
    return count;
}
} // namespace

QString sha256Hex(const QByteArray &bytes)
{
    Sha256 hash;
    hash.add(bytes.constData(), static_cast<size_t>(bytes.size()));
    return hash.hex();
}

std::optional<QString> sha256HexOfFile(int descriptor, std::stop_token stop)
{
    ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
    const qint64 size = bufferBytes(descriptor);
    const auto buffer = std::make_unique_for_overwrite<char[]>(static_cast<size_t>(size));
    Sha256 hash;
    for (qint64 offset = 0;;) {
        if (stop.stop_requested())
            return {};
        const ssize_t count = readBlock(descriptor, buffer.get(), size, offset);
        if (count < 0)
            return {};
        if (count == 0)
            return hash.hex();
        hash.add(buffer.get(), static_cast<size_t>(count));
        offset += count;
    }
}
