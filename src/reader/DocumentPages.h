#pragma once

#include "reader/PageSource.h"

#include <QObject>
#include <QPointer>
#include <array>

class ReaderDocument;

/// The pages of an open document.
class DocumentPages : public PageSource
{
public:
    /// A document that is gone is closed.
    explicit DocumentPages(ReaderDocument &document);

    ReaderDocument *document() const { return m_document; }

    bool isOpen() const override;
    qint64 pageCount() const override;
    void ask(const PlannedJob &planned, std::stop_token stop, Answered answered) override;
    void handOver(PageJob::Kind kind) override;

private:
    template <typename Request>
    void pass(const PlannedJob &planned, std::stop_token stop, Answered answered, Request request);

    QPointer<ReaderDocument> m_document;
    // No answer comes after they are gone.
    std::array<QObject, std::variant_size_v<PageAnswer>> m_answering; ///< by the job's kind
};
