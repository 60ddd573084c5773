#pragma once

#include <QByteArray>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Words as English scientific text has them: by Zipf's law the word of rank r makes up one r-th as much of
/// the text as the first. The first ranks are real words in about their real order ("the", "of", ...,
/// "matrix"), with a few set phrases among them; the long tail is made up from syllables.
///
/// Always the same words: nothing in it depends on the machine or the run.
class Vocabulary
{
public:
    /// A word of the tail that a searcher would call rare: about one page in four thousand holds it.
    static constexpr char kRareWord[] = "saddlepoint";

    Vocabulary();

    /// The word that `random`, which must be spread evenly over all 64 bits, falls on.
    const QByteArray &anyWord(std::uint64_t random) const { return m_words[m_slots[random % kSlots]]; }
    /// The same among words with a meaning of their own: no "the", no "between".
    const QByteArray &subjectWord(std::uint64_t random) const;
    std::size_t size() const { return m_words.size(); }

private:
    /// A word gets slots in proportion to its frequency, so that one look-up draws a word. Four million leave
    /// room for about 300,000 words, the order of what a library of that many pages holds.
    static constexpr std::size_t kSlots = std::size_t(1) << 22;

    std::vector<QByteArray> m_words; ///< by rank
    std::vector<std::uint32_t> m_slots;
};
