#include "pdf/protocol/SharedMemory.h"

#include <sys/mman.h>
#include <utility>

std::optional<SharedMemory> SharedMemory::map(int descriptor, std::size_t bytes, Access access)
{
    // Private for reading: before Linux 6.7 a file that is sealed against writing cannot be mapped as shared.
    // No page of it is copied, since none is written to.
    void *data = access == Access::ReadOnly
                     ? mmap(nullptr, bytes, PROT_READ, MAP_PRIVATE, descriptor, 0)
                     : mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (data == MAP_FAILED)
        return std::nullopt;
    return SharedMemory(static_cast<unsigned char *>(data), bytes);
}

SharedMemory::SharedMemory(unsigned char *data, std::size_t bytes)
    : m_data(data)
    , m_bytes(bytes)
{
}

SharedMemory::SharedMemory(SharedMemory &&other) noexcept
    : m_data(std::exchange(other.m_data, nullptr))
    , m_bytes(other.m_bytes)
{
}

SharedMemory &SharedMemory::operator=(SharedMemory &&other) noexcept
{
    std::swap(m_data, other.m_data);
    std::swap(m_bytes, other.m_bytes);
    return *this;
}

SharedMemory::~SharedMemory()
{
    if (m_data)
        munmap(m_data, m_bytes);
}
