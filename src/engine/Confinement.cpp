#include "engine/Confinement.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QUIREVAULT_ENGINE_SANITIZED 1
#else
#define QUIREVAULT_ENGINE_SANITIZED 0
#endif

namespace
{
constexpr rlim_t kAddressSpaceBytes = rlim_t(2) << 30;

// For a reader window that stays open all day; what is stuck is ended by the program's deadlines long before.
constexpr rlim_t kProcessorSeconds = 600;

using Problem = std::optional<std::string>;

Problem problem(const char *what, int error)
{
    return std::string(what) + ": " + strerror(error);
}

/// Lowers a limit to `value`, or leaves it where whoever started the program set it lower: only a privileged
/// process could raise that.
Problem limit(__rlimit_resource resource, rlim_t value, const char *what)
{
    rlimit inherited = {};
    if (getrlimit(resource, &inherited) != 0)
        return problem(what, errno);
    const rlim_t lower = std::min(value, inherited.rlim_max);
    const rlimit both = {lower, lower};
    if (setrlimit(resource, &both) != 0)
        return problem(what, errno);
    return std::nullopt;
}

Problem limitResources()
{
    // The sanitizers reserve terabytes of address space for their shadow memory.
    if (!QUIREVAULT_ENGINE_SANITIZED) {
        if (Problem found = limit(RLIMIT_AS, kAddressSpaceBytes, "limiting the address space"))
            return found;
    }
    if (Problem found = limit(RLIMIT_CPU, kProcessorSeconds, "limiting the processor time"))
        return found;
    if (Problem found = limit(RLIMIT_CORE, 0, "forbidding core dumps"))
        return found;
    if (Problem found = limit(RLIMIT_FSIZE, 0, "forbidding files to grow"))
        return found;
    if (Problem found = limit(RLIMIT_NPROC, 0, "forbidding processes"))
        return found;
    return limit(RLIMIT_NOFILE, kMemoryDescriptor + 1, "forbidding further files");
}

Problem renouncePrivileges()
{
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return problem("renouncing privileges", errno);
    // No core dump even where a pattern ignores the limit, and no other process of the user may look inside.
    if (prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) != 0)
        return problem("forbidding dumps", errno);
    return std::nullopt;
}

/// The list of permitted system calls while it is put together.
class PermittedCalls
{
public:
    PermittedCalls()
        : m_filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)))
    {
        if (!m_filter) {
            note(-ENOMEM);
            return;
        }
        // Threads that are already there obey too.
        note(seccomp_attr_set(m_filter.get(), SCMP_FLTATR_CTL_TSYNC, 1));
        // Calls by the numbers of another architecture (32-bit ones, say) fail like the rest, and do not
        // kill.
        note(seccomp_attr_set(m_filter.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_ERRNO(EPERM)));
    }

    void permit(std::initializer_list<int> calls)
    {
        for (int call : calls)
            note(seccomp_rule_add_array(m_filter.get(), SCMP_ACT_ALLOW, call, 0, nullptr));
    }

    /// Permits `call` only while the condition on its arguments holds.
    void permitIf(int call, scmp_arg_cmp condition)
    {
        note(seccomp_rule_add_array(m_filter.get(), SCMP_ACT_ALLOW, call, 1, &condition));
    }

    Problem load()
    {
        note(m_error == 0 ? seccomp_load(m_filter.get()) : 0);
        return m_error == 0 ? std::nullopt : problem("restricting system calls", -m_error);
    }

private:
    struct Releaser {
        void operator()(void *filter) const { seccomp_release(filter); }
    };

    void note(int result)
    {
        if (m_error == 0 && result != 0)
            m_error = result;
    }

    std::unique_ptr<void, Releaser> m_filter;
    int m_error = 0;
};

scmp_arg_cmp argumentIs(unsigned argument, std::uint64_t value)
{
    return {argument, SCMP_CMP_EQ, value, 0};
}

scmp_arg_cmp withoutBits(unsigned argument, std::uint64_t bits)
{
    return {argument, SCMP_CMP_MASKED_EQ, bits, 0};
}

Problem restrictSystemCalls()
{
    PermittedCalls calls;
    calls.permit({SCMP_SYS(exit), SCMP_SYS(exit_group), SCMP_SYS(futex), SCMP_SYS(brk), SCMP_SYS(munmap),
                  SCMP_SYS(mremap), SCMP_SYS(madvise), SCMP_SYS(clock_gettime), SCMP_SYS(gettimeofday),
                  SCMP_SYS(getpid), SCMP_SYS(gettid), SCMP_SYS(rt_sigreturn), SCMP_SYS(rt_sigprocmask),
                  SCMP_SYS(sigaltstack), SCMP_SYS(sched_yield), SCMP_SYS(restart_syscall), SCMP_SYS(poll),
                  SCMP_SYS(ppoll)});
    calls.permitIf(SCMP_SYS(mmap), withoutBits(2, PROT_EXEC));
    calls.permitIf(SCMP_SYS(mprotect), withoutBits(2, PROT_EXEC));
    calls.permitIf(SCMP_SYS(recvfrom), argumentIs(0, kSocketDescriptor));
    calls.permitIf(SCMP_SYS(recvmsg), argumentIs(0, kSocketDescriptor));
    calls.permitIf(SCMP_SYS(sendto), argumentIs(0, kSocketDescriptor));
    calls.permitIf(SCMP_SYS(pread64), argumentIs(0, kDocumentDescriptor));
    calls.permitIf(SCMP_SYS(close), argumentIs(0, kMemoryDescriptor));
    calls.permitIf(SCMP_SYS(write), argumentIs(0, STDERR_FILENO)); // last words of the C library
    // abort() signals its own process, and nobody else may be signalled.
    calls.permitIf(SCMP_SYS(tgkill), argumentIs(0, static_cast<std::uint64_t>(getpid())));
    return calls.load();
}
} // namespace

std::optional<std::string> confine()
{
    if (Problem found = renouncePrivileges())
        return found;
    if (Problem found = limitResources())
        return found;
    return restrictSystemCalls();
}
