#include "ConfinedProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <linux/sched.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>

namespace
{
/// Where no file ever is, unless the confined process makes one.
const std::string kEscape = testing::TempDir() + "quirevault-escaped-" + std::to_string(getpid());

/// Something that hostile code would do. Answers what the system call answered.
struct Attempt {
    const char *name;
    long (*act)();
};

#if defined(__x86_64__)
/// Marks the calls of the architecture with 32-bit pointers in 64-bit processes.
constexpr long kX32Bit = 0x40000000;
#endif

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

long sendDocumentAway()
{
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control = {};
    char byte = 0;
    iovec part = {&byte, 1};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr *beside = CMSG_FIRSTHDR(&message);
    beside->cmsg_level = SOL_SOCKET;
    beside->cmsg_type = SCM_RIGHTS;
    beside->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(beside), &kDocumentDescriptor, sizeof kDocumentDescriptor);
    return sendmsg(kSocketDescriptor, &message, MSG_NOSIGNAL);
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
                return long(open(kEscape.c_str(), O_CREAT | O_WRONLY, 0600));
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
                return syscall(SYS_mkdir, kEscape.c_str(), 0700);
            }},
    Attempt{"remove a file",
            [] {
                return syscall(SYS_unlink, kEscape.c_str());
            }},
    Attempt{"look at a file's status",
            [] {
                return long(access("/etc/passwd", R_OK));
            }},
    Attempt{"look at a file's status through the document",
            [] {
                struct stat status = {};
                return long(fstatat(kDocumentDescriptor, "/etc/passwd", &status, 0));
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
    Attempt{"send a descriptor away", sendDocumentAway},
    Attempt{"double a descriptor",
            [] {
                return long(dup(kDocumentDescriptor));
            }},
    Attempt{"close its socket",
            [] {
                return long(close(kSocketDescriptor));
            }},
    Attempt{"seal or unseal memory",
            [] {
                return long(fcntl(kDocumentDescriptor, F_ADD_SEALS, F_SEAL_WRITE));
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
#if defined(__x86_64__)
    Attempt{"make a call by another architecture's number",
            [] {
                return syscall(kX32Bit | SYS_getppid);
            }},
#endif
    Attempt{"set up a ring of system calls",
            [] {
                return syscall(SYS_io_uring_setup, 8, nullptr);
            }},
};

struct Findings {
    bool isConfined = false;
    bool couldReadBefore = false;
    std::array<long, kAttempts.size()> answers = {};
    std::array<int, kAttempts.size()> errors = {};
};

void attack(Findings &findings)
{
    for (std::size_t i = 0; i < kAttempts.size(); ++i) {
        errno = 0;
        findings.answers[i] = kAttempts[i].act();
        findings.errors[i] = errno;
    }
}
} // namespace

TEST(ConfinementAttack, EveryAttemptFromInsideFails)
{
    ConfinedProcess<Findings> process;
    const Findings &findings = process.run([](Findings &found) {
        found.couldReadBefore = close(open("/etc/passwd", O_RDONLY)) == 0;
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
    EXPECT_NE(access(kEscape.c_str(), F_OK), 0);
}
