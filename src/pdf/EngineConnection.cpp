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

void drain(int eventDescriptor)
{
    std::uint64_t count = 0;
    while (read(eventDescriptor, &count, sizeof count) < 0 && errno == EINTR) {
    }
}
} // namespace

/// One request and its reply on a socket, bounded in time.
class EngineConnection::Exchange
{
public:
    Exchange(EngineConnection &connection, std::chrono::milliseconds deadline)
        : m_socket(connection.m_process.socket())
        , m_stopEvent(connection.m_stopEvent.get())
        , m_stopFlag(connection.m_stopFlag)
        , m_grace(connection.m_grace)
        , m_end(SteadyClock::now() + deadline)
    {
    }

    /// Why the engine was asked to end its work, if it was.
    Trouble interruption() const { return m_interruption; }

    /// Sends a message, and `memory` beside its first byte.
    Trouble send(std::span<const std::uint8_t> bytes, int memory)
    {
        return transfer(bytes.size(), POLLOUT, [&](std::size_t done) {
            return sendPart(bytes.subspan(done), done == 0 ? memory : -1);
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
    ssize_t sendPart(std::span<const std::uint8_t> bytes, int memory) const
    {
        if (memory < 0)
            return ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof memory)> control = {};
        iovec part = {const_cast<std::uint8_t *>(bytes.data()), bytes.size()};
        msghdr message = {};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        cmsghdr *beside = CMSG_FIRSTHDR(&message);
        beside->cmsg_level = SOL_SOCKET;
        beside->cmsg_type = SCM_RIGHTS;
        beside->cmsg_len = CMSG_LEN(sizeof memory);
        std::memcpy(CMSG_DATA(beside), &memory, sizeof memory);
        return sendmsg(m_socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    }

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
        const bool isInterrupted = m_interruption != Trouble::None;
        std::array<pollfd, 2> watched = {pollfd{m_socket, events, 0},
                                         pollfd{isInterrupted ? -1 : m_stopEvent, POLLIN, 0}};
        const int count = poll(watched.data(), watched.size(), int(timeUntil(m_end).count()));
        if (count < 0)
            return errno == EINTR ? Trouble::None : Trouble::PeerGone;
        if (count == 0)
            return interrupt(Trouble::TooLate);
        return watched[1].revents != 0 ? interrupt(Trouble::Stopped) : Trouble::None;
    }

    /// Asks the engine to end its work and to answer so; gives up when it was asked before.
    Trouble interrupt(Trouble why)
    {
        if (m_interruption != Trouble::None)
            return m_interruption;
        m_interruption = why;
        m_end = SteadyClock::now() + m_grace;
        m_stopFlag.raise();
        return Trouble::None;
    }

    int m_socket;
    int m_stopEvent;
    StopFlag &m_stopFlag;
    std::chrono::milliseconds m_grace;
    SteadyClock::time_point m_end;
    Trouble m_interruption = Trouble::None;
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

EngineConnection::EngineConnection(EngineProcess process, std::chrono::milliseconds grace)
    : m_process(std::move(process))
    , m_grace(grace)
    , m_stopEvent(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_stopFlag(StopFlag::create())
{
}

Result<Reply> EngineConnection::ask(const Request &request, std::chrono::milliseconds deadline,
                                    std::stop_token stop, int memory)
{
    if (stop.stop_requested())
        return cancelledError();
    if (!isAlive())
        return pdfError(PDFErrorCode::EngineFailed, QStringLiteral("it has ended"));
    const std::uint32_t number = ++m_lastRequest;
    Reply reply;
    Exchange exchange(*this, deadline);
    Trouble trouble = Trouble::None;
    {
        const std::stop_callback waker(stop, [this] { raise(m_stopEvent.get()); });
        trouble = exchange.send(encoded(number, request), memory);
        if (trouble == Trouble::None)
            trouble = exchange.receive(number, maxReplyBytes(request), reply);
    }
    if (trouble != Trouble::None)
        return errorOf(trouble, m_process.end());
    forgetStop();
    if (stop.stop_requested())
        return cancelledError();
    if (exchange.interruption() != Trouble::None)
        return errorOf(exchange.interruption(), {});
    return reply;
}

/// Before the next request, which nobody has stopped yet.
void EngineConnection::forgetStop()
{
    drain(m_stopEvent.get());
    m_stopFlag.lower();
}

Error EngineConnection::refused()
{
    return errorOf(Trouble::Nonsense, m_process.end());
}
