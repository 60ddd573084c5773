#pragma once

#include "reader/PageSource.h"
#include "reader/TextSelector.h"

#include <functional>
#include <memory>

/// Gathers the text of a selection, fetching the pages that are not there in the background, one at a time so
/// that reading goes on. Destroying it ends the work.
class SelectionCopier
{
public:
    /// After so many pages in a row without text to be had the document has ended, whatever it claims.
    static constexpr int kMostMissingPages = 100;

    /// Calls `done` with the whole text, perhaps at once. `source` and `contents` must outlive this.
    SelectionCopier(const TextSelector &selector, PageSource &source, const PageContents &contents,
                    std::function<void(const QString &text)> done);
    ~SelectionCopier();
    SelectionCopier(const SelectionCopier &) = delete;
    SelectionCopier &operator=(const SelectionCopier &) = delete;

    void start();

private:
    void add(const PDFPageText &text);
    void ask();
    void answered(const Result<PageAnswer> &answer);

    const TextSelector m_selector; ///< as it was when copied
    PageSource &m_source;
    const PageContents &m_contents;
    std::function<void(const QString &)> m_done;
    qint64 m_page;
    int m_missingPages = 0;
    QString m_text;
    std::stop_source m_stop;
    std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};
