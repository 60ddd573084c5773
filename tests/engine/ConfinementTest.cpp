#include "engine/Confinement.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/sched.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/// Something that hostile code would do. Answers what the system call answered.
struct Attempt {
    const char *name;
    long (*act)();
};

long answerOf(void *memory)
{
    return memory == MAP_FAILED ? -1 : 0;
}

long connectAnywhere()
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(9);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return connect(kSocketDescriptor, reinterpret_cast<sockaddr *>(&address), sizeof address);
}

long cloneByNewCall()
{
    clone_args arguments = {};
    arguments.exit_signal = SIGCHLD;
    const long child = syscall(SYS_clone3, &arguments, sizeof arguments);
    if (child == 0)
        _exit(0);
    return child;
}

long forkOnce()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    return child;
}

long executeShell()
{
    const std::array<const char *, 4> arguments = {"/bin/sh", "-c", "exit 77", nullptr};
    return execve(arguments[0], const_cast<char **>(arguments.data()), nullptr);
}

long readParentMemory()
{
    char byte = 0;
    iovec local = {&byte, 1};
    iovec remote = {reinterpret_cast<void *>(&connectAnywhere), 1};
    return process_vm_readv(getppid(), &local, 1, &remote, 1, 0);
}

long makeMemoryExecutable()
{
    void *memory = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return mprotect(memory, 4096, PROT_READ | PROT_EXEC);
}

long raiseLimit()
{
    rlimit limit = {RLIM_INFINITY, RLIM_INFINITY};
    return syscall(SYS_prlimit64, 0, RLIMIT_CPU, &limit, nullptr);
}

const std::array kAttempts = {
    Attempt{"open a file",
            [] {
                return long(open("/etc/passwd", O_RDONLY));
            }},
    Attempt{"open a file by the oldest call",
            [] {
                return syscall(SYS_open, "/etc/passwd", O_RDONLY, 0);
            }},
    Attempt{"create a file",
            [] {
                return long(open("/tmp/quirevault-escaped", O_CREAT | O_WRONLY, 0600));
            }},
    Attempt{"write into the document",
            [] {
                return long(write(kDocumentDescriptor, "x", 1));
            }},
    Attempt{"cut the document",
            [] {
                return long(ftruncate(kDocumentDescriptor, 0));
            }},
    Attempt{"make a folder",
            [] {
                return syscall(SYS_mkdir, "/tmp/quirevault-escaped", 0700);
            }},
    Attempt{"remove a file",
            [] {
                return syscall(SYS_unlink, "/tmp/quirevault-escaped");
            }},
    Attempt{"look at a file's status",
            [] {
                return long(access("/etc/passwd", R_OK));
            }},
    Attempt{"make a socket",
            [] {
                return long(socket(AF_INET, SOCK_STREAM, 0));
            }},
    Attempt{"make a local socket",
            [] {
                return long(socket(AF_UNIX, SOCK_STREAM, 0));
            }},
    Attempt{"connect its socket", connectAnywhere},
    Attempt{"fork", forkOnce},
    Attempt{"clone by the newest call", cloneByNewCall},
    Attempt{"run a program", executeShell},
    Attempt{"trace its parent",
            [] {
                return ptrace(PTRACE_ATTACH, getppid(), nullptr, nullptr);
            }},
    Attempt{"read its parent's memory", readParentMemory},
    Attempt{"signal its parent",
            [] {
                return long(kill(getppid(), SIGTERM));
            }},
    Attempt{"signal its parent's thread",
            [] {
                return syscall(SYS_tgkill, getppid(), getppid(), SIGTERM);
            }},
    Attempt{"map executable memory",
            [] {
                return answerOf(mmap(nullptr, 4096, PROT_READ | PROT_WRITE | PROT_EXEC,
                                     MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
            }},
    Attempt{"make memory executable", makeMemoryExecutable},
    Attempt{"make a memory file",
            [] {
                return long(memfd_create("x", 0));
            }},
    Attempt{"raise its limits", raiseLimit},
    Attempt{"allow core dumps again",
            [] {
                return long(prctl(PR_SET_DUMPABLE, 1, 0, 0, 0));
            }},
    Attempt{"enter a new namespace",
            [] {
                return syscall(SYS_unshare, CLONE_NEWUSER);
            }},
    Attempt{"set up a ring of system calls",
            [] {
                return syscall(SYS_io_uring_setup, 8, nullptr);
            }},
};

/// What a confined process found out, in memory that it shares with the test.
struct Findings {
    bool isConfined = false;
    bool couldReadBefore = false;
    bool isPlainWorkPossible = false;
    std::array<long, kAttempts.size()> answers = {};
    std::array<int, kAttempts.size()> errors = {};
    std::atomic<int> isThreadRunning = 0;
    std::atomic<int> mayThreadTry = 0;
    long threadAnswer = 0;
};

void *openWhenConfined(void *shared)
{
    auto *found = static_cast<Findings *>(shared);
    found->isThreadRunning = 1;
    found->isThreadRunning.notify_one();
    found->mayThreadTry.wait(0);
    found->threadAnswer = open("/etc/passwd", O_RDONLY);
    return nullptr;
}

void attack(Findings &findings)
{
    for (std::size_t i = 0; i < kAttempts.size(); ++i) {
        errno = 0;
        findings.answers[i] = kAttempts[i].act();
        findings.errors[i] = errno;
    }
}

/// Reads the document, answers on the socket and uses memory, as the engine does.
bool doesPlainWork()
{
    char byte = 0;
    void *memory = malloc(4 << 20);
    std::memset(memory, 1, 4 << 20);
    const bool isGood = static_cast<char *>(memory)[4096] == 1;
    free(memory);
    return isGood && pread(kDocumentDescriptor, &byte, 1, 0) == 1 && byte == 'd' &&
           send(kSocketDescriptor, "r", 1, MSG_NOSIGNAL) == 1;
}

/// Becomes what the engine is just after its start: the socket and a document at their numbers.
void takePlaces(int socket)
{
    const int document = memfd_create("document", 0);
    if (write(document, "d", 1) != 1)
        _exit(2);
    dup2(socket, 50);
    dup2(document, kDocumentDescriptor);
    dup2(50, kSocketDescriptor);
    close_range(kDocumentDescriptor + 1, ~0U, 0);
}

/// Runs `act` in a process of its own, confined, and answers what it left in the findings.
class ConfinedProcess
{
public:
    ConfinedProcess()
        : m_findings(new (mmap(nullptr, sizeof(Findings), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                               -1, 0)) Findings)
    {
    }
    ~ConfinedProcess() { munmap(m_findings, sizeof(Findings)); }

    const Findings &run(void (*act)(Findings &))
    {
        std::array<int, 2> pair;
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data()), 0);
        const pid_t child = fork();
        if (child == 0) {
            takePlaces(pair[1]);
            m_findings->couldReadBefore = close(open("/etc/passwd", O_RDONLY)) == 0;
            act(*m_findings);
            _exit(0);
        }
        close(pair[1]);
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        close(pair[0]);
        EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
        EXPECT_EQ(WEXITSTATUS(status), 0);
        return *m_findings;
    }

private:
    Findings *m_findings;
};
} // namespace

