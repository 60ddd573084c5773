#include "cli/StopOnSignal.h"

#include "cli/Command.h"

#include <csignal>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace
{

sigset_t endingSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

} // namespace

StopOnSignal::StopOnSignal()
{
    const sigset_t set = endingSignals();
    m_signals = signalfd(-1, &set, SFD_CLOEXEC);
    m_end = eventfd(0, EFD_CLOEXEC);
    if (m_signals < 0 || m_end < 0)
        return; // without a watcher Ctrl-C must go on ending the program
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    m_watcher = std::thread([this] { watch(); });
}

StopOnSignal::~StopOnSignal()
{
    const std::uint64_t one = 1;
    if (!m_watcher.joinable())
        return;
    if (write(m_end, &one, sizeof one) == sizeof one)
        m_watcher.join();
    else
        m_watcher.detach();
    close(m_signals);
    close(m_end);
}

void StopOnSignal::watch()
{
    pollfd waiting[] = {{.fd = m_signals, .events = POLLIN, .revents = 0},
                        {.fd = m_end, .events = POLLIN, .revents = 0}};
    while (poll(waiting, 2, -1) > 0 && !(waiting[1].revents & POLLIN)) {
        signalfd_siginfo info{};
        if (read(m_signals, &info, sizeof info) != sizeof info)
            continue;
        if (m_stop.stop_requested())
            _exit(static_cast<int>(ExitStatus::Interrupted));
        m_stop.request_stop();
    }
}
