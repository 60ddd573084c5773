#pragma once

#include <cstddef>
#include <optional>

/// A memory file that is mapped into this process. Movable; unmapped when it dies.
class SharedMemory
{
public:
    enum class Access {
        ReadOnly,  ///< also of a file that is sealed against writing
        ReadWrite, ///< shared with every process that maps the file
    };

    /// Maps the first `bytes` of the file, at least 1. Nothing, with the cause in errno, when that fails. A
    /// file that is shorter, or becomes so, ends the process when it is used: make sure before.
    static std::optional<SharedMemory> map(int descriptor, std::size_t bytes, Access access);

    SharedMemory(SharedMemory &&other) noexcept;
    SharedMemory &operator=(SharedMemory &&other) noexcept;
    ~SharedMemory();

    unsigned char *data() const { return m_data; }
    std::size_t size() const { return m_bytes; }

private:
    SharedMemory(unsigned char *data, std::size_t bytes);

    unsigned char *m_data;
    std::size_t m_bytes;
};