TEST(Confinement, EveryAttemptFromInsideFails)
{
    ConfinedProcess process;
    const Findings &findings = process.run([](Findings &found) {
        found.isConfined = !confine().has_value();
        attack(found);
    });
    ASSERT_TRUE(findings.isConfined);
    EXPECT_TRUE(findings.couldReadBefore) << "the attempts prove nothing where files cannot be read at all";
    for (std::size_t i = 0; i < kAttempts.size(); ++i) {
        EXPECT_EQ(findings.answers[i], -1) << "it could " << kAttempts[i].name;
        EXPECT_EQ(findings.errors[i], EPERM)
            << "it tried to " << kAttempts[i].name << ": " << strerror(findings.errors[i]);
    }
    EXPECT_NE(access("/tmp/quirevault-escaped", F_OK), 0);
}

TEST(Confinement, LeavesTheEngineItsWork)
{
    ConfinedProcess process;
    const Findings &findings = process.run([](Findings &found) {
        found.isConfined = !confine().has_value();
        found.isPlainWorkPossible = doesPlainWork();
    });
    EXPECT_TRUE(findings.isConfined);
    EXPECT_TRUE(findings.isPlainWorkPossible);
}

TEST(Confinement, HoldsForThreadsThatWereThereBefore)
{
    ConfinedProcess process;
    const Findings &findings = process.run([](Findings &found) {
        pthread_t thread;
        pthread_create(&thread, nullptr, openWhenConfined, &found);
        // A thread that is still being made cannot finish that under confinement.
        found.isThreadRunning.wait(0);
        found.isConfined = !confine().has_value();
        found.mayThreadTry = 1;
        found.mayThreadTry.notify_one();
        pthread_join(thread, nullptr);
    });
    EXPECT_TRUE(findings.isConfined);
    EXPECT_EQ(findings.threadAnswer, -1);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(Confinement, LimitsTheAddressSpace)
{
    ConfinedProcess process;
    const Findings &findings = process.run([](Findings &found) {
        found.isConfined = !confine().has_value();
        found.answers[0] = answerOf(mmap(nullptr, std::size_t(2) << 30, PROT_READ | PROT_WRITE,
                                         MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
    });
    EXPECT_TRUE(findings.isConfined);
    EXPECT_EQ(findings.answers[0], -1);
}
#endif
