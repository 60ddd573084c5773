#include "store/RecordJson.h"
#include "support/Printing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

namespace
{
const Paper kPaper{.id = QStringLiteral("a"),
                   .title = QStringLiteral("T \"q\"\n𝔸"),
                   .authors = QString(),
                   .year = 2019,
                   .pageCount = 12,
                   .coverPath = QStringLiteral("/c.jpg"),
                   .filepath = QStringLiteral("/p.pdf"),
                   .tags = {QStringLiteral("x"), QStringLiteral("y")}};
const SearchResult kResult{.paperId = QStringLiteral("a"),
                           .title = QStringLiteral("T"),
                           .filepath = QStringLiteral("/p.pdf"),
                           .coverPath = QString(),
                           .passages = {{.text = QStringLiteral("...x..."), .page = 3}},
                           .score = 1.075};
const Bookmark kBookmark{.id = QStringLiteral("B"),
                         .paperId = QStringLiteral("a"),
                         .text = QStringLiteral("words"),
                         .page = 7,
                         .label = QString(),
                         .createdAt = QStringLiteral("2024-03-05T14:07:09Z")};

/// The record after a journey through JSON text.
template <typename Record> Result<Record> travelled(const Record &record)
{
    const QByteArray text = QJsonDocument(toJson(record)).toJson();
    return fromJson<Record>(QJsonDocument::fromJson(text).object());
}

template <typename Record> void expectEveryKeyRequired(const Record &record, const QStringList &optional = {})
{
    const QJsonObject whole = toJson(record);
    for (const QString &key : whole.keys()) {
        QJsonObject object = whole;
        object.remove(key);
        const Result<Record> decoded = fromJson<Record>(object);
        EXPECT_EQ(decoded.has_value(), optional.contains(key)) << key.toStdString();
        if (!decoded) {
            EXPECT_EQ(decoded.error().code, kMissingKey) << key.toStdString();
        }

        object.insert(key, true);
        const Result<Record> wrong = fromJson<Record>(object);
        ASSERT_FALSE(wrong) << key.toStdString();
        EXPECT_EQ(wrong.error(), (Error{QStringLiteral("RecordJson"), kWrongType,
                                        QStringLiteral("A value has the wrong type"), key}));
    }
}
} // namespace

TEST(RecordJson, BringsEveryRecordThereAndBack)
{
    EXPECT_EQ(*travelled(kPaper), kPaper);
    EXPECT_EQ(*travelled(kResult), kResult);
    EXPECT_EQ(*travelled(kBookmark), kBookmark);
    EXPECT_EQ(*travelled(kResult.passages.first()), kResult.passages.first());
}

TEST(RecordJson, NamesItsKeysInSnakeCase)
{
    EXPECT_EQ(toJson(kPaper).keys(),
              (QStringList{QStringLiteral("authors"), QStringLiteral("cover_path"),
                           QStringLiteral("filepath"), QStringLiteral("id"), QStringLiteral("page_count"),
                           QStringLiteral("tags"), QStringLiteral("title"), QStringLiteral("year")}));
    EXPECT_EQ(toJson(kResult).keys(), (QStringList{QStringLiteral("cover_path"), QStringLiteral("filepath"),
                                                   QStringLiteral("paper_id"), QStringLiteral("passages"),
                                                   QStringLiteral("score"), QStringLiteral("title")}));
    EXPECT_EQ(toJson(kBookmark).keys(),
              (QStringList{QStringLiteral("created_at"), QStringLiteral("id"), QStringLiteral("label"),
                           QStringLiteral("page"), QStringLiteral("paper_id"), QStringLiteral("text")}));
    EXPECT_EQ(toJson(kResult.passages.first()).keys(),
              (QStringList{QStringLiteral("page"), QStringLiteral("text")}));
}

TEST(RecordJson, LeavesAnAbsentYearOut)
{
    Paper paper = kPaper;
    paper.year = std::nullopt;
    EXPECT_FALSE(toJson(paper).contains(QStringLiteral("year")));
    EXPECT_EQ(*travelled(paper), paper);
}

TEST(RecordJson, ReadsANullYearAsNone)
{
    QJsonObject object = toJson(kPaper);
    object.insert(QStringLiteral("year"), QJsonValue());
    EXPECT_EQ(fromJson<Paper>(object)->year, std::nullopt);
}

TEST(RecordJson, RequiresEveryKeyButTheYearAndEveryTypeAsItIs)
{
    expectEveryKeyRequired(kPaper, {QStringLiteral("year")});
    expectEveryKeyRequired(kResult);
    expectEveryKeyRequired(kBookmark);
    expectEveryKeyRequired(kResult.passages.first());
}

TEST(RecordJson, RefusesANumberThatIsNoInteger)
{
    QJsonObject object = toJson(kBookmark);
    for (const QJsonValue &value : {QJsonValue(1.5), QJsonValue(1e300), QJsonValue(QStringLiteral("1"))}) {
        object.insert(QStringLiteral("page"), value);
        EXPECT_EQ(fromJson<Bookmark>(object).error().reason, u"page");
    }
}

TEST(RecordJson, KeepsIntegersThatNoFloatHolds)
{
    Bookmark bookmark = kBookmark;
    bookmark.page = 9'007'199'254'740'993;
    EXPECT_EQ(travelled(bookmark)->page, bookmark.page);
}

TEST(RecordJson, FailsWithAMemberOfAListThatIsWrong)
{
    QJsonObject paper = toJson(kPaper);
    paper.insert(QStringLiteral("tags"), QJsonArray{QStringLiteral("x"), 1});
    EXPECT_EQ(fromJson<Paper>(paper).error().reason, u"tags");

    QJsonObject result = toJson(kResult);
    result.insert(QStringLiteral("passages"),
                  QJsonArray{QJsonObject{{QStringLiteral("text"), QStringLiteral("t")}}});
    EXPECT_EQ(fromJson<SearchResult>(result).error().reason, u"page");
}
