#include "pdf/EngineConnection.h"

#include "pdf/PDFDocument.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

enum class EngineConnection::Trouble { None, PeerGone, Nonsense, TooLate, Stopped };

namespace
{
using SteadyClock = std::chrono::steady_clock;

std::chrono::milliseconds timeUntil(SteadyClock::time_point end)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - SteadyClock::now());
    return std::max(left, std::chrono::milliseconds(0));
}

void raise(int eventDescriptor)
{
    const std::uint64_t one = 1;
    while (write(eventDescriptor, &one, sizeof one) < 0 && errno == EINTR) {
    }
}

} // namespace

/// One request and its reply on a socket, bounded in time.
class EngineConnection::Exchange
{
public:
    Exchange(int socket, int stopEvent, std::chrono::milliseconds deadline)
        : m_socket(socket)
        , m_stopEvent(stopEvent)
        , m_end(SteadyClock::now() + deadline)
    {
    }

    Trouble send(std::span<const std::uint8_t> bytes)
    {
        return transfer(bytes.size(), POLLOUT, [&](std::size_t done) {
            return ::send(m_socket, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL | MSG_DONTWAIT);
        });
    }

    /// Takes the reply with this number, of at most `maxBytes`.
    Trouble receive(std::uint32_t requestNumber, std::uint32_t maxBytes, Reply &reply)
    {
        std::array<std::uint8_t, kHeaderBytes> headerBytes;
        if (const Trouble trouble = receiveAll(headerBytes); trouble != Trouble::None)
            return trouble;
        const std::optional<MessageHeader> header = decodedHeader(headerBytes, maxBytes);
        if (!header || header->request != requestNumber)
            return Trouble::Nonsense;
        std::vector<std::uint8_t> payload(header->payloadBytes);
        if (const Trouble trouble = receiveAll(payload); trouble != Trouble::None)
            return trouble;
        std::optional<Reply> decoded = decodedReply(header->kind, payload);
        if (!decoded)
            return Trouble::Nonsense;
        reply = std::move(*decoded);
        return Trouble::None;
    }

private:
    Trouble receiveAll(std::span<std::uint8_t> bytes)
    {
        return transfer(bytes.size(), POLLIN, [&](std::size_t done) {
            return recv(m_socket, bytes.data() + done, bytes.size() - done, MSG_DONTWAIT);
        });
    }

    /// Repeats `step`, which moves some bytes, until `count` are moved; waits with `events` in between.
    template <typename Step> Trouble transfer(std::size_t count, short events, const Step &step)
    {
        for (std::size_t done = 0; done < count;) {
            const ssize_t moved = step(done);
            if (moved > 0) {
                done += std::size_t(moved);
                continue;
            }
            if (moved == 0 || (errno != EAGAIN && errno != EINTR))
                return Trouble::PeerGone;
            if (const Trouble trouble = wait(events); trouble != Trouble::None)
                return trouble;
        }
        return Trouble::None;
    }

    Trouble wait(short events)
    {
        std::array<pollfd, 2> watched = {pollfd{m_socket, events, 0}, pollfd{m_stopEvent, POLLIN, 0}};
        const int count = poll(watched.data(), watched.size(), int(timeUntil(m_end).count()));
        if (count < 0 && errno != EINTR)
            return Trouble::PeerGone;
        if (count > 0 && watched[1].revents != 0)
            return Trouble::Stopped;
        return count == 0 ? Trouble::TooLate : Trouble::None;
    }

    int m_socket;
    int m_stopEvent;
    SteadyClock::time_point m_end;
};

Error EngineConnection::errorOf(Trouble trouble, const QString &ending)
{
    switch (trouble) {
    case Trouble::Stopped:
        return cancelledError();
    case Trouble::TooLate:
        return pdfError(PDFErrorCode::DeadlineExceeded);
    case Trouble::Nonsense:
        return pdfError(PDFErrorCode::EngineFailed, QStringLiteral("its answer makes no sense"));
    default:
        return pdfError(PDFErrorCode::EngineFailed, ending);
    }
}
EngineConnection::EngineConnection(EngineProcess process)
    : m_process(std::move(process))
    , m_stopEvent(eventfd(0, EFD_CLOEXEC))
{
}

EngineConnection::Trouble EngineConnection::exchange(const Request &request,
                                                     std::chrono::milliseconds deadline,
                                                     const std::stop_token &stop, Reply &reply)
{
    const std::uint32_t number = ++m_lastRequest;
    Exchange exchange(m_process.socket(), m_stopEvent.get(), deadline);
    const std::stop_callback waker(stop, [this] { raise(m_stopEvent.get()); });
    const Trouble trouble = exchange.send(encoded(number, request));
    return trouble == Trouble::None ? exchange.receive(number, maxReplyBytes(request), reply) : trouble;
}

Result<Reply> EngineConnection::ask(const Request &request, std::chrono::milliseconds deadline,
                                    std::stop_token stop)
{
    if (stop.stop_requested())
        return cancelledError();
    if (!isAlive())
        return pdfError(PDFErrorCode::EngineFailed, QStringLiteral("it has ended"));
    Reply reply;
    Trouble trouble = exchange(request, deadline, stop, reply);
    // A stop that comes with the reply ends the engine too: its event would stop the next request.
    if (stop.stop_requested())
        trouble = Trouble::Stopped;
    if (trouble == Trouble::None)
        return reply;
    return errorOf(trouble, m_process.end());
}

Error EngineConnection::refused()
{
    return errorOf(Trouble::Nonsense, m_process.end());
}
