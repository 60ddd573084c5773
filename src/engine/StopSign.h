#pragma once

#include "pdf/protocol/SharedMemory.h"

#include <mupdf/fitz.h>

/// What MuPDF looks at while it works, to end early when the program asks for that. Lies in memory that the
/// program shares, or where there is none in this object, and then nobody asks.
class StopSign
{
public:
    StopSign() = default;
    /// Over the memory of a `StopFlag`.
    explicit StopSign(SharedMemory memory);

    /// For one piece of work. Valid as long as this object stays where it is.
    fz_cookie *forWork();
    /// Whether the program has asked the work to end.
    bool isRaised() const;

private:
    fz_cookie *cookie() const;

    std::optional<SharedMemory> m_memory;
    mutable fz_cookie m_own = {};
};
