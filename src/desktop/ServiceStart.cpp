#include "desktop/ServiceStart.h"

#include <utility>

std::unique_ptr<PendingCall> endUnlessAWindowComes(const Clock &clock, std::function<bool()> hasWindow,
                                                   std::function<void()> end)
{
    return clock.callAfter(kServicePatience, [hasWindow = std::move(hasWindow), end = std::move(end)] {
        if (!hasWindow())
            end();
    });
}
