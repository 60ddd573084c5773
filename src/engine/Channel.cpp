#include "engine/Channel.h"

#include "pdf/protocol/Limits.h"

#include <array>
#include <cerrno>
#include <sys/socket.h>

Channel::Channel(int descriptor)
    : m_descriptor(descriptor)
{
}

bool Channel::receiveAll(std::span<std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = recv(m_descriptor, bytes.data(), bytes.size(), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

std::optional<NumberedRequest> Channel::receive()
{
    std::array<std::uint8_t, kHeaderBytes> headerBytes;
    if (!receiveAll(headerBytes))
        return std::nullopt;
    const std::optional<MessageHeader> header = decodedHeader(headerBytes, kMaxRequestBytes);
    if (!header)
        return std::nullopt;
    std::vector<std::uint8_t> payload(header->payloadBytes);
    if (!receiveAll(payload))
        return std::nullopt;
    std::optional<Request> request = decodedRequest(header->kind, payload);
    if (!request)
        return std::nullopt;
    return NumberedRequest{header->request, *request};
}

bool Channel::send(std::uint32_t requestNumber, const Reply &reply)
{
    const std::vector<std::uint8_t> bytes = encoded(requestNumber, reply);
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(m_descriptor, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}
