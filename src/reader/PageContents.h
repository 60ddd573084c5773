#pragma once

#include "pdf/PDFLink.h"
#include "pdf/PDFPageText.h"
#include "reader/PageLayout.h"

#include <QList>
#include <map>
#include <optional>
#include <vector>

/// Bytes of page texts kept, with the boxes of their characters, and of links. Chosen: about a hundred dense
/// pages.
inline constexpr qsizetype kPageTextBytes = 16 * 1024 * 1024;

/// Texts and links of the pages that were looked at.
class PageContents
{
public:
    void clear();

    /// Null when it is not there. Valid until the page is forgotten.
    const PDFPageText *text(qint64 page) const;
    /// Of which there is a text, in their order.
    std::vector<qint64> pagesWithText(PageRange among) const;
    void setText(qint64 page, const PDFPageText &text);
    const QList<PDFLink> *links(qint64 page) const;
    void setLinks(qint64 page, const QList<PDFLink> &links);
    /// The topmost link at a point of a page (unturned).
    std::optional<PDFLink> linkAt(qint64 page, QPointF point) const;

    /// Forgets the pages farthest from `visible` until the rest is within `kPageTextBytes`.
    void forgetBeyond(PageRange visible);
    qsizetype bytes() const { return m_bytes; }

private:
    struct Content {
        std::optional<PDFPageText> text;
        std::optional<QList<PDFLink>> links;
    };

    void forget(std::map<qint64, Content>::iterator page);

    std::map<qint64, Content> m_pages;
    qsizetype m_bytes = 0;
};
