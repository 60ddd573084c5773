#include "platform/SlowWork.h"

#include <QCoreApplication>
#include <QGlobalStatic>
#include <QThreadPool>

namespace
{
void waitForSlowWork()
{
    slowWork()->waitForDone();
}

/// More than processors, because they mostly wait. Chosen.
constexpr int kThreads = 8;

class SlowThreads : public QThreadPool
{
public:
    SlowThreads()
    {
        setMaxThreadCount(kThreads);
        // While everything that the work may use is still there.
        qAddPostRoutine(waitForSlowWork);
    }
};
Q_GLOBAL_STATIC(SlowThreads, slowThreads)
} // namespace

QThreadPool *slowWork()
{
    return slowThreads;
}
