#include "platform/SlowWork.h"

#include <QGlobalStatic>
#include <QThreadPool>

namespace
{
/// More than processors, because they mostly wait. Chosen.
constexpr int kThreads = 8;

class SlowThreads : public QThreadPool
{
public:
    SlowThreads() { setMaxThreadCount(kThreads); }
};
Q_GLOBAL_STATIC(SlowThreads, slowThreads)
} // namespace

QThreadPool *slowWork()
{
    return slowThreads;
}
