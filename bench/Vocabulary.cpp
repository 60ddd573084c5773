#include "Vocabulary.h"

#include <QList>
#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <string>
#include <unordered_set>

namespace
{

constexpr char kFunctionWords[] = R"(
the of and in to a is that for we with are as by this be on an from which it at can or have not where
our these has if all two one then let any also its their such between when more than only each some
other was there but may using based into both no they used been if since while over so same new first
most under thus however given will very many because different following several number use case
)";

/// Underscores stand for the blanks of set phrases.
constexpr char kSubjectWords[] = R"(
model data results figure set function method time table analysis system section value values example
order point algorithm problem theorem form large small high distribution field equation parameters
energy space state error theory linear matrix proof network information test probability learning
process size package structure observed random solution effect level temperature vector group conditions
samples local signal density rate surface mean training experimental variables constant control
performance mass image boundary approach phase measure complex class functions neural_network estimate
graph lemma standard transform optimal features equations variance magnetic convergence dimension
spectrum measurement quantum transition kernel frequency stochastic document command bound accuracy
operator transmission node citation estimation gradient dynamics protein simulation regression
likelihood cells polynomial attention singular decomposition entropy clustering bibliography transformer
manifold macro tensor wavelength
)";

/// Words that a query asks for, at the ranks that make them as frequent as the query wants.
const std::map<std::size_t, const char *> kPlacedWords = {{1'500, Vocabulary::kRarePhrase},
                                                          {20'000, Vocabulary::kRareWord}};

constexpr std::array kSyllables = {
    "al", "an",  "ar",  "bel", "bra", "cal", "cen", "con",  "cor", "da",  "del", "di", "dro",
    "el", "en",  "er",  "fa",  "fer", "flu", "ga",  "gen",  "gra", "hel", "hy",  "il", "in",
    "ka", "kin", "la",  "lam", "lo",  "lu",  "ma",  "mer",  "mi",  "mon", "na",  "ne", "no",
    "o",  "or",  "pa",  "pe",  "phy", "po",  "pro", "ra",   "re",  "ri",  "ro",  "sa", "se",
    "si", "sol", "sta", "ta",  "te",  "the", "ti",  "tran", "tri", "u",   "va",  "ve", "vi"};
constexpr std::array kEndings = {"",   "",   "",    "",    "",    "s",    "al", "ed",
                                 "er", "ic", "ing", "ion", "ity", "ment", "ous"};

QList<QByteArray> listed(const char *words)
{
    return QByteArray(words).simplified().split(' ');
}

QByteArray madeUpWord(std::mt19937_64 &random)
{
    QByteArray word;
    for (std::size_t syllables = 2 + random() % 2; syllables > 0; --syllables)
        word += kSyllables[random() % kSyllables.size()];
    return word + kEndings[random() % kEndings.size()];
}

/// The words by rank: real ones first, then made-up ones without end.
class RankedWords
{
public:
    QByteArray next()
    {
        const auto rank = m_rank++;
        if (rank < static_cast<std::size_t>(m_real.size()))
            return QByteArray(m_real[static_cast<qsizetype>(rank)]).replace('_', ' ');
        if (const auto placed = kPlacedWords.find(rank); placed != kPlacedWords.end())
            return placed->second;
        QByteArray word = madeUpWord(m_random);
        while (!m_used.insert(word.toStdString()).second)
            word = madeUpWord(m_random);
        return word;
    }

private:
    QList<QByteArray> m_real = listed(kFunctionWords) + listed(kSubjectWords);
    std::size_t m_rank = 0;
    std::mt19937_64 m_random{1};
    std::unordered_set<std::string> m_used;
};

/// The frequency of a word by its rank, from 1, in proportion: near one over the rank for the few thousand
/// words that all texts share, and falling with its square for the others.
double frequency(double rank)
{
    constexpr double kShared = 5'000;
    return rank < kShared ? 1 / (rank + 1) : kShared / (rank * rank);
}

} // namespace

Vocabulary::Vocabulary()
{
    constexpr double kSumOfFrequencies = 9.1;
    RankedWords words;
    m_slots.reserve(kSlots);
    while (m_slots.size() < kSlots) {
        const double share = frequency(static_cast<double>(m_words.size() + 1)) / kSumOfFrequencies;
        const auto wanted = std::max<std::size_t>(1, static_cast<std::size_t>(share * kSlots));
        const std::size_t count = std::min(wanted, kSlots - m_slots.size());
        m_slots.insert(m_slots.end(), count, static_cast<std::uint32_t>(m_words.size()));
        m_words.push_back(words.next());
    }
}

const QByteArray &Vocabulary::subjectWord(std::uint64_t random) const
{
    static const auto functionWords = static_cast<std::size_t>(listed(kFunctionWords).size());
    // Evenly over the next ten thousand ranks: what a paper is about is seldom what most papers are about.
    constexpr std::size_t kSubjects = 10'000;
    return m_words[functionWords + random % kSubjects];
}
