#pragma once

#include "systemsearch/ItemFile.h"

#include <QStringList>

/// What is shown of a paper that was found.
struct FoundPaper {
    QString id;
    QString title;
    QStringList authorNames;
    QString year; ///< empty when unknown

    friend bool operator==(const FoundPaper &, const FoundPaper &) = default;
};

/// Searches the published papers. Where there is no file, or none that can be read, nothing is found. One
/// thread at a time; a search takes milliseconds.
class ItemSearch
{
public:
    /// The most papers that one search answers: more than any desktop shows.
    static constexpr int kMostFound = 20;

    explicit ItemSearch(const QString &path);

    /// The ids of papers in which every term is found, the best first. A term is found where a word begins
    /// with it, case and diacritics aside: papers come first that have all terms as whole words of their
    /// title, then those with all in their title, then in title and authors, then tags and year. Tags that
    /// people do not see are not looked at. Terms that the description of every paper has ("paper by one")
    /// may be missing elsewhere, but make no paper a match alone.
    QStringList find(const QStringList &terms);

    /// What is known of these papers, in the order asked for; those that are unknown are left out.
    QList<FoundPaper> papers(const QStringList &ids);

private:
    template <typename Answer, typename Read> Answer answered(Read read);

    ItemFile m_file;
};
