#include "store/Paper.h"

size_t qHash(const Paper &paper, size_t seed)
{
    size_t hash = qHashMulti(seed, paper.id, paper.title, paper.authors, paper.year.has_value());
    if (paper.year)
        hash = qHashMulti(hash, *paper.year);
    hash = qHashMulti(hash, paper.pageCount, paper.coverPath, paper.filepath, paper.tags.size());
    for (const QString &tag : paper.tags)
        hash = qHashMulti(hash, tag);
    return hash;
}
