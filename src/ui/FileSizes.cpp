#include "ui/FileSizes.h"

#include "platform/SlowWork.h"

#include <QFileInfo>
#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>
#include <QTimer>
#include <memory>

namespace
{
using Sizes = QList<std::pair<int, qint64>>;

Sizes read(const QList<std::pair<int, QString>> &batch)
{
    Sizes sizes;
    sizes.reserve(batch.size());
    for (const auto &[key, path] : batch) {
        const QFileInfo file(path);
        sizes.emplaceBack(key, file.exists() ? file.size() : -1);
    }
    return sizes;
}
} // namespace

void FileSizes::request(int key, const QString &path)
{
    if (m_batch.isEmpty())
        QTimer::singleShot(0, this, &FileSizes::readBatch);
    m_batch.emplaceBack(key, path);
}

void FileSizes::readBatch()
{
    auto promise = std::make_shared<QPromise<Sizes>>();
    promise->start();
    // A watcher, not QFuture::then() with a context, which must not be destroyed before the answer comes.
    auto *watcher = new QFutureWatcher<Sizes>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        const Sizes sizes = watcher->result();
        for (const auto &[key, bytes] : sizes)
            Q_EMIT arrived(key, bytes);
    });
    watcher->setFuture(promise->future());
    slowWork()->start([promise, batch = std::exchange(m_batch, {})] {
        promise->addResult(read(batch));
        promise->finish();
    });
}
