#include "app/OpenRequestArguments.h"

#include "support/Printing.h"

#include <gtest/gtest.h>

namespace
{

PDFOpenRequest fullRequest()
{
    return {.id = QUuid::createUuidV5(QUuid(), QStringLiteral("a")),
            .url = QUrl::fromLocalFile(QStringLiteral("/papers/ä b'\"$(x).pdf")),
            .page = 7,
            .paperId = QStringLiteral("p"),
            .searchText = QStringLiteral("--Größe \"x\"\n"),
            .highlightText = {}};
}

QString refusalOf(const QByteArrayList &arguments)
{
    const auto requests = openRequestsFromArguments(arguments);
    return requests ? QString() : requests.error().message();
}

} // namespace

TEST(OpenRequestArguments, ArriveAsTheyLeft)
{
    PDFOpenRequest other = fullRequest();
    other.page.reset();
    const QList<PDFOpenRequest> requests{fullRequest(), other};
    const auto arrived = openRequestsFromArguments(toArguments(requests));
    ASSERT_TRUE(arrived) << arrived.error().message().toStdString();
    EXPECT_EQ(*arrived, requests);
}

TEST(OpenRequestArguments, AreNoneWithoutArguments)
{
    const auto requests = openRequestsFromArguments({});
    ASSERT_TRUE(requests);
    EXPECT_TRUE(requests->isEmpty());
}

TEST(OpenRequestArguments, RefuseWhatIsNoRequest)
{
    EXPECT_EQ(refusalOf({"--dance"}), QStringLiteral("Unknown argument: --dance"));
    EXPECT_FALSE(refusalOf({"--open-request"}).isEmpty());
    EXPECT_TRUE(
        refusalOf({"--open-request", "{"}).startsWith(u"The window to open is not described in JSON"));
    EXPECT_FALSE(refusalOf({"--open-request", "[]"}).isEmpty());
    EXPECT_TRUE(refusalOf({"--open-request", R"({"url":"file:///a.pdf"})"}).contains(u"id"));
}

TEST(OpenRequestArguments, RefuseAddressesOfAnythingButFiles)
{
    PDFOpenRequest request = fullRequest();
    request.url = QUrl(QStringLiteral("https://example.org/a.pdf"));
    EXPECT_EQ(refusalOf(toArguments({request})),
              QStringLiteral("Only files can be opened: https://example.org/a.pdf"));
}
