#include "ResponseWatch.h"

#include <QMetaObject>
#include <utility>

using namespace std::chrono_literals;

ResponseWatch::ResponseWatch()
    : m_asker([this] { ask(); })
{
}

ResponseWatch::~ResponseWatch()
{
    m_isOver = true;
    m_isAnswered = true;
    m_isAnswered.notify_all();
    m_asker.join();
}

std::vector<Milliseconds> ResponseWatch::takeWaits()
{
    return std::exchange(m_waits, {});
}

void ResponseWatch::ask()
{
    while (true) {
        m_isAnswered = false;
        if (m_isOver) // looked at after, so that the end cannot be overwritten and waited for
            return;
        const auto asked = std::chrono::steady_clock::now();
        QMetaObject::invokeMethod(
            this,
            [this, asked] {
                m_waits.push_back(std::chrono::steady_clock::now() - asked);
                m_isAnswered = true;
                m_isAnswered.notify_all();
            },
            Qt::QueuedConnection);
        m_isAnswered.wait(false);
        std::this_thread::sleep_for(2ms);
    }
}
