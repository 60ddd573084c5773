#include "engine/StopSign.h"

#include "pdf/protocol/StopFlag.h"

#include <atomic>
#include <cstddef>

// The flag is the structure's first member, and the rest of it is the engine's own.
static_assert(offsetof(fz_cookie, abort) == 0 && sizeof(fz_cookie) <= kStopFlagBytes);

StopSign::StopSign(SharedMemory memory)
    : m_memory(std::move(memory))
{
}

fz_cookie *StopSign::cookie() const
{
    return m_memory ? reinterpret_cast<fz_cookie *>(m_memory->data()) : &m_own;
}

fz_cookie *StopSign::forWork()
{
    fz_cookie *work = cookie();
    work->progress = 0;
    work->progress_max = 0;
    work->errors = 0;
    work->incomplete = 0;
    return work;
}

bool StopSign::isRaised() const
{
    return std::atomic_ref(cookie()->abort).load(std::memory_order_relaxed) != 0;
}
