#include "ConfinedProcess.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <poll.h>
#include <pthread.h>
#include <sys/resource.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SANITIZED 1
#else
#define SANITIZED 0
#endif

namespace
{
struct Findings {
    bool isConfined = false;
    bool isPlainWorkPossible = false;
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

/// The C library of some architectures makes one of these calls of `poll`, that of others the other.
bool canPoll()
{
    pollfd socket = {kSocketDescriptor, POLLOUT, 0};
    const timespec noTime = {};
    return poll(&socket, 1, 0) == 1 && ppoll(&socket, 1, &noTime, nullptr) == 1;
}

/// Reads the document, waits for the socket, answers on it and uses memory, as the engine does.
bool doesPlainWork()
{
    char byte = 0;
    void *memory = malloc(4 << 20);
    std::memset(memory, 1, 4 << 20);
    const bool isGood = static_cast<char *>(memory)[4096] == 1;
    free(memory);
    return isGood && pread(kDocumentDescriptor, &byte, 1, 0) == 1 && byte == 'd' && canPoll() &&
           send(kSocketDescriptor, "r", 1, MSG_NOSIGNAL) == 1;
}

void confineAndTell(Findings &found)
{
    found.isConfined = !confine().has_value();
}

void lower(__rlimit_resource resource, rlim_t value)
{
    const rlimit both = {value, value};
    if (setrlimit(resource, &both) != 0)
        _exit(3);
}

/// A line of the kernel's list, the soft limit and the hard one both `value`.
auto saysLimit(const std::string &name, const std::string &value)
{
    return testing::ContainsRegex("Max " + name + " +" + value + " +" + value + " ");
}
} // namespace

TEST(Confinement, LeavesTheEngineItsWork)
{
    ConfinedProcess<Findings> process;
    const Findings &findings = process.run([](Findings &found) {
        found.isConfined = !confine().has_value();
        found.isPlainWorkPossible = doesPlainWork();
    });
    EXPECT_TRUE(findings.isConfined);
    EXPECT_TRUE(findings.isPlainWorkPossible);
}

TEST(Confinement, HoldsForThreadsThatWereThereBefore)
{
    ConfinedProcess<Findings> process;
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

TEST(Confinement, LimitsWhatTheProcessMayUse)
{
    ConfinedProcess<Findings> process;
    EXPECT_TRUE(process.run(confineAndTell).isConfined);
    EXPECT_THAT(process.limits(), saysLimit("cpu time", "600"));
    EXPECT_THAT(process.limits(), saysLimit("core file size", "0"));
    EXPECT_THAT(process.limits(), saysLimit("file size", "0"));
    EXPECT_THAT(process.limits(), saysLimit("processes", "0"));
    EXPECT_THAT(process.limits(), saysLimit("open files", "6"));
    EXPECT_THAT(process.limits(), saysLimit("address space", SANITIZED ? "unlimited" : "2147483648"));
}

TEST(Confinement, KeepsLimitsThatWereLowerBefore)
{
    ConfinedProcess<Findings> process;
    const Findings &findings = process.run([](Findings &found) {
        lower(RLIMIT_CPU, 300);
        if (!SANITIZED)
            lower(RLIMIT_AS, 1'500'000 * 1024ul);
        confineAndTell(found);
    });
    EXPECT_TRUE(findings.isConfined);
    EXPECT_THAT(process.limits(), saysLimit("cpu time", "300"));
    EXPECT_THAT(process.limits(), saysLimit("address space", SANITIZED ? "unlimited" : "1536000000"));
}
