#include "reader/ReaderDocument.h"

#include "reader/HeldRequest.h"
#include "support/FakePDFDocument.h"
#include "support/Printing.h"

#include <QEventLoop>
#include <QThread>
#include <atomic>
#include <future>
#include <gtest/gtest.h>

namespace
{

using Priority = ReaderDocument::Priority;

/// A document that tells when it, and with it its engine, ended.
class EndingDocument : public FakePDFDocument
{
public:
    explicit EndingDocument(std::promise<void> &ended)
        : m_ended(ended)
    {
    }
    ~EndingDocument() override { m_ended.set_value(); }

private:
    std::promise<void> &m_ended;
};

ReaderDocument::Open openerOfPages(std::vector<QByteArray> pages)
{
    return [pages = std::move(pages)](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
        return std::unique_ptr<PDFDocument>(documentOf(pages));
    };
}

QFuture<Result<QByteArray>> askText(ReaderDocument &document, qint64 index,
                                    Priority priority = Priority::Visible, std::stop_token stop = {})
{
    return document.ask(priority, stop, [index](PDFDocument &pdf, std::stop_token itsStop) {
        return pdf.pageText(index, itsStop);
    });
}

} // namespace

TEST(ReaderDocument, AnswersFromAThreadOfItsOwn)
{
    ReaderDocument document(openerOfPages({"one", "two"}));
    ASSERT_TRUE(document.open().result());
    EXPECT_TRUE(document.isOpen());
    EXPECT_EQ(document.pageCount(), 2);
    EXPECT_EQ(askText(document, 1).result().value(), "two");
    const auto thread = document.ask(Priority::Visible, {}, [](PDFDocument &, auto) {
        return Result<QThread *>(QThread::currentThread());
    });
    EXPECT_NE(thread.result().value(), QThread::currentThread());
}

TEST(ReaderDocument, OpensOnceForWhoOpensItAfterItWasBegunAhead)
{
    std::atomic<int> openings = 0;
    ReaderDocument document([&openings](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
        ++openings;
        return std::unique_ptr<PDFDocument>(documentOf({"one"}));
    });
    document.openAhead();
    ASSERT_TRUE(document.open().result());
    EXPECT_TRUE(document.isOpen());
    EXPECT_EQ(openings, 1);
    ASSERT_TRUE(document.open().result()) << "again, as after a loss";
    EXPECT_EQ(openings, 2);
}

TEST(ReaderDocument, OpensAnewWithAPasswordThoughItWasBegunAhead)
{
    ReaderDocument document(
        [](const std::optional<QString> &password, auto) -> Result<std::unique_ptr<PDFDocument>> {
            if (!password)
                return pdfError(PDFErrorCode::NeedsPassword);
            return std::unique_ptr<PDFDocument>(documentOf({"one"}));
        });
    document.openAhead();
    EXPECT_TRUE(document.open(QStringLiteral("sesame")).result());
    EXPECT_TRUE(document.isOpen());
}

TEST(ReaderDocument, TellsWhyWhatWasBegunAheadFailed)
{
    ReaderDocument document(
        [](auto, auto) -> Result<std::unique_ptr<PDFDocument>> { return pdfError(PDFErrorCode::NotAPDF); });
    document.openAhead();
    EXPECT_TRUE(isPDFError(document.open().result().error(), PDFErrorCode::NotAPDF));
}

TEST(ReaderDocument, RefusesRequestsBeforeItIsOpen)
{
    ReaderDocument document(openerOfPages({"one"}));
    EXPECT_FALSE(document.isOpen());
    EXPECT_EQ(document.pageCount(), 0);
    EXPECT_TRUE(isPDFError(askText(document, 0).result().error(), PDFErrorCode::EngineFailed));
}

TEST(ReaderDocument, ServesWhatIsVisibleBeforeWhatLooksAhead)
{
    ReaderDocument document(openerOfPages({}));
    ASSERT_TRUE(document.open().result());
    HeldRequest held(document);
    auto order = std::make_shared<QStringList>();
    const auto note = [&](Priority priority, const QString &name) {
        return document.ask(priority, {}, [order, name](PDFDocument &, auto) {
            order->append(name);
            return Result<void>();
        });
    };
    const auto ahead = note(Priority::Ahead, QStringLiteral("ahead"));
    const auto first = note(Priority::Visible, QStringLiteral("first"));
    const auto second = note(Priority::Visible, QStringLiteral("second"));
    held.letGo();
    ASSERT_TRUE(ahead.result());
    EXPECT_EQ(*order,
              (QStringList{QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("ahead")}));
    EXPECT_TRUE(first.isFinished() && second.isFinished());
}

TEST(ReaderDocument, DropsUnaskedWhatIsStoppedBeforeItsTurn)
{
    ReaderDocument document(openerOfPages({"one"}));
    ASSERT_TRUE(document.open().result());
    HeldRequest held(document);
    std::stop_source stop;
    auto wasAsked = std::make_shared<bool>(false);
    const auto unwanted = document.ask(Priority::Visible, stop.get_token(), [wasAsked](PDFDocument &, auto) {
        *wasAsked = true;
        return Result<void>();
    });
    stop.request_stop();
    held.letGo();
    EXPECT_TRUE(isCancelled(unwanted.result().error()));
    EXPECT_FALSE(*wasAsked);
}

