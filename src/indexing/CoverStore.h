#pragma once

#include "base/Result.h"

#include <QString>
#include <stop_token>

class PDFDocument;

/// The folder of cover pictures: a small JPEG of each paper's first page, named by the paper's id. Stateless;
/// call from any thread, for one paper from one thread at a time.
class CoverStore
{
public:
    /// The box that a cover fits into, in pixels.
    static constexpr int kMaxWidth = 300;
    static constexpr int kMaxHeight = 400;
    /// JPEG quality, out of 100. Chosen: small print of a first page stays crisp in some 25 kB.
    static constexpr int kQuality = 90;

    /// `folder` is made, with its parents, when the first cover is written.
    explicit CoverStore(const QString &folder);

    /// Draws the first page and writes it as this paper's cover, in place of an earlier one, whole or not at
    /// all. Answers the cover's path; "" for a document without pages. A page that cannot be drawn leaves no
    /// file, and the path is answered all the same.
    ///
    /// Errors: domain "CoverStore" with errno as code when the file cannot be written; `cancelledError`.
    Result<QString> renderCover(PDFDocument &document, const QString &paperId,
                                std::stop_token stop = {}) const;

    bool hasCover(const QString &paperId) const;
    /// Removes the paper's cover if there is one. A cover that stays behind harms nobody.
    void removeCover(const QString &paperId) const;

private:
    QString pathFor(const QString &paperId) const;
    Result<void> write(const QString &path, QByteArrayView jpeg) const;

    QString m_folder;
};
