#pragma once

#include "pdf/MemoryFile.h"
#include "pdf/protocol/SharedMemory.h"

/// Tells an engine to end its work on the request in flight, by memory that both look at.
class StopFlag
{
public:
    /// Tells nothing to anybody.
    StopFlag() = default;
    /// Lowered. Where there is no memory for it, the same as above.
    static StopFlag create();

    /// Of the memory, for the engine; -1 when there is none.
    int descriptor() const { return m_file ? m_file->descriptor() : -1; }

    void raise() { set(1); }
    void lower() { set(0); }

private:
    void set(int value);

    std::optional<MemoryFile> m_file;
    std::optional<SharedMemory> m_memory;
};
