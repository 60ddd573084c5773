#pragma once

#include "pdf/protocol/FileDescriptor.h"
#include "pdf/protocol/Messages.h"

#include <optional>

/// A request with the number that its reply must carry.
struct NumberedRequest {
    std::uint32_t number = 0;
    Request request;
    FileDescriptor memory; ///< the memory file that came beside it, if one did
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
    /// Takes the first bytes of a message, and the descriptor beside them.
    ssize_t receiveStart(std::span<std::uint8_t> bytes, FileDescriptor &memory);
    bool receiveAll(std::span<std::uint8_t> bytes);

    int m_descriptor;
};
