#pragma once

#include "engine/Confinement.h"

#include <array>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs something in a process of its own that has become what the engine is just after its start: the socket
/// and a document (of the one letter "d") at their numbers and nothing else open. What it finds out it leaves
/// in a `Findings`, in memory that it shares with the test.
template <typename Findings> class ConfinedProcess
{
public:
    ConfinedProcess()
        : m_findings(new (mmap(nullptr, sizeof(Findings), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                               -1, 0)) Findings)
    {
    }
    ~ConfinedProcess() { munmap(m_findings, sizeof(Findings)); }
    ConfinedProcess(const ConfinedProcess &) = delete;
    ConfinedProcess &operator=(const ConfinedProcess &) = delete;

    const Findings &run(void (*act)(Findings &))
    {
        std::array<int, 2> pair;
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data()), 0);
        const pid_t child = fork();
        if (child == 0) {
            takePlaces(pair[1]);
            act(*m_findings);
            _exit(0);
        }
        close(pair[1]);
        reap(child);
        close(pair[0]);
        return *m_findings;
    }

    /// The limits of the process when it ended, as the kernel lists them: "Max cpu time   600   600 seconds".
    const std::string &limits() const { return m_limits; }

private:
    static void takePlaces(int socket)
    {
        const int document = memfd_create("document", 0);
        if (write(document, "d", 1) != 1)
            _exit(2);
        dup2(socket, 50);
        dup2(document, kDocumentDescriptor);
        dup2(50, kSocketDescriptor);
        close_range(kDocumentDescriptor + 1, ~0U, 0);
    }

    void reap(pid_t child)
    {
        siginfo_t information = {};
        EXPECT_EQ(waitid(P_PID, static_cast<id_t>(child), &information, WEXITED | WNOWAIT), 0);
        std::ostringstream limits;
        limits << std::ifstream("/proc/" + std::to_string(child) + "/limits").rdbuf();
        m_limits = limits.str();
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }

    Findings *m_findings;
    std::string m_limits;
};
