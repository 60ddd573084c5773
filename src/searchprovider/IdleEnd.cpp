#include "searchprovider/IdleEnd.h"

#include <utility>

IdleEnd::IdleEnd(const Clock &clock, std::function<void()> end)
    : m_clock(clock)
    , m_end(std::move(end))
{
    used();
}

void IdleEnd::used()
{
    m_pending.reset(); // before there is another one
    m_pending = m_clock.callAfter(kIdleTime, m_end);
}
