#include "reader/ReaderDocument.h"

#include "reader/ReaderDocumentWorker.h"

#include <QGlobalStatic>
#include <QThreadPool>
#include <limits>
#include <utility>

namespace
{
/// One thread a document, for as long as it is open. A window that closes leaves its thread behind to end the
/// engine; the pool waits for those at the end of the program.
class DocumentThreads : public QThreadPool
{
public:
    DocumentThreads() { setMaxThreadCount(std::numeric_limits<int>::max()); }
};
Q_GLOBAL_STATIC(DocumentThreads, documentThreads)
} // namespace

bool isLoss(const Error &error)
{
    return isPDFError(error, PDFErrorCode::EngineFailed) ||
           isPDFError(error, PDFErrorCode::DeadlineExceeded) ||
           isPDFError(error, PDFErrorCode::EngineMissing);
}

ReaderDocument::ReaderDocument(Open open, QObject *parent)
    : QObject(parent)
    , m_worker(std::make_shared<Worker>(std::move(open), this))
{
    documentThreads->start([worker = m_worker] { worker->run(); });
}

ReaderDocument::~ReaderDocument()
{
    m_worker->close();
}

QFuture<Result<void>> ReaderDocument::open(const std::optional<QString> &password)
{
    const auto ahead = std::exchange(m_ahead, std::nullopt);
    return ahead && !password ? *ahead : m_worker->open(password);
}

void ReaderDocument::openAhead()
{
    m_ahead = m_worker->open({});
}

bool ReaderDocument::isOpen() const
{
    return m_worker->pageCount().has_value();
}

qint64 ReaderDocument::pageCount() const
{
    return m_worker->pageCount().value_or(0);
}

void ReaderDocument::enqueue(Priority priority, std::stop_token stop, Turn turn)
{
    m_worker->enqueue(priority, std::move(stop), std::move(turn));
}
