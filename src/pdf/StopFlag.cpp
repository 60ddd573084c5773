#include "pdf/StopFlag.h"

#include "pdf/protocol/StopFlag.h"

#include <atomic>

StopFlag StopFlag::create()
{
    StopFlag flag;
    flag.m_file = MemoryFile::create(kStopFlagBytes);
    if (flag.m_file)
        flag.m_memory =
            SharedMemory::map(flag.m_file->descriptor(), kStopFlagBytes, SharedMemory::Access::ReadWrite);
    return flag;
}

void StopFlag::set(int value)
{
    if (m_memory)
        std::atomic_ref(*reinterpret_cast<int *>(m_memory->data())).store(value, std::memory_order_relaxed);
}
