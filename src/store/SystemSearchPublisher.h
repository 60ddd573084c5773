#pragma once

#include <QList>
#include <QString>

struct Paper;

/// Where the store announces papers so that the desktop's own search can find them. Calls return at once,
/// may come from any thread, and never report failure to the store.
class SystemSearchPublisher
{
public:
    virtual ~SystemSearchPublisher() = default;

    virtual void publish(const Paper &paper) = 0;
    virtual void publish(const QList<Paper> &papers) = 0;
    /// Publishes `papers`, which are the whole library: what was published of others is taken back. Of a
    /// paper that was added after the list was read it is taken back as well, until the next such list.
    virtual void publishLibrary(const QList<Paper> &papers) { publish(papers); }
    virtual void withdraw(const QString &paperId) = 0;
};
