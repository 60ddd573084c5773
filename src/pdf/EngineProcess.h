#pragma once

#include "base/Result.h"
#include "pdf/protocol/FileDescriptor.h"

#include <QString>
#include <sys/types.h>

/// A running engine and this side's end of its socket. Movable; ends and reaps the process when it dies, so
/// that none is ever left behind. Use from one thread at a time.
class EngineProcess
{
public:
    /// Starts `program` on the document behind an open descriptor, which stays the caller's. Fails with
    /// EngineMissing.
    static Result<EngineProcess> start(const QString &program, int documentDescriptor);

    EngineProcess() = default;
    EngineProcess(EngineProcess &&other) noexcept;
    EngineProcess &operator=(EngineProcess &&other) noexcept;
    ~EngineProcess();

    bool isRunning() const { return m_process > 0; }
    int socket() const { return m_socket.get(); }

    /// Ends the process at once and waits until it is gone. Answers, for people, how it ended; when it had
    /// ended by itself, that is its own doing.
    QString end();

private:
    EngineProcess(pid_t process, FileDescriptor socket);

    pid_t m_process = 0;
    FileDescriptor m_socket;
};
