#pragma once

#include "base/Result.h"
#include "reader/PageJob.h"

#include <functional>
#include <stop_token>

/// Where a view gets its pages from; the seam through which tests answer by hand. Main thread.
class PageSource
{
public:
    using Answered = std::function<void(Result<PageAnswer> answer)>;

    virtual ~PageSource() = default;

    /// False until the document is open, and after its engine was lost.
    virtual bool isOpen() const = 0;
    /// As the document claims.
    virtual qint64 pageCount() const = 0;
    /// Calls `answered` later, once: with what the kind of the job asks for, with the failure, or with
    /// `cancelledError` once `stop` has fired. Never after this object is gone.
    virtual void ask(const PlannedJob &planned, std::stop_token stop, Answered answered) = 0;
    /// Calls `answered` now for answers of this kind that are there and whose turn has not come yet.
    virtual void handOver(PageJob::Kind) {}
};
