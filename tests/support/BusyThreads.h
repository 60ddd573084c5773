#pragma once

#include <QSemaphore>
#include <QThreadPool>

/// Keeps all of Qt's own threads at work for as long as it lives: whoever needs one of them waits.
class BusyThreads
{
public:
    BusyThreads()
    {
        for (int i = 0; i < m_count; ++i) {
            QThreadPool::globalInstance()->start([this] {
                m_begun.release();
                m_mayEnd.acquire();
            });
        }
        m_begun.acquire(m_count);
    }
    ~BusyThreads()
    {
        m_mayEnd.release(m_count);
        QThreadPool::globalInstance()->waitForDone();
    }
    BusyThreads(const BusyThreads &) = delete;
    BusyThreads &operator=(const BusyThreads &) = delete;

private:
    const int m_count = QThreadPool::globalInstance()->maxThreadCount();
    QSemaphore m_begun;
    QSemaphore m_mayEnd;
};
