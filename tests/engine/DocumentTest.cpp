#include "OpenedDocument.h"

#include "pdf/protocol/Limits.h"
#include "support/PdfBuilder.h"

#include <gmock/gmock.h>

namespace
{
QByteArray oneWord()
{
    return PdfBuilder().title("A title").author("An author").page({QStringLiteral("Word")}).build();
}
} // namespace

TEST(Document, AnswersAttributesAndPageCount)
{
    const OpenedDocument document(oneWord());
    EXPECT_EQ(document.opened(), (OpenedReply{kProtocolVersion, 1, "A title", "An author"}));
}

TEST(Document, TellsAbsentAttributesFromEmptyOnes)
{
    const OpenedDocument document(PdfBuilder().title("").attribute("/Author 42").page(QStringList()).build());
    EXPECT_EQ(document.opened().title, "");
    EXPECT_EQ(document.opened().author, std::nullopt);
}

TEST(Document, ReadsWhatTheEmptyPasswordOpens)
{
    OpenedDocument document(PdfBuilder()
                                .title("Hidden")
                                .page({QStringLiteral("Word")})
                                .lock(PdfLock::OpensWithoutPassword)
                                .build());
    EXPECT_EQ(document.opened().title, "Hidden");
    EXPECT_EQ(document.text(), "Word\n");
}

TEST(Document, AsksForAPasswordBeforeAnythingElse)
{
    const OpenedDocument document(
        PdfBuilder().title("Hidden").page({QStringLiteral("Word")}).lock(PdfLock::NeedsPassword).build());
    EXPECT_EQ(document.failed().failure, Failure::NeedsPassword);
}

TEST(Document, OpensWithThePasswordEntered)
{
    const QByteArray locked =
        PdfBuilder().title("Hidden").page({QStringLiteral("Word")}).lock(PdfLock::NeedsPassword).build();
    OpenedDocument document(locked, PdfBuilder::kPassword);
    EXPECT_EQ(document.opened().title, "Hidden");
    EXPECT_EQ(document.text(), "Word\n");
    EXPECT_EQ(OpenedDocument(locked, "simsim").failed().failure, Failure::WrongPassword);
    EXPECT_EQ(OpenedDocument(locked, "").failed().failure, Failure::WrongPassword);
}

TEST(Document, NeedsNoPasswordWhereNothingIsLocked)
{
    OpenedDocument document(oneWord(), "anything");
    EXPECT_EQ(document.text(), "Word\n");
}

TEST(Document, TellsWhatIsNotAPdfFromADamagedOne)
{
    EXPECT_EQ(OpenedDocument("").failed(), (FailedReply{Failure::NotAPDF, "the file is empty"}));
    EXPECT_EQ(OpenedDocument("\x89PNG\r\n\x1a\n and so on").failed().failure, Failure::NotAPDF);
    EXPECT_EQ(OpenedDocument("%PDF-1.7\nnothing more").failed().failure, Failure::Damaged);
    EXPECT_FALSE(OpenedDocument("%PDF-1.7\nnothing more").failed().reason.empty());
}

TEST(Document, IsRepairedWhenItsEndIsMissing)
{
    const QByteArray whole = oneWord();
    OpenedDocument document(whole.left(whole.indexOf("xref")));
    EXPECT_EQ(document.text(), "Word\n");
}

TEST(Document, OpensBehindJunk)
{
    OpenedDocument document("HTTP/1.1 200 OK\r\n\r\n" + oneWord());
    EXPECT_EQ(document.text(), "Word\n");
}

TEST(Document, OpensWithoutPages)
{
    EXPECT_EQ(OpenedDocument(PdfBuilder().build()).opened().pageCount, 0u);
}

TEST(Document, BelievesTheClaimedPageCount)
{
    OpenedDocument document(
        PdfBuilder().page({QStringLiteral("Word")}).claimPageCount(1'410'065'407).build());
    EXPECT_EQ(document.opened().pageCount, 1'410'065'407u);
}

TEST(Document, APageFailsAlone)
{
    OpenedDocument document(PdfBuilder()
                                .page({QStringLiteral("First")})
                                .page(PdfPage{.isBroken = true})
                                .page({QStringLiteral("Third")})
                                .build());
    EXPECT_EQ(document.opened().pageCount, 3u);
    EXPECT_EQ(document.text(0), "First\n");
    EXPECT_EQ(std::get<FailedReply>(document.textReply(1)).failure, Failure::PageUnavailable);
    EXPECT_EQ(document.text(2), "Third\n");
}

TEST(Document, PromisedPagesThatDoNotExistFail)
{
    OpenedDocument document(
        PdfBuilder().page({QStringLiteral("Word")}).claimPageCount(1'000'000'000).build());
    EXPECT_EQ(document.text(0), "Word\n");
    EXPECT_EQ(std::get<FailedReply>(document.textReply(999'999'999)).failure, Failure::PageUnavailable);
}

TEST(Document, ReadsAFileOfManyBlocks)
{
    PdfBuilder builder;
    for (int i = 0; i < 400; ++i)
        builder.page({QStringLiteral("Page number %1").arg(i), QString(500, u'x')});
    OpenedDocument document(builder.build());
    EXPECT_THAT(document.text(399), testing::StartsWith("Page number 399\n"));
    EXPECT_THAT(document.text(0), testing::StartsWith("Page number 0\n"));
}
