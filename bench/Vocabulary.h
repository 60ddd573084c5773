#pragma once

#include <QByteArray>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Words as frequent as those of English scientific text are. The first ranks are real words in about their
/// real order ("the", "of", ..., "matrix"), with a few set phrases among them; the long tail is made up from
/// syllables.
///
/// Always the same words: nothing in it depends on the machine or the run.
class Vocabulary
{
public:
    /// On about one page in three thousand.
    static constexpr char kRareWord[] = "saddlepoint";
    /// On about one page in fifty; its words also stand alone.
    static constexpr char kRarePhrase[] = "singular value decomposition";

    Vocabulary();

    /// The word that `random`, which must be spread evenly over all 64 bits, falls on.
    const QByteArray &anyWord(std::uint64_t random) const { return m_words[m_slots[random % kSlots]]; }
    /// The same among words with a meaning of their own: no "the", no "between".
    const QByteArray &subjectWord(std::uint64_t random) const;
    std::size_t size() const { return m_words.size(); }

private:
    /// A word gets slots in proportion to its frequency, so that one look-up draws a word. Four million leave
    /// room for about 100,000 words.
    static constexpr std::size_t kSlots = std::size_t(1) << 22;

    std::vector<QByteArray> m_words; ///< by rank
    std::vector<std::uint32_t> m_slots;
};
