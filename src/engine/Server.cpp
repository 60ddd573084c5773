#include "engine/Server.h"

#include "engine/Channel.h"
#include "engine/Confinement.h"
#include "engine/Document.h"
#include "pdf/protocol/Limits.h"

#include <cerrno>
#include <cstring>
#include <malloc.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

namespace
{
// Documents nest as deep as they like and MuPDF follows by recursion: 100,000 levels need tens of megabytes.
// Only what is used of it becomes memory.
constexpr std::size_t kStackBytes = 256 << 20;

constexpr char kNothingOpen[] = "no document is open";

/// Answers requests in their order.
class Server
{
public:
    explicit Server(DocumentFile file)
        : m_file(file)
    {
    }

    Reply answer(const OpenRequest &request)
    {
        if (request.version != kProtocolVersion)
            return FailedReply{Failure::Unable, "the engine is of another version than the program"};
        if (m_isOpen)
            return FailedReply{Failure::Unable, "the document is already open"};
        m_document = Document::create(m_file);
        if (!m_document)
            return FailedReply{Failure::Unable, "there is no memory for the engine"};
        Reply reply = m_document->open();
        m_isOpen = std::holds_alternative<OpenedReply>(reply);
        return reply;
    }

    Reply answer(const PageTextRequest &request)
    {
        return m_isOpen ? m_document->pageText(request) : FailedReply{Failure::Unable, kNothingOpen};
    }

    Reply answer(const ThumbnailRequest &request)
    {
        return m_isOpen ? m_document->thumbnail(request) : FailedReply{Failure::Unable, kNothingOpen};
    }

private:
    DocumentFile m_file;
    std::unique_ptr<Document> m_document;
    bool m_isOpen = false;
};

void serve(Channel &channel, DocumentFile file)
{
    Server server(file);
    while (const std::optional<NumberedRequest> next = channel.receive()) {
        const Reply reply =
            std::visit([&](const auto &request) { return server.answer(request); }, next->request);
        if (!channel.send(next->number, reply))
            return;
    }
}

/// Says why no document can be read, to whatever is asked first.
void refuse(Channel &channel, const std::string &why)
{
    if (const std::optional<NumberedRequest> next = channel.receive())
        channel.send(next->number, FailedReply{Failure::Unable, why});
}

void *runServer(void *)
{
    Channel channel(kSocketDescriptor);
    const std::optional<DocumentFile> file = examined(kDocumentDescriptor);
    if (!file)
        refuse(channel, std::string("the file cannot be examined: ") + strerror(errno));
    else if (const std::optional<std::string> problem = confine())
        refuse(channel, "the engine cannot be confined: " + *problem);
    else
        serve(channel, *file);
    // Straight to the end: tearing down a large document takes time and gains nothing.
    _exit(0);
}

/// Starts the thread that does the work, with its large stack.
bool startServer()
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackBytes);
    pthread_t thread;
    return pthread_create(&thread, &attributes, runServer, nullptr) == 0;
}

/// Blocks until the other end of the socket is closed, also while the server is stuck in a document.
void waitForProgramToGo()
{
    pollfd socket = {kSocketDescriptor, POLLRDHUP, 0};
    while (poll(&socket, 1, -1) < 0 && errno == EINTR) {
    }
}
} // namespace

int serveDocument()
{
    close_range(kDocumentDescriptor + 1, ~0U, 0);
    // One heap for all: a second thread would otherwise get its own, and 64 MiB of address space with it.
    mallopt(M_ARENA_MAX, 1);
    if (!startServer())
        return 1;
    waitForProgramToGo();
    _exit(0);
}
