#include "pdf/StopFlag.h"

#include "pdf/protocol/StopFlag.h"

#include <atomic>

StopFlag::StopFlag()
    : m_file(MemoryFile::create(kStopFlagBytes))
{
    if (m_file)
        m_memory = SharedMemory::map(m_file->descriptor(), kStopFlagBytes, SharedMemory::Access::ReadWrite);
}

void StopFlag::set(int value)
{
    if (m_memory)
        std::atomic_ref(*reinterpret_cast<int *>(m_memory->data())).store(value, std::memory_order_relaxed);
}
