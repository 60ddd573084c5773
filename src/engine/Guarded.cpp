#include "engine/Guarded.h"

#include "pdf/protocol/Limits.h"
#include "pdf/protocol/Utf8.h"

#include <string_view>

CallFailure caughtFailure(fz_context *context)
{
    const std::string_view message = fz_caught_message(context);
    // Repair can make one byte into three.
    return {fz_caught(context) == FZ_ERROR_MEMORY, repairedUtf8(message.substr(0, kMaxReasonBytes / 3))};
}