TEST(ReaderDocument, StopsTheRequestInFlightAndGoesOn)
{
    ReaderDocument document(openerOfPages({"one"}));
    ASSERT_TRUE(document.open().result());
    std::stop_source stop;
    std::promise<void> begun;
    const auto endless =
        document.ask(Priority::Visible, stop.get_token(),
                     [&begun](PDFDocument &, std::stop_token itsStop) -> Result<void> {
                         std::promise<void> stopped;
                         const std::stop_callback whenStopped(itsStop, [&stopped] { stopped.set_value(); });
                         begun.set_value();
                         stopped.get_future().wait();
                         return cancelledError();
                     });
    begun.get_future().wait();
    stop.request_stop();
    EXPECT_TRUE(isCancelled(endless.result().error()));
    EXPECT_EQ(askText(document, 0).result().value(), "one");
}

TEST(ReaderDocument, StartsTheEngineAgainThatWasEndedForNotHeedingAStop)
{
    int restarts = 0;
    class Deaf : public FakePDFDocument
    {
    public:
        explicit Deaf(int &count)
            : m_restarts(count)
        {
            pages = {"one"};
        }
        Result<void> restart(std::stop_token) override
        {
            ++m_restarts;
            return {};
        }

    private:
        int &m_restarts;
    };
    ReaderDocument document([&restarts](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
        return std::unique_ptr<PDFDocument>(std::make_unique<Deaf>(restarts));
    });
    ASSERT_TRUE(document.open().result());
    const auto stopped = document.ask(Priority::Visible, {},
                                      [](PDFDocument &, auto) -> Result<void> { return cancelledError(); });
    EXPECT_TRUE(isCancelled(stopped.result().error()));
    EXPECT_EQ(askText(document, 0).result().value(), "one");
    EXPECT_EQ(restarts, 1);
    EXPECT_TRUE(document.isOpen());
}

TEST(ReaderDocument, TellsThatItsEngineIsLostAndOpensAgain)
{
    bool isHealthy = false;
    ReaderDocument document([&isHealthy](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
        auto fake = documentOf({"one"});
        if (!isHealthy)
            fake->failingPages.emplace(0, pdfError(PDFErrorCode::DeadlineExceeded));
        return std::unique_ptr<PDFDocument>(std::move(fake));
    });
    QList<Error> losses;
    QEventLoop loop;
    QObject::connect(&document, &ReaderDocument::lost, &loop, [&](const Error &error) {
        losses.append(error);
        loop.quit();
    });
    ASSERT_TRUE(document.open().result());
    EXPECT_FALSE(askText(document, 0).result());
    loop.exec();
    ASSERT_EQ(losses.size(), 1);
    EXPECT_TRUE(isPDFError(losses.first(), PDFErrorCode::DeadlineExceeded));
    EXPECT_FALSE(document.isOpen());
    EXPECT_EQ(askText(document, 0).result().error(), losses.first());

    isHealthy = true;
    ASSERT_TRUE(document.open().result());
    EXPECT_TRUE(document.isOpen());
    EXPECT_EQ(askText(document, 0).result().value(), "one");
}

TEST(ReaderDocument, OutlivesAPageThatCannotBeRead)
{
    ReaderDocument document(openerOfPages({"one"}));
    ASSERT_TRUE(document.open().result());
    EXPECT_FALSE(askText(document, 5).result());
    EXPECT_TRUE(document.isOpen());
    EXPECT_TRUE(askText(document, 0).result());
}

TEST(ReaderDocument, OpensWithThePasswordAndStaysClosedWithoutIt)
{
    ReaderDocument document(
        [](const std::optional<QString> &password, auto) -> Result<std::unique_ptr<PDFDocument>> {
            if (password != QStringLiteral("sesame"))
                return pdfError(password ? PDFErrorCode::WrongPassword : PDFErrorCode::NeedsPassword);
            return std::unique_ptr<PDFDocument>(documentOf({"one"}));
        });
    EXPECT_TRUE(isPDFError(document.open().result().error(), PDFErrorCode::NeedsPassword));
    EXPECT_TRUE(isPDFError(document.open(QStringLiteral("x")).result().error(), PDFErrorCode::WrongPassword));
    EXPECT_FALSE(document.isOpen());
    EXPECT_TRUE(isPDFError(askText(document, 0).result().error(), PDFErrorCode::WrongPassword));
    EXPECT_TRUE(document.open(QStringLiteral("sesame")).result());
    EXPECT_TRUE(document.isOpen());
}

TEST(ReaderDocument, ClosesWithoutWaitingForTheEngineAndThenEndsIt)
{
    std::promise<void> ended;
    auto document =
        std::make_unique<ReaderDocument>([&ended](auto, auto) -> Result<std::unique_ptr<PDFDocument>> {
            return std::unique_ptr<PDFDocument>(std::make_unique<EndingDocument>(ended));
        });
    ASSERT_TRUE(document->open().result());
    HeldRequest held(*document);
    const auto waiting = askText(*document, 0);
    document.reset(); // would not return if it waited for the request that is held
    EXPECT_FALSE(held.answer.isFinished());
    held.letGo();
    EXPECT_TRUE(isCancelled(waiting.result().error()));
    ended.get_future().wait();
}

TEST(ReaderDocument, StopsWhatIsInFlightWhenItCloses)
{
    auto document = std::make_unique<ReaderDocument>(openerOfPages({}));
    ASSERT_TRUE(document->open().result());
    std::promise<void> begun;
    const auto endless =
        document->ask(Priority::Ahead, {}, [&begun](PDFDocument &, std::stop_token stop) -> Result<void> {
            std::promise<void> stopped;
            const std::stop_callback whenStopped(stop, [&stopped] { stopped.set_value(); });
            begun.set_value();
            stopped.get_future().wait();
            return cancelledError();
        });
    begun.get_future().wait();
    document.reset();
    EXPECT_TRUE(isCancelled(endless.result().error()));
}
