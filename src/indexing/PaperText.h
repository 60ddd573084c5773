#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <vector>

/// The words of one paper, in order, each with the page that it stands on. All words are held once, as one
/// UTF-8 text in which single blanks join them, so a paper of any length costs its text and little more.
///
/// A word is what stands between two white-space or line-break characters of Unicode. A NUL also ends one:
/// the database would take it for the end of the text and lose what follows.
class PaperText
{
public:
    /// The words of one page that has any.
    struct Page {
        qint64 number;    ///< 1-based
        qsizetype begin;  ///< where its first word begins in the text, in bytes
        qsizetype end;    ///< behind its last word
        qint64 wordCount; ///< at least 1
    };

    /// Most text kept of one paper, in bytes. Chosen: 4,000 dense pages fit, and six papers at once stay
    /// within what an import may use.
    static constexpr qsizetype kMaxBytes = 12 * 1024 * 1024;

    explicit PaperText(qsizetype maxBytes = kMaxBytes);

    /// Appends the words of a page; pages are added in ascending order. The first word for which there is no
    /// room left ends the text for good.
    void addPage(qint64 pageNumber, QByteArrayView pageText);
    /// Whether words were left out for want of room.
    bool isFull() const { return m_isFull; }

    const std::vector<Page> &pages() const { return m_pages; }
    qint64 wordCount() const { return m_wordCount; }

    /// Every word, joined with single blanks. The bytes stay where they are until the next `addPage`.
    const QByteArray &fullText() const { return m_text; }
    /// The first `count` words, or all when there are fewer.
    QByteArrayView firstWords(qint64 count) const;
    /// The first `count` user-perceived characters of the full text, or all when there are fewer.
    QString firstCharacters(qsizetype count) const;

private:
    QByteArray m_text;
    std::vector<Page> m_pages;
    qint64 m_wordCount = 0;
    qsizetype m_maxBytes;
    bool m_isFull = false;
};

/// Where the word that is `count` words behind the one at `begin` begins, given a text of words joined with
/// single blanks; behind the end of the text when it has no such word.
qsizetype skipWords(QByteArrayView text, qsizetype begin, qint64 count);
