#include "engine/Server.h"

#include "engine/Channel.h"
#include "engine/Confinement.h"
#include "engine/Document.h"
#include "pdf/protocol/Limits.h"
#include "pdf/protocol/StopFlag.h"

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

constexpr char kNoMemory[] = "there is no memory for it";

/// Answers requests in their order.
class Server
{
public:
    explicit Server(DocumentFile file)
        : m_file(file)
    {
    }

    Reply answer(NumberedRequest &asked)
    {
        return std::visit([&](const auto &request) { return allowed(request, asked.memory); }, asked.request);
    }

private:
    template <typename Request> Reply allowed(const Request &request, FileDescriptor &memory)
    {
        if constexpr (std::is_same_v<Request, OpenRequest>)
            return opened(request, memory);
        else if (m_isOpen)
            return answer(request, memory);
        else
            return FailedReply{Failure::Unable, "no document is open"};
    }

    Reply opened(const OpenRequest &request, FileDescriptor &memory)
    {
        if (request.version != kProtocolVersion)
            return FailedReply{Failure::Unable, "the engine is of another version than the program"};
        if (m_isOpen)
            return FailedReply{Failure::Unable, "the document is already open"};
        m_document = Document::create(m_file);
        if (!m_document)
            return FailedReply{Failure::Unable, kNoMemory};
        if (std::optional<SharedMemory> flag = mapped(memory, kStopFlagBytes))
            m_document->obey(StopSign(*std::move(flag)));
        Reply reply = m_document->open(request);
        m_isOpen = std::holds_alternative<OpenedReply>(reply);
        return reply;
    }

    Reply answer(const DrawRequest &request, FileDescriptor &memory)
    {
        const std::size_t bytes = std::size_t(request.width) * request.height * kBytesPerDrawnPixel;
        // Given back before the reply: the program can seal only what nobody can write to any more.
        const std::optional<SharedMemory> pixels = mapped(memory, bytes);
        return pixels ? m_document->draw(request, pixels->data())
                      : Reply(FailedReply{Failure::PageUnavailable, kNoMemory});
    }

    Reply answer(const PageTextRequest &request, FileDescriptor &) { return m_document->pageText(request); }
    Reply answer(const ThumbnailRequest &request, FileDescriptor &) { return m_document->thumbnail(request); }
    Reply answer(const ShapesRequest &request, FileDescriptor &) { return m_document->shapes(request); }
    Reply answer(const PlacedTextRequest &request, FileDescriptor &)
    {
        return m_document->placedText(request);
    }
    Reply answer(const OutlineRequest &, FileDescriptor &) { return m_document->outline(); }
    Reply answer(const LinksRequest &request, FileDescriptor &) { return m_document->links(request); }
    Reply answer(const PageLabelsRequest &, FileDescriptor &) { return m_document->pageLabels(); }

    static std::optional<SharedMemory> mapped(FileDescriptor &memory, std::size_t bytes)
    {
        if (!memory)
            return std::nullopt;
        std::optional<SharedMemory> mapping =
            SharedMemory::map(memory.get(), bytes, SharedMemory::Access::ReadWrite);
        memory.reset();
        return mapping;
    }

    DocumentFile m_file;
    std::unique_ptr<Document> m_document;
    bool m_isOpen = false;
};

void serve(Channel &channel, DocumentFile file)
{
    Server server(file);
    while (std::optional<NumberedRequest> next = channel.receive()) {
        if (!channel.send(next->number, server.answer(*next)))
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
