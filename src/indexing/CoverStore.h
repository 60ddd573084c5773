#pragma once

#include "base/Result.h"
#include "indexing/JpegEncoder.h"

#include <QString>
#include <stop_token>

class PDFDocument;

/// A cover that is drawn and not yet in the folder.
struct Cover {
    QString path;  ///< "" for a document without pages
    JpegData jpeg; ///< empty when there is nothing to write
};

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

    /// Draws the first page as this paper's cover and writes nothing. A page that cannot be drawn has a path
    /// and no picture. Fails only with `cancelledError`.
    Result<Cover> drawCover(PDFDocument &document, const QString &paperId, std::stop_token stop = {}) const;

    /// Writes a cover, in place of an earlier one, whole or not at all; nothing when it has no picture.
    ///
    /// Errors: domain "CoverStore" with errno as code when the file cannot be written.
    Result<void> write(const Cover &cover) const;

    bool hasCover(const QString &paperId) const;
    /// Removes the paper's cover if there is one. A cover that stays behind harms nobody.
    void removeCover(const QString &paperId) const;

private:
    QString pathFor(const QString &paperId) const;

    QString m_folder;
};
