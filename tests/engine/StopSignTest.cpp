#include "OpenedDocument.h"

#include "pdf/protocol/FileDescriptor.h"
#include "pdf/protocol/StopFlag.h"
#include "support/PdfBuilder.h"

namespace
{
/// Memory as the program shares it, with the flag raised.
SharedMemory raisedFlag()
{
    const FileDescriptor file(memfd_create("flag", 0));
    EXPECT_EQ(ftruncate(file.get(), kStopFlagBytes), 0);
    std::optional<SharedMemory> memory =
        SharedMemory::map(file.get(), kStopFlagBytes, SharedMemory::Access::ReadWrite);
    memory->data()[0] = 1;
    return *std::move(memory);
}
} // namespace

TEST(StopSign, IsDownWhenNobodyCanRaiseIt)
{
    StopSign sign;
    EXPECT_FALSE(sign.isRaised());
    EXPECT_EQ(sign.forWork()->abort, 0);
}

TEST(StopSign, FollowsTheProgramsMemory)
{
    SharedMemory memory = raisedFlag();
    unsigned char *flag = memory.data();
    StopSign sign(std::move(memory));
    EXPECT_TRUE(sign.isRaised());
    EXPECT_NE(sign.forWork()->abort, 0);
    flag[0] = 0;
    EXPECT_FALSE(sign.isRaised());
    EXPECT_EQ(sign.forWork()->abort, 0);
}

TEST(StopSign, EndsEveryKindOfWorkOnAPage)
{
    OpenedDocument document(PdfBuilder().page({QStringLiteral("Word")}).build());
    SharedMemory memory = raisedFlag();
    unsigned char *flag = memory.data();
    document.document().obey(StopSign(std::move(memory)));
    const Reply stopped = FailedReply{Failure::Stopped, {}};
    std::array<unsigned char, 4> pixel = {};
    EXPECT_EQ(document.document().pageText({0}), stopped);
    EXPECT_EQ(document.document().placedText({0}), stopped);
    EXPECT_EQ(document.document().thumbnail({0, 1, 1}), stopped);
    EXPECT_EQ(document.document().draw({.width = 1, .height = 1}, pixel.data()), stopped);
    flag[0] = 0;
    EXPECT_EQ(document.text(), "Word\n");
}
