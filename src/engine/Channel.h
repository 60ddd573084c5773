#pragma once

#include "pdf/protocol/Messages.h"

#include <optional>

/// A request with the number that its reply must carry.
struct NumberedRequest {
    std::uint32_t number = 0;
    Request request;
};

/// The engine's end of the socket. Blocks; use from one thread.
class Channel
{
public:
    explicit Channel(int descriptor);

    /// The next request; nothing when the program has gone or sends what is no request, after which no more
    /// can be understood.
    std::optional<NumberedRequest> receive();
    /// False when the program has gone.
    bool send(std::uint32_t requestNumber, const Reply &reply);

private:
    bool receiveAll(std::span<std::uint8_t> bytes);

    int m_descriptor;
};
