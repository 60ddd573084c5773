#pragma once

struct sqlite3;
class PageLengths;
class PrefixCounter;

/// Gives the connection's full-text tables a ranking function `name` that answers, bit for bit, what the
/// built-in bm25 answers, weights included, but takes the lengths of pages from `lengths` where they are
/// known there, and the numbers of rows that prefixes match from `prefixes`. Under the name "bm25" it takes
/// the built-in function's place.
///
/// False when the connection does not offer its full-text interface; the built-in function stays then.
/// `lengths` and `prefixes` must live as long as statements run on the connection.
bool registerRankFunction(sqlite3 *connection, PageLengths &lengths, PrefixCounter &prefixes,
                          const char *name = "bm25");
