#include "store/RankFunction.h"

#include "store/PageLengths.h"
#include "store/PrefixCounter.h"

#include <cmath>
#include <memory>
#include <sqlite3.h>
#include <vector>

namespace
{
/// How soon more of a word stops to matter, and how much a page's length counts: the built-in function's.
constexpr double kSaturation = 1.2;
constexpr double kLengthShare = 0.75;
/// What a phrase weighs that stands on more than half of the pages; its logarithm would be negative.
constexpr double kLeastWeight = 1e-6;

/// What the function knows that the table would take long to answer.
struct Sources {
    PageLengths &lengths;
    PrefixCounter &prefixes;
};

/// Where a call comes from and how it answers.
struct Call {
    const Fts5ExtensionApi *api;
    Fts5Context *hit;
    sqlite3_context *result;
    int valueCount;
    sqlite3_value **values;

    const Sources &sources() const { return *static_cast<Sources *>(api->xUserData(hit)); }
    PageLengths &lengths() const { return sources().lengths; }
    double columnWeight(int column) const
    {
        return column < valueCount ? sqlite3_value_double(values[column]) : 1.0;
    }
};

/// What one statement's hits have in common.
struct Ranking {
    double averageLength = 0;
    std::vector<double> weights;     ///< of each phrase: its inverse document frequency
    std::vector<double> occurrences; ///< of each phrase in the hit at hand
    qint64 rows = 0;
    qint64 sureHits = 0; ///< at least this many rows match
};

/// Hits of a phrase, up to as many as make its weight the least.
struct HitCount {
    qint64 hits = 0;
    qint64 enough;

    static int add(const Fts5ExtensionApi *, Fts5Context *, void *self)
    {
        auto &count = *static_cast<HitCount *>(self);
        return ++count.hits < count.enough ? SQLITE_OK : SQLITE_DONE;
    }
};

int countHits(const Call &call, int phrase, HitCount &count)
{
    const auto known = call.sources().prefixes.count(call.api, call.hit, phrase, count.enough);
    count.hits = known.value_or(0);
    return known ? SQLITE_OK : call.api->xQueryPhrase(call.hit, phrase, &count, HitCount::add);
}

int readStatistics(const Call &call, Ranking &ranking)
{
    sqlite3_int64 rows = 0;
    sqlite3_int64 words = 0;
    int code = call.api->xRowCount(call.hit, &rows);
    if (code == SQLITE_OK)
        code = call.api->xColumnTotalSize(call.hit, -1, &words);
    ranking.rows = rows;
    ranking.averageLength = static_cast<double>(words) / static_cast<double>(rows);
    const int phrases = call.api->xPhraseCount(call.hit);
    for (int phrase = 0; phrase < phrases && code == SQLITE_OK; ++phrase) {
        HitCount count{.enough = (rows + 1) / 2}; // from there on the logarithm is not positive
        code = countHits(call, phrase, count);
        const double weight = std::log((static_cast<double>(rows - count.hits) + 0.5) /
                                       (static_cast<double>(count.hits) + 0.5));
        ranking.weights.push_back(weight <= 0.0 ? kLeastWeight : weight);
        ranking.sureHits = phrases == 1 ? count.hits : 0;
    }
    ranking.occurrences.resize(ranking.weights.size());
    return code;
}

void deleteRanking(void *ranking)
{
    delete static_cast<Ranking *>(ranking);
}

/// The statement's ranking, made at its first hit; null, with the reason in `code`, when it cannot be had.
Ranking *rankingFor(const Call &call, int &code)
{
    if (void *known = call.api->xGetAuxdata(call.hit, 0))
        return static_cast<Ranking *>(known);
    auto made = std::make_unique<Ranking>();
    code = readStatistics(call, *made);
    if (code != SQLITE_OK)
        return nullptr;
    Ranking *ranking = made.release();
    code = call.api->xSetAuxdata(call.hit, ranking, deleteRanking); // deletes it on failure, too
    if (code != SQLITE_OK)
        return nullptr;
    call.lengths().beginStatement(ranking->rows, ranking->sureHits);
    return ranking;
}

int countOccurrences(const Call &call, std::vector<double> &occurrences)
{
    for (std::size_t phrase = 0; phrase < occurrences.size(); ++phrase) {
        double sum = 0;
        Fts5PhraseIter place;
        int column = 0;
        int offset = 0;
        const int code = call.api->xPhraseFirst(call.hit, static_cast<int>(phrase), &place, &column, &offset);
        if (code != SQLITE_OK)
            return code;
        for (; column >= 0; call.api->xPhraseNext(call.hit, &place, &column, &offset))
            sum += call.columnWeight(column);
        occurrences[phrase] = sum;
    }
    return SQLITE_OK;
}

int pageLength(const Call &call, int &length)
{
    const qint64 rowId = call.api->xRowid(call.hit);
    if (const auto known = call.lengths().find(rowId)) {
        length = *known;
        return SQLITE_OK;
    }
    const int code = call.api->xColumnSize(call.hit, -1, &length);
    if (code == SQLITE_OK)
        call.lengths().remember(rowId, length);
    return code;
}

/// The order of the operations decides the last bits: it is the built-in function's.
double score(const Ranking &ranking, int pageLength)
{
    const double length = static_cast<double>(pageLength);
    double sum = 0;
    for (std::size_t phrase = 0; phrase < ranking.weights.size(); ++phrase) {
        const double count = ranking.occurrences[phrase];
        const double damping =
            kSaturation * (1 - kLengthShare + kLengthShare * length / ranking.averageLength);
        sum += ranking.weights[phrase] * ((count * (kSaturation + 1.0)) / (count + damping));
    }
    return -1.0 * sum;
}

void deleteSources(void *sources)
{
    delete static_cast<Sources *>(sources);
}

void rank(const Fts5ExtensionApi *api, Fts5Context *hit, sqlite3_context *result, int valueCount,
          sqlite3_value **values)
{
    const Call call{api, hit, result, valueCount, values};
    int code = SQLITE_OK;
    int length = 0;
    Ranking *ranking = rankingFor(call, code);
    if (code == SQLITE_OK)
        code = countOccurrences(call, ranking->occurrences);
    if (code == SQLITE_OK)
        code = pageLength(call, length);
    if (code == SQLITE_OK)
        sqlite3_result_double(result, score(*ranking, length));
    else
        sqlite3_result_error_code(result, code);
}

fts5_api *fullTextInterface(sqlite3 *connection)
{
    fts5_api *found = nullptr;
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(connection, "SELECT fts5(?1)", -1, &statement, nullptr) == SQLITE_OK) {
        sqlite3_bind_pointer(statement, 1, static_cast<void *>(&found), "fts5_api_ptr", nullptr);
        sqlite3_step(statement);
    }
    sqlite3_finalize(statement);
    return found;
}
} // namespace

bool registerRankFunction(sqlite3 *connection, PageLengths &lengths, PrefixCounter &prefixes,
                          const char *name)
{
    fts5_api *api = fullTextInterface(connection);
    return api && api->iVersion >= 2 && prefixes.registerWith(api) &&
           api->xCreateFunction(api, name, new Sources{lengths, prefixes}, rank, deleteSources) == SQLITE_OK;
}
