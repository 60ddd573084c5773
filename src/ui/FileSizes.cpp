#include "ui/FileSizes.h"

#include <QFileInfo>
#include <QFuture>
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
    // The continuation is dropped when this object is gone by then.
    promise->future().then(this, [this](const Sizes &sizes) {
        for (const auto &[key, bytes] : sizes)
            Q_EMIT arrived(key, bytes);
    });
    QThreadPool::globalInstance()->start([promise, batch = std::exchange(m_batch, {})] {
        promise->addResult(read(batch));
        promise->finish();
    });
}
