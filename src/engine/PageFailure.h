#pragma once

#include "engine/Guarded.h"
#include "pdf/protocol/Messages.h"

/// The reply for a page that cannot be had.
inline FailedReply pageFailure(const CallFailure &failure)
{
    return {Failure::PageUnavailable, failure.isOutOfMemory ? "it needs too much memory" : failure.message};
}
