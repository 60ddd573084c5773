#include "engine/Channel.h"

#include "pdf/protocol/Limits.h"

#include <array>
#include <cerrno>
#include <cstring>
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

ssize_t Channel::receiveStart(std::span<std::uint8_t> bytes, FileDescriptor &memory)
{
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control = {};
    iovec part = {bytes.data(), bytes.size()};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t count;
    do
        count = recvmsg(m_descriptor, &message, 0);
    while (count < 0 && errno == EINTR);
    const cmsghdr *beside = count > 0 ? CMSG_FIRSTHDR(&message) : nullptr;
    if (beside && beside->cmsg_level == SOL_SOCKET && beside->cmsg_type == SCM_RIGHTS) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(beside), sizeof descriptor);
        memory = FileDescriptor(descriptor);
    }
    return count;
}

std::optional<NumberedRequest> Channel::receive()
{
    FileDescriptor memory;
    std::array<std::uint8_t, kHeaderBytes> headerBytes;
    const ssize_t started = receiveStart(headerBytes, memory);
    if (started <= 0 || !receiveAll(std::span(headerBytes).subspan(static_cast<std::size_t>(started))))
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
    return NumberedRequest{header->request, std::move(*request), std::move(memory)};
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
