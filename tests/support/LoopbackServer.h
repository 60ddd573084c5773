#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// A server on this machine's loopback address that serves one connection after another on a thread of its
/// own. Ends with the test: an answer that is still being served sees its connection end.
class LoopbackServer
{
public:
    /// One connection after its request has been read.
    class Connection
    {
    public:
        Connection(int socket, QByteArray request)
            : m_socket(socket)
            , m_request(std::move(request))
        {
        }

        const QByteArray &request() const { return m_request; }
        /// False when the other side is gone.
        bool send(const QByteArray &bytes) const;
        /// Waits until the other side hangs up.
        void waitForHangUp() const;
        /// Whether the other side hung up within a hundredth of a second.
        bool isHungUp() const;

    private:
        int m_socket;
        QByteArray m_request;
    };
    using Handler = std::function<void(const Connection &)>;

    explicit LoopbackServer(Handler handler);
    /// Answers every request with these bytes.
    explicit LoopbackServer(const QByteArray &answer);
    ~LoopbackServer();

    QString address(const QString &path = {}) const;
    /// The first line of each request so far.
    std::vector<QByteArray> requestLines() const;

private:
    void serve();
    void serveOne(int socket);

    Handler m_handler;
    int m_listener = -1;
    quint16 m_port = 0;
    mutable std::mutex m_mutex;
    std::vector<QByteArray> m_requestLines;
    int m_current = -1;
    bool m_isEnding = false;
    std::thread m_thread;
};

/// A whole answer with this status line and body.
QByteArray httpAnswer(const QByteArray &status, const QByteArray &body, const QByteArray &moreHeaders = {});
