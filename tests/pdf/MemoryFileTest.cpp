#include "pdf/MemoryFile.h"

#include "pdf/protocol/SharedMemory.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{
constexpr std::size_t kBytes = 10'000;

std::optional<SharedMemory> mappedForWriting(const MemoryFile &file)
{
    return SharedMemory::map(file.descriptor(), kBytes, SharedMemory::Access::ReadWrite);
}
} // namespace

TEST(MemoryFile, IsAsLargeAsAskedAndEmpty)
{
    const std::optional<MemoryFile> file = MemoryFile::create(kBytes);
    ASSERT_TRUE(file);
    struct stat status = {};
    ASSERT_EQ(fstat(file->descriptor(), &status), 0);
    EXPECT_EQ(status.st_size, off_t(kBytes));
    const std::optional<SharedMemory> memory =
        SharedMemory::map(file->descriptor(), kBytes, SharedMemory::Access::ReadOnly);
    ASSERT_TRUE(memory);
    EXPECT_EQ(memory->data()[kBytes - 1], 0);
}

TEST(MemoryFile, NobodyCanCutOrLengthenIt)
{
    const std::optional<MemoryFile> file = MemoryFile::create(kBytes);
    EXPECT_EQ(ftruncate(file->descriptor(), 1), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(ftruncate(file->descriptor(), off_t(kBytes) * 100), -1);
    EXPECT_EQ(errno, EPERM);
}

TEST(MemoryFile, WhatWasWrittenIsReadWithoutACopy)
{
    std::optional<MemoryFile> file = MemoryFile::create(kBytes);
    mappedForWriting(*file)->data()[7] = 42;
    ASSERT_TRUE(file->seal());
    const std::optional<SharedMemory> memory =
        SharedMemory::map(file->descriptor(), kBytes, SharedMemory::Access::ReadOnly);
    ASSERT_TRUE(memory);
    EXPECT_EQ(memory->data()[7], 42);
}

TEST(MemoryFile, CannotBeSealedWhileSomebodyCanWrite)
{
    std::optional<MemoryFile> file = MemoryFile::create(kBytes);
    {
        const std::optional<SharedMemory> held = mappedForWriting(*file);
        ASSERT_TRUE(held);
        EXPECT_FALSE(file->seal());
    }
    EXPECT_TRUE(file->seal());
}

TEST(MemoryFile, NobodyCanWriteOnceItIsSealed)
{
    std::optional<MemoryFile> file = MemoryFile::create(kBytes);
    ASSERT_TRUE(file->seal());
    EXPECT_FALSE(mappedForWriting(*file));
    EXPECT_EQ(pwrite(file->descriptor(), "x", 1, 0), -1);
    EXPECT_EQ(errno, EPERM);
}

TEST(MemoryFile, MoreMemoryThanThereIsIsAnError)
{
    EXPECT_FALSE(MemoryFile::create(std::size_t(1) << 63));
}
