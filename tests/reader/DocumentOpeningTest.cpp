#include "reader/DocumentOpening.h"

#include "reader/Await.h"
#include "support/FakePDFDocument.h"
#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <condition_variable>
#include <future>
#include <gtest/gtest.h>
#include <map>
#include <mutex>

namespace
{

/// Waits, when it goes, for the end of everything that holds what `hold` gave.
class Living
{
public:
    ~Living()
    {
        std::unique_lock lock(m_mutex);
        m_lessened.wait(lock, [this] { return m_count == 0; });
    }
    /// `end` runs when nobody holds it any more.
    std::shared_ptr<void> hold(std::function<void()> end)
    {
        const std::lock_guard lock(m_mutex);
        ++m_count;
        return {nullptr, [this, end = std::move(end)](void *) {
                    end();
                    const std::lock_guard ended(m_mutex);
                    --m_count;
                    m_lessened.notify_all();
                }};
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_lessened;
    int m_count = 0;
};

/// Documents as the test describes them, by path. One that is held opens when it is let go.
class DocumentOpeningTest : public ::testing::Test
{
protected:
    using Stage = DocumentOpening::Stage;
    using Opened = Result<std::unique_ptr<PDFDocument>>;

    ~DocumentOpeningTest() override
    {
        static_cast<void>(library.service.paperById(QString()).result().has_value());
        QCoreApplication::processEvents();
    }

    std::unique_ptr<ReaderDocument> makeDocument(const QString &path)
    {
        return std::make_unique<ReaderDocument>(
            [this, path, ended = endOf(path)](const std::optional<QString> &password, auto) -> Opened {
                if (held == path) {
                    reached.set_value();
                    release.get_future().wait();
                }
                if (locked == path && password != QStringLiteral("sesame"))
                    return pdfError(PDFErrorCode::NeedsPassword);
                if (broken == path)
                    return pdfError(PDFErrorCode::NotAPDF);
                auto document = std::make_unique<FakePDFDocument>();
                document->claimedPages = pages;
                return std::unique_ptr<PDFDocument>(std::move(document));
            });
    }

    /// Goes when the thread of a document of that path has ended.
    std::shared_ptr<void> endOf(const QString &path)
    {
        return living.hold([this, path] {
            if (path == held)
                heldEnded.set_value();
        });
    }

    void awaitStage(Stage stage)
    {
        awaitThat(opening.state, [&] { return opening.state.value().stage == stage; });
    }

    QString held;   ///< path of the document that opens only when it is let go
    QString locked; ///< that needs a password
    QString broken;
    qint64 pages = 3;
    std::promise<void> reached;
    std::promise<void> release;
    std::promise<void> heldEnded;
    TestLibrary library;
    Living living; ///< threads of documents, which look at what stands above
    DocumentOpening opening{library.service, [this](const QString &path) { return makeDocument(path); },
                            QStringLiteral("/first.pdf")};
};

} // namespace

TEST_F(DocumentOpeningTest, TakesNoAnswerOfADocumentThatWasReplaced)
{
    held = broken = QStringLiteral("/first.pdf");
    opening.open();
    reached.get_future().wait();
    opening.locate(QStringLiteral("/second.pdf"));
    awaitStage(Stage::Open);
    release.set_value();
    heldEnded.get_future().wait();
    QCoreApplication::processEvents();
    EXPECT_EQ(opening.state.value().stage, Stage::Open);
    EXPECT_EQ(opening.path.value(), u"/second.pdf");
}

TEST_F(DocumentOpeningTest, TakesNoPasswordOfADocumentThatWasReplacedForTheNext)
{
    held = locked = QStringLiteral("/first.pdf");
    opening.unlock(QStringLiteral("sesame"));
    reached.get_future().wait();
    opening.locate(QStringLiteral("/second.pdf"));
    awaitStage(Stage::Open);
    release.set_value();
    heldEnded.get_future().wait();
    QCoreApplication::processEvents();
    locked = QStringLiteral("/second.pdf");
    opening.open();
    awaitStage(Stage::Locked);
}

TEST_F(DocumentOpeningTest, OpensAgainWithThePasswordThatOpenedIt)
{
    locked = QStringLiteral("/first.pdf");
    opening.open();
    awaitStage(Stage::Locked);
    opening.unlock(QStringLiteral("sesame"));
    awaitStage(Stage::Open);
    opening.open();
    // It may have its answer already.
    awaitThat(opening.state, [this] { return opening.state.value().stage != Stage::Opening; });
    EXPECT_EQ(opening.state.value().stage, Stage::Open);
}

TEST_F(DocumentOpeningTest, LetsGoOfADocumentBeforeItIsReplaced)
{
    const ReaderDocument *left = nullptr;
    QObject::connect(&opening, &DocumentOpening::documentLeaving, &opening,
                     [&] { left = &opening.document(); });
    const ReaderDocument *first = &opening.document();
    opening.locate(QStringLiteral("/second.pdf"));
    EXPECT_EQ(left, first);
    EXPECT_NE(&opening.document(), first);
    awaitStage(Stage::Open);
}

TEST_F(DocumentOpeningTest, SaysThatADocumentHasNoPages)
{
    pages = 0;
    opening.open();
    awaitStage(Stage::Failed);
    EXPECT_EQ(opening.state.value().problem, u"The document has no pages.");
}

TEST_F(DocumentOpeningTest, MayGoWhileItOpens)
{
    auto passing = std::make_unique<DocumentOpening>(
        library.service, [this](const QString &path) { return makeDocument(path); },
        QStringLiteral("/third.pdf"));
    held = QStringLiteral("/third.pdf");
    passing->open();
    reached.get_future().wait();
    passing.reset();
    release.set_value();
    heldEnded.get_future().wait();
    QCoreApplication::processEvents();
    EXPECT_EQ(opening.state.value().stage, Stage::Opening) << "nobody touched the other one";
}
