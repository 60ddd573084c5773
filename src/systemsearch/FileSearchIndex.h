#pragma once

#include "platform/SystemSearchIndex.h"

#include <QString>
#include <memory>

/// The index of published papers as a file of this program's own (`ItemFile`), from which the search provider
/// answers the desktop's search. Call from any thread: what is asked is done on a thread of the index's own,
/// in order, and `completion` runs there. The thread starts with the first call.
class FileSearchIndex : public SystemSearchIndex
{
public:
    explicit FileSearchIndex(const QString &path);
    /// Finishes what was asked, but for `replaceItems`, which it gives up.
    ~FileSearchIndex() override;

    void indexItems(const QList<SearchableItem> &items, Completion completion) override;
    void replaceItems(const QList<SearchableItem> &items, Completion completion) override;
    void deleteItems(const QStringList &identifiers, Completion completion) override;

private:
    class Worker;

    std::unique_ptr<Worker> m_worker;
};
