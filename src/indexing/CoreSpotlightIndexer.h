#pragma once

#include "platform/SystemSearchIndex.h"
#include "store/SystemSearchPublisher.h"

/// Publishes papers to the desktop's own search, so that they are found there by title, authors, tags and
/// year. Only writes; the library stays the one source of truth. Failures are logged, one line each, on a
/// thread of the index's choosing.
class CoreSpotlightIndexer : public SystemSearchPublisher
{
public:
    /// `index` must outlive the indexer.
    explicit CoreSpotlightIndexer(SystemSearchIndex &index);

    void publish(const Paper &paper) override;
    void publish(const QList<Paper> &papers) override;
    void publishLibrary(const QList<Paper> &papers) override;
    void withdraw(const QString &paperId) override;

private:
    SystemSearchIndex &m_index;
};

/// The domain of every item that is published.
inline constexpr char kSearchDomainIdentifier[] = "org.quirevault.Quirevault.library";

/// What the desktop's search is told of `paper`; its creation date is the first moment of 1 January of the
/// paper's year, local time, and absent without a year.
SearchableItem searchableItem(const Paper &paper);
