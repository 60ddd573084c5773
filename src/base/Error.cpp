#include "base/Error.h"

namespace
{
constexpr int kCancelledCode = 1;
}

Error cancelledError()
{
    return {QStringLiteral("Cancellation"), kCancelledCode, QStringLiteral("Cancelled"), {}};
}

bool isCancelled(const Error &error)
{
    return error.domain == u"Cancellation";
}
