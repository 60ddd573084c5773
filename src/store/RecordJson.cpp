#include "store/RecordJson.h"

#include "store/JsonReader.h"

#include <QJsonArray>

QJsonObject toJson(const Paper &paper)
{
    QJsonObject object{
        {QStringLiteral("id"), paper.id},
        {QStringLiteral("title"), paper.title},
        {QStringLiteral("authors"), paper.authors},
        {QStringLiteral("page_count"), paper.pageCount},
        {QStringLiteral("cover_path"), paper.coverPath},
        {QStringLiteral("filepath"), paper.filepath},
        {QStringLiteral("tags"), QJsonArray::fromStringList(paper.tags)},
    };
    if (paper.year)
        object.insert(QStringLiteral("year"), *paper.year);
    return object;
}

QJsonObject toJson(const Passage &passage)
{
    return {{QStringLiteral("text"), passage.text}, {QStringLiteral("page"), passage.page}};
}

QJsonObject toJson(const SearchResult &result)
{
    QJsonArray passages;
    for (const Passage &passage : result.passages)
        passages.append(toJson(passage));
    return {
        {QStringLiteral("paper_id"), result.paperId},      {QStringLiteral("title"), result.title},
        {QStringLiteral("filepath"), result.filepath},     {QStringLiteral("cover_path"), result.coverPath},
        {QStringLiteral("passages"), std::move(passages)}, {QStringLiteral("score"), result.score},
    };
}

QJsonObject toJson(const Bookmark &bookmark)
{
    return {
        {QStringLiteral("id"), bookmark.id},
        {QStringLiteral("text"), bookmark.text},
        {QStringLiteral("page"), bookmark.page},
        {QStringLiteral("label"), bookmark.label},
        {QStringLiteral("paper_id"), bookmark.paperId},
        {QStringLiteral("created_at"), bookmark.createdAt},
    };
}

template <> Result<Paper> fromJson<Paper>(const QJsonObject &object)
{
    JsonReader reader(object);
    const Paper paper{
        .id = reader.text(u"id"),
        .title = reader.text(u"title"),
        .authors = reader.text(u"authors"),
        .year = reader.optionalInteger(u"year"),
        .pageCount = reader.integer(u"page_count"),
        .coverPath = reader.text(u"cover_path"),
        .filepath = reader.text(u"filepath"),
        .tags = reader.texts(u"tags"),
    };
    return reader.finish(paper);
}

template <> Result<Passage> fromJson<Passage>(const QJsonObject &object)
{
    JsonReader reader(object);
    const Passage passage{.text = reader.text(u"text"), .page = reader.integer(u"page")};
    return reader.finish(passage);
}

template <> Result<SearchResult> fromJson<SearchResult>(const QJsonObject &object)
{
    JsonReader reader(object);
    SearchResult result{
        .paperId = reader.text(u"paper_id"),
        .title = reader.text(u"title"),
        .filepath = reader.text(u"filepath"),
        .coverPath = reader.text(u"cover_path"),
        .passages = {},
        .score = 0,
    };
    for (const QJsonObject &passageObject : reader.objects(u"passages")) {
        const Result<Passage> passage = fromJson<Passage>(passageObject);
        if (!passage)
            return passage.error();
        result.passages.append(*passage);
    }
    result.score = reader.real(u"score");
    return reader.finish(result);
}

template <> Result<Bookmark> fromJson<Bookmark>(const QJsonObject &object)
{
    JsonReader reader(object);
    const Bookmark bookmark{
        .id = reader.text(u"id"),
        .paperId = reader.text(u"paper_id"),
        .text = reader.text(u"text"),
        .page = reader.integer(u"page"),
        .label = reader.text(u"label"),
        .createdAt = reader.text(u"created_at"),
    };
    return reader.finish(bookmark);
}
