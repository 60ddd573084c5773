#pragma once

#include "base/Result.h"
#include "pdf/EngineProcess.h"
#include "pdf/protocol/Messages.h"

#include <chrono>
#include <span>
#include <stop_token>

/// Talks with one engine: one request at a time, each with a deadline. Anything but a sound reply in time
/// ends the engine. Use from one thread at a time.
class EngineConnection
{
public:
    /// A connection to nothing, on which every request fails with EngineFailed.
    EngineConnection() = default;
    explicit EngineConnection(EngineProcess process);

    bool isAlive() const { return m_process.isRunning(); }

    /// The reply to `request`, which may be a `FailedReply`. Fails with EngineFailed, DeadlineExceeded or
    /// `cancelledError`, and then the engine is ended; a `stop` that fired before the call leaves it alone.
    Result<Reply> ask(const Request &request, std::chrono::milliseconds deadline, std::stop_token stop);

    /// Ends the engine, which answered what makes no sense here.
    Error refused();

private:
    class Exchange;
    enum class Trouble;

    static Error errorOf(Trouble trouble, const QString &ending);
    Trouble exchange(const Request &request, std::chrono::milliseconds deadline, const std::stop_token &stop,
                     Reply &reply);

    EngineProcess m_process;
    FileDescriptor m_stopEvent; ///< readable once the stop token of the request in flight has fired
    std::uint32_t m_lastRequest = 0;
};
