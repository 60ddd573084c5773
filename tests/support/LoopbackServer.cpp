#include "support/LoopbackServer.h"

#include <QString>
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
QByteArray readRequest(int socket)
{
    QByteArray request;
    char buffer[4096];
    while (!request.contains("\r\n\r\n")) {
        const ssize_t count = ::recv(socket, buffer, sizeof buffer, 0);
        if (count <= 0)
            return {};
        request.append(buffer, count);
    }
    return request;
}
} // namespace

bool LoopbackServer::Connection::send(const QByteArray &bytes) const
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(m_socket, bytes.constData() + sent,
                                     static_cast<size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += count;
    }
    return true;
}

void LoopbackServer::Connection::waitForHangUp() const
{
    char byte;
    while (::recv(m_socket, &byte, 1, 0) > 0) {
    }
}

bool LoopbackServer::Connection::isHungUp() const
{
    pollfd state{m_socket, POLLIN | POLLRDHUP, 0};
    return ::poll(&state, 1, 10) > 0;
}

LoopbackServer::LoopbackServer(Handler handler)
    : m_handler(std::move(handler))
    , m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    EXPECT_EQ(::bind(m_listener, generic, size), 0);
    EXPECT_EQ(::listen(m_listener, 8), 0);
    EXPECT_EQ(::getsockname(m_listener, generic, &size), 0);
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

LoopbackServer::LoopbackServer(const QByteArray &answer)
    : LoopbackServer([answer](const Connection &connection) { connection.send(answer); })
{
}

LoopbackServer::~LoopbackServer()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
        if (m_current >= 0)
            ::shutdown(m_current, SHUT_RDWR);
    }
    ::shutdown(m_listener, SHUT_RDWR);
    m_thread.join();
    ::close(m_listener);
}

QString LoopbackServer::address(const QString &path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
}

std::vector<QByteArray> LoopbackServer::requestLines() const
{
    const std::scoped_lock lock(m_mutex);
    return m_requestLines;
}

void LoopbackServer::serve()
{
    for (;;) {
        const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            return;
        {
            const std::scoped_lock lock(m_mutex);
            m_current = m_isEnding ? -1 : socket;
        }
        if (m_current >= 0)
            serveOne(socket);
        const std::scoped_lock lock(m_mutex);
        m_current = -1;
        ::close(socket);
    }
}

void LoopbackServer::serveOne(int socket)
{
    const QByteArray request = readRequest(socket);
    if (request.isEmpty())
        return;
    {
        const std::scoped_lock lock(m_mutex);
        m_requestLines.push_back(request.left(request.indexOf('\r')));
    }
    m_handler(Connection(socket, request));
}

QByteArray httpAnswer(const QByteArray &status, const QByteArray &body, const QByteArray &moreHeaders)
{
    return "HTTP/1.1 " + status +
           "\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" +
           moreHeaders + "\r\n" + body;
}
