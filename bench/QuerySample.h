#pragma once

#include "RawSearch.h"
#include "Vocabulary.h"

#include <QStringList>
#include <map>
#include <random>

/// Draws queries of one to three words, each of which stands on fewer than 8 % of the library's pages; how
/// often a word is drawn follows how often it is written.
class QuerySample
{
public:
    /// `library` must outlive the sample.
    explicit QuerySample(RawSearch &library)
        : m_library(library)
        , m_mostPages(library.pages() * 8 / 100)
    {
    }

    QStringList draw(int count)
    {
        QStringList queries;
        while (queries.size() < count)
            queries.append(query());
        return queries;
    }

private:
    QString query()
    {
        QStringList words;
        for (std::uint64_t count = 1 + m_random() % 3; count > 0; --count)
            words.append(QString::fromLatin1(word()));
        return words.join(u' ');
    }

    QByteArray word()
    {
        for (;;) {
            const QByteArray &drawn = m_vocabulary.anyWord(m_random());
            const auto [known, isNew] = m_pages.try_emplace(drawn, 0);
            if (isNew)
                known->second = m_library.matches('"' + drawn + '"');
            if (known->second < m_mostPages)
                return drawn;
        }
    }

    RawSearch &m_library;
    qint64 m_mostPages;
    Vocabulary m_vocabulary;
    std::mt19937_64 m_random{3};
    std::map<QByteArray, qint64> m_pages; ///< of each word looked up so far
};
