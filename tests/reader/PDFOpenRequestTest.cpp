#include "reader/PDFOpenRequest.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{
PDFOpenRequest fullRequest()
{
    return {
        .id = QUuid(QStringLiteral("6f1c2a34-90ab-4cde-8f01-23456789abcd")),
        .url = QUrl::fromLocalFile(QStringLiteral("/papers/100% #1 über.pdf")),
        .page = 12,
        .paperId = QStringLiteral("p"),
        .searchText = QStringLiteral("graph"),
        .highlightText = QStringLiteral("of graphs"),
    };
}

QJsonObject with(const QString &key, const QJsonValue &value)
{
    QJsonObject json = toJson(fullRequest());
    json.insert(key, value);
    return json;
}

void expectRefusal(const QJsonObject &json, QStringView key)
{
    const auto request = openRequestFromJson(json);
    ASSERT_FALSE(request) << key.toString().toStdString();
    EXPECT_EQ(request.error().domain, u"PDFOpenRequest");
    EXPECT_EQ(request.error().reason, key);
}
} // namespace

TEST(PDFOpenRequest, ComesBackFromItsJsonAsItWas)
{
    const auto request = openRequestFromJson(toJson(fullRequest()));
    ASSERT_TRUE(request);
    EXPECT_EQ(*request, fullRequest());
    EXPECT_EQ(request->url.toLocalFile(), u"/papers/100% #1 über.pdf");
}

TEST(PDFOpenRequest, NamesItsFieldsInCamelCase)
{
    EXPECT_EQ(toJson(fullRequest()).keys(),
              (QStringList{QStringLiteral("highlightText"), QStringLiteral("id"), QStringLiteral("page"),
                           QStringLiteral("paperId"), QStringLiteral("searchText"), QStringLiteral("url")}));
}

TEST(PDFOpenRequest, LeavesOutWhatIsAbsent)
{
    const PDFOpenRequest request{.id = QUuid::createUuid(),
                                 .url = QUrl::fromLocalFile(QStringLiteral("/a.pdf")),
                                 .page = {},
                                 .paperId = {},
                                 .searchText = {},
                                 .highlightText = {}};
    EXPECT_EQ(toJson(request).keys(), (QStringList{QStringLiteral("id"), QStringLiteral("url")}));
    const auto back = openRequestFromJson(toJson(request));
    ASSERT_TRUE(back);
    EXPECT_EQ(*back, request);
}

TEST(PDFOpenRequest, TakesNullForAbsent)
{
    const auto request = openRequestFromJson(with(QStringLiteral("page"), QJsonValue::Null));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->page, std::nullopt);
}

TEST(PDFOpenRequest, RefusesJsonWithoutIdOrUrl)
{
    expectRefusal({}, u"id");
    expectRefusal(with(QStringLiteral("id"), QStringLiteral("not an id")), u"id");
    expectRefusal(with(QStringLiteral("url"), QString()), u"url");
    expectRefusal(with(QStringLiteral("url"), QJsonValue::Null), u"url");
}

TEST(PDFOpenRequest, RefusesValuesOfTheWrongType)
{
    expectRefusal(with(QStringLiteral("page"), 1.5), u"page");
    expectRefusal(with(QStringLiteral("page"), QStringLiteral("1")), u"page");
    expectRefusal(with(QStringLiteral("searchText"), 7), u"searchText");
    expectRefusal(with(QStringLiteral("url"), true), u"url");
}

TEST(PDFOpenRequest, EqualRequestsHashEqually)
{
    EXPECT_EQ(qHash(fullRequest()), qHash(fullRequest()));
    PDFOpenRequest other = fullRequest();
    other.page = 13;
    EXPECT_NE(other, fullRequest());
}
