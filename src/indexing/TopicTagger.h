#pragma once

#include "pdf/PDFDocument.h"
#include "store/Paper.h"

#include <QStringList>
#include <stop_token>

class BookService;

/// Computes the tags of papers that are in the library already. Stateless; call from any thread.
class TopicTagger
{
public:
    /// Pages that are read for a new look at a paper, and characters (user-perceived) of them that are
    /// searched for an ISBN. Chosen: what a paper is about stands at its front.
    static constexpr qint64 kPages = 5;
    static constexpr qsizetype kISBNCharacters = 3000;

    /// `books` must outlive the tagger.
    TopicTagger(BookService &books, OpenPDF openPDF);

    /// The paper's new complete tag list: its tags that are no topics, then the topics of its title, its
    /// first pages and its book record, and "Untagged" when no visible tag is left. Writes nothing and never
    /// fails: a paper whose PDF cannot be read, and one at which `stop` fires, keeps its tags.
    QStringList retagPaper(const Paper &paper, std::stop_token stop = {}) const;

private:
    Result<QString> firstPages(const QString &path, std::stop_token stop) const;
    QStringList subjectsFor(const QString &text, std::stop_token stop) const;

    BookService &m_books;
    OpenPDF m_openPDF;
};
