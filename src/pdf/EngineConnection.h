#pragma once

#include "base/Result.h"
#include "pdf/EngineProcess.h"
#include "pdf/StopFlag.h"
#include "pdf/protocol/Messages.h"

#include <chrono>
#include <stop_token>

/// Talks with one engine: one request at a time, each with a deadline. An engine that answers nonsense, or
/// that does not stop when it shall, is ended. Use from one thread at a time.
class EngineConnection
{
public:
    /// A connection to nothing, on which every request fails with EngineFailed.
    EngineConnection() = default;
    /// An engine gets `grace` to end its work when it is stopped or late, and is ended when it does not.
    EngineConnection(EngineProcess process, std::chrono::milliseconds grace);

    bool isAlive() const { return m_process.isRunning(); }

    /// Of the memory that tells the engine to stop, to be sent beside the first request.
    int stopMemory() const { return m_stopFlag.descriptor(); }

    /// The reply to `request`, which may be a `FailedReply`. `memory` is the descriptor to send beside it, or
    /// -1. Fails with EngineFailed, and then the engine is ended; with DeadlineExceeded or `cancelledError`,
    /// and then it is ended only if it would not stop.
    Result<Reply> ask(const Request &request, std::chrono::milliseconds deadline, std::stop_token stop,
                      int memory = -1);

    /// Ends the engine, which answered what makes no sense here.
    Error refused();

private:
    class Exchange;
    enum class Trouble;

    static Error errorOf(Trouble trouble, const QString &ending);
    void forgetStop();

    EngineProcess m_process;
    std::chrono::milliseconds m_grace = {};
    FileDescriptor m_stopEvent; ///< readable once the stop token of the request in flight has fired
    StopFlag m_stopFlag;
    std::uint32_t m_lastRequest = 0;
};
