#include "indexing/DocumentReader.h"

#include "base/Clock.h"
#include "indexing/PageReader.h"
#include "pdf/PDFDocument.h"

#include <algorithm>
#include <limits>

namespace
{
/// The state of one reading: how far it came, and whether to go on.
class Reading
{
public:
    Reading(PDFDocument &document, const Clock &clock, std::stop_token stop, const ReadingLimits &limits)
        : m_pages(document, std::move(stop))
        , m_clock(clock)
        , m_limits(limits)
        , m_claimedPages(document.pageCount())
        , m_deadline(clock.elapsed() + limits.time)
        , m_text(limits.textBytes)
    {
    }

    Result<DocumentContent> run()
    {
        while (hasMore()) {
            if (auto read = readNext(); !read)
                return read.error();
        }
        const qint64 pages = pageCount();
        return DocumentContent{std::move(m_text), pages};
    }

private:
    bool hasMore() const
    {
        // The full-text table numbers its pages in 32 bits; only a claim reaches as far.
        return m_next < std::min<qint64>(m_claimedPages, std::numeric_limits<qint32>::max()) &&
               !isRefuted() && !m_pages.isOver() && !m_text.isFull() && m_clock.elapsed() < m_deadline;
    }

    Result<void> readNext()
    {
        const auto text = m_pages.read(m_next);
        if (!text)
            return text.error();
        ++m_next;
        if (!*text) {
            ++m_failures;
            return {};
        }
        m_failures = 0;
        m_lastReadable = m_next;
        m_text.addPage(m_next, **text);
        return {};
    }

    bool isRefuted() const { return m_failures >= m_limits.failuresInARow; }

    qint64 pageCount() const
    {
        if (m_next >= m_claimedPages || (!isRefuted() && m_claimedPages <= kMaxClaimedPages))
            return m_claimedPages;
        return m_lastReadable;
    }

    PageReader m_pages;
    const Clock &m_clock;
    ReadingLimits m_limits;
    qint64 m_claimedPages;
    std::chrono::nanoseconds m_deadline;
    PaperText m_text;
    qint64 m_next = 0;         ///< the page to read next, 0-based; also the number of pages tried
    qint64 m_lastReadable = 0; ///< 1-based
    int m_failures = 0;        ///< in a row
};
} // namespace

Result<DocumentContent> readDocument(PDFDocument &document, const Clock &clock, std::stop_token stop,
                                     const ReadingLimits &limits)
{
    return Reading(document, clock, std::move(stop), limits).run();
}
