#include "pdf/EngineProcess.h"

#include "support/Printing.h"
#include "support/Programs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
Result<EngineProcess> started()
{
    const FileDescriptor document(open("/dev/null", O_RDONLY | O_CLOEXEC));
    return EngineProcess::start(pdfEngineProgram(), document.get());
}

/// Blocks until a child has ended, and leaves it to be reaped.
pid_t endedChild()
{
    siginfo_t information = {};
    EXPECT_EQ(waitid(P_ALL, 0, &information, WEXITED | WNOWAIT), 0);
    return information.si_pid;
}
} // namespace

TEST(EngineProcess, EndsByItselfWhenTheProgramGoes)
{
    Result<EngineProcess> process = started();
    ASSERT_TRUE(process);
    shutdown(process->socket(), SHUT_RDWR);
    EXPECT_GT(endedChild(), 0);
    EXPECT_EQ(process->end(), QStringLiteral("it ended with status 0"));
}

TEST(EngineProcess, EndsByItselfWhenItIsSentNonsense)
{
    Result<EngineProcess> process = started();
    ASSERT_TRUE(process);
    EXPECT_EQ(send(process->socket(), "this is no request", 18, MSG_NOSIGNAL), 18);
    EXPECT_GT(endedChild(), 0);
    EXPECT_EQ(process->end(), QStringLiteral("it ended with status 0"));
}

TEST(EngineProcess, IsEndedAndReapedOnDemandAndOnlyOnce)
{
    Result<EngineProcess> process = started();
    ASSERT_TRUE(process);
    EXPECT_TRUE(process->isRunning());
    EXPECT_TRUE(process->end().contains(u"signal 9"));
    EXPECT_FALSE(process->isRunning());
    EXPECT_EQ(process->end(), QString());
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(EngineProcess, LivesInAProcessGroupOfItsOwn)
{
    Result<EngineProcess> process = started();
    ASSERT_TRUE(process);
    shutdown(process->socket(), SHUT_RDWR);
    const pid_t child = endedChild();
    EXPECT_EQ(getpgid(child), child);
}
