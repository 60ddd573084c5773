#include "pdf/EngineProcess.h"

#include "pdf/PDFDocument.h"

#include <QFile>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace
{
// Where the engine expects to find them.
constexpr int kSocketInEngine = 3;
constexpr int kDocumentInEngine = 4;

/// What the child does between being made and becoming the engine.
class SpawnActions
{
public:
    SpawnActions(int socket, int document)
    {
        posix_spawn_file_actions_init(&m_files);
        for (int standard : {STDIN_FILENO, STDOUT_FILENO})
            posix_spawn_file_actions_addopen(&m_files, standard, "/dev/null", O_RDWR, 0);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        // A hostile document must not write on the terminal either; only sanitizers have something to say.
        posix_spawn_file_actions_addopen(&m_files, STDERR_FILENO, "/dev/null", O_RDWR, 0);
#endif
        posix_spawn_file_actions_adddup2(&m_files, socket, kSocketInEngine);
        posix_spawn_file_actions_adddup2(&m_files, document, kDocumentInEngine);
        posix_spawn_file_actions_addclosefrom_np(&m_files, kDocumentInEngine + 1);
        posix_spawnattr_init(&m_attributes);
        // A group of its own, so that Ctrl-C in the terminal reaches only the program, which then decides.
        posix_spawnattr_setpgroup(&m_attributes, 0);
        setSignals();
        posix_spawnattr_setflags(&m_attributes,
                                 POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnActions()
    {
        posix_spawn_file_actions_destroy(&m_files);
        posix_spawnattr_destroy(&m_attributes);
    }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;

    const posix_spawn_file_actions_t *files() const
    {
        return &m_files;
    }
    const posix_spawnattr_t *attributes() const
    {
        return &m_attributes;
    }

private:
    void setSignals()
    {
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
    }

    posix_spawn_file_actions_t m_files;
    posix_spawnattr_t m_attributes;
};

/// A copy of `descriptor` that is out of the way of the numbers that the engine uses.
FileDescriptor copiedHigh(int descriptor)
{
    return FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 2 * kDocumentInEngine));
}

Error startingError(const QString &program, int code)
{
    return pdfError(PDFErrorCode::EngineMissing,
                    program + u": " + QString::fromLocal8Bit(std::strerror(code)));
}

QString endingOf(int status)
{
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        return QStringLiteral("it was ended by signal %1 (%2)")
            .arg(signal)
            .arg(QString::fromLocal8Bit(sigdescr_np(signal)));
    }
    return QStringLiteral("it ended with status %1").arg(WEXITSTATUS(status));
}
} // namespace

Result<EngineProcess> EngineProcess::start(const QString &program, int documentDescriptor)
{
    std::array<int, 2> pair;
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()) != 0)
        return startingError(program, errno);
    FileDescriptor ours(pair[0]);
    const FileDescriptor theirs(pair[1]);
    const FileDescriptor socketCopy = copiedHigh(theirs.get());
    const FileDescriptor documentCopy = copiedHigh(documentDescriptor);
    if (!socketCopy || !documentCopy)
        return startingError(program, errno);
    const SpawnActions actions(socketCopy.get(), documentCopy.get());
    QByteArray name = QFile::encodeName(program);
    const std::array<char *, 2> arguments = {name.data(), nullptr};
    const std::array<char *, 1> environment = {nullptr};
    pid_t process = 0;
    const int code = posix_spawn(&process, name.constData(), actions.files(), actions.attributes(),
                                 arguments.data(), environment.data());
    if (code != 0)
        return startingError(program, code);
    return EngineProcess(process, std::move(ours));
}

EngineProcess::EngineProcess(pid_t process, FileDescriptor socket)
    : m_process(process)
    , m_socket(std::move(socket))
{
}

EngineProcess::EngineProcess(EngineProcess &&other) noexcept
    : m_process(std::exchange(other.m_process, 0))
    , m_socket(std::move(other.m_socket))
{
}

EngineProcess &EngineProcess::operator=(EngineProcess &&other) noexcept
{
    std::swap(m_process, other.m_process);
    std::swap(m_socket, other.m_socket);
    return *this;
}

EngineProcess::~EngineProcess()
{
    end();
}

QString EngineProcess::end()
{
    if (!isRunning())
        return {};
    const pid_t process = std::exchange(m_process, 0);
    kill(-process, SIGKILL); // the whole group, which for the real engine is itself
    m_socket.reset(); // only now: an engine that sees its socket close ends by itself, and tells another end
    int status = 0;
    pid_t reaped;
    do
        reaped = waitpid(process, &status, 0);
    while (reaped < 0 && errno == EINTR);
    return reaped == process ? endingOf(status) : QStringLiteral("it is gone");
}
