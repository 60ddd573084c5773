#include "updates/PackageDownload.h"

#include "platform/HttpClient.h"
#include "support/UpdateFixture.h"
#include "updates/Appcast.h"
#include "updates/UpdateError.h"

#include <QDir>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace std::chrono_literals;

namespace
{
class PackageDownloadTest : public testing::Test, public UpdateFixture
{
protected:
    Result<QString> download(const FeedItem &text, std::stop_token stop = {})
    {
        const auto items = parseAppcast(feedOf(text.text()));
        const PackageDownload task{
            .http = http, .key = *program.key, .folder = packages, .timeouts = timeouts};
        return task.run(
            items->value(0), [this](qint64 bytes) { progress.append(bytes); }, stop);
    }
    /// The failure, after which nothing may be left.
    Error failure(const FeedItem &item, std::stop_token stop = {})
    {
        const Result<QString> path = download(item, stop);
        EXPECT_FALSE(path);
        EXPECT_EQ(names(), QStringList());
        return path ? Error() : path.error();
    }
    static bool is(const Error &error, UpdateErrorCode code)
    {
        return error.domain == u"Updater" && error.code == static_cast<int>(code);
    }
    static bool is(const Error &error, HttpErrorCode code)
    {
        return error.domain == u"HttpClient" && error.code == static_cast<int>(code);
    }
    QStringList names() const { return QDir(packages).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    const QByteArray package = QByteArray("a package ").repeated(50'000);
    QString packages = folder.path(QStringLiteral("Downloads"));
    UpdateTimeouts timeouts;
    QList<qint64> progress;
};
} // namespace

TEST_F(PackageDownloadTest, KeepsASignedPackageUnderTheNameOfItsVersion)
{
    const auto path = download(offerPackage(package));
    ASSERT_TRUE(path) << path.error().message().toStdString();
    EXPECT_EQ(*path, QString(packages + u"/quirevault-2.0.deb"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("quirevault-2.0.deb")});
    QFile file(*path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == package);
}

TEST_F(PackageDownloadTest, TellsHowFarItIs)
{
    ASSERT_TRUE(download(offerPackage(package)));
    ASSERT_FALSE(progress.isEmpty());
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_EQ(progress.last(), package.size());
}

TEST_F(PackageDownloadTest, KeepsWhatWasDownloadedBefore)
{
    const FeedItem item = offerPackage(package);
    ASSERT_TRUE(download(item));
    EXPECT_EQ(download(item).value_or(QString()), QString(packages + u"/quirevault-2.0 (2).deb"));
}

TEST_F(PackageDownloadTest, RefusesAPackageThatWasTamperedWith)
{
    const FeedItem item = offerPackage(package);
    QByteArray tampered = package;
    tampered[1234] = 'X';
    answers["/package.deb"] = httpAnswer("200 OK", tampered);
    const Error error = failure(item);
    EXPECT_TRUE(is(error, UpdateErrorCode::WrongSignature));
    EXPECT_TRUE(error.message().contains(u"version 2.0"));
}

TEST_F(PackageDownloadTest, RefusesAPackageThatSomebodyElseSigned)
{
    FeedItem item = offerPackage(package);
    item.signature = SigningKey('x').signatureOf(package).toBase64();
    EXPECT_TRUE(is(failure(item), UpdateErrorCode::WrongSignature));
}

TEST_F(PackageDownloadTest, RefusesAPackageWithoutASignature)
{
    FeedItem item = offerPackage(package);
    item.signature.clear();
    EXPECT_TRUE(is(failure(item), UpdateErrorCode::WrongSignature));
}

TEST_F(PackageDownloadTest, RefusesAPackageThatWasCut)
{
    const FeedItem item = offerPackage(package);
    answers["/package.deb"] = httpAnswer("200 OK", package.chopped(1));
    EXPECT_TRUE(is(failure(item), UpdateErrorCode::BadLength));
    answers["/package.deb"] = httpAnswer("200 OK", package).chopped(1);
    EXPECT_TRUE(is(failure(item), HttpErrorCode::TransferFailed)) << "the connection broke";
}

TEST_F(PackageDownloadTest, EndsWhenThePackageIsLongerThanAnnounced)
{
    const FeedItem item = offerPackage(package);
    intercept = [](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\n\r\n"); // without a length, and without an end
        while (connection.send(QByteArray(64 * 1024, 'x'))) {
        }
        return true;
    };
    EXPECT_TRUE(is(failure(item), UpdateErrorCode::BadLength));
}

TEST_F(PackageDownloadTest, SaysThatThePackageIsMissing)
{
    const FeedItem item = offerPackage(package);
    answers.remove("/package.deb");
    EXPECT_TRUE(is(failure(item), HttpErrorCode::BadStatus));
}

TEST_F(PackageDownloadTest, FollowsNoRedirectToPlainHttpElsewhere)
{
    const FeedItem item = offerPackage(package);
    answers["/package.deb"] = httpAnswer("302 Found", "", "Location: http://192.0.2.1/package.deb\r\n");
    EXPECT_TRUE(is(failure(item), HttpErrorCode::BadRedirect));
}

TEST_F(PackageDownloadTest, AsksNoPlainHttpElsewhere)
{
    FeedItem item = offerPackage(package);
    item.url = "http://192.0.2.1/package.deb";
    EXPECT_TRUE(is(failure(item), HttpErrorCode::BadAddress));
}

TEST_F(PackageDownloadTest, GivesUpWhenThePackageTrickles)
{
    const FeedItem item = offerPackage(package);
    intercept = [](const LoopbackServer::Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 500000\r\n\r\n");
        while (!connection.isHungUp() && connection.send("x")) {
        }
        return true;
    };
    timeouts.package = 200ms;
    EXPECT_TRUE(is(failure(item), HttpErrorCode::TimedOut));
}

TEST_F(PackageDownloadTest, GivesUpWhenThePackageStalls)
{
    const FeedItem item = offerPackage(package);
    intercept = [this](const LoopbackServer::Connection &connection) {
        connection.send(httpAnswer("200 OK", package).left(10'000));
        connection.waitForHangUp();
        return true;
    };
    timeouts.stall = 200ms;
    EXPECT_TRUE(is(failure(item), HttpErrorCode::TimedOut));
}

TEST_F(PackageDownloadTest, LeavesNothingBehindWhenItIsStopped)
{
    const FeedItem item = offerPackage(package);
    std::stop_source stop;
    intercept = [&](const LoopbackServer::Connection &connection) {
        connection.send(httpAnswer("200 OK", package).left(10'000));
        stop.request_stop();
        connection.waitForHangUp();
        return true;
    };
    EXPECT_TRUE(isCancelled(failure(item, stop.get_token())));
}

TEST_F(PackageDownloadTest, SaysThatTheFolderCannotBeMade)
{
    const FeedItem item = offerPackage(package);
    packages = folder.write(QStringLiteral("file"), "in the way") + u"/Downloads";
    const Result<QString> path = download(item);
    ASSERT_FALSE(path);
    EXPECT_TRUE(path.error().message().contains(packages));
}

TEST_F(PackageDownloadTest, SaysThatTheDiskIsFullAndLeavesNothingBehind)
{
    const FeedItem item = offerPackage(package);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{100'000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    const Error error = failure(item);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(error.code, EFBIG);
    EXPECT_TRUE(error.message().contains(packages));
}

TEST(PackageEnding, IsOneOfThoseThatAreKnown)
{
    const auto ending = [](const char *address) {
        return packageEnding(QUrl(QLatin1String(address)));
    };
    EXPECT_EQ(ending("https://a.example/x/quirevault_2.0_amd64.deb"), u".deb");
    EXPECT_EQ(ending("https://a.example/Quirevault.appimage"), u".AppImage");
    EXPECT_EQ(ending("https://a.example/q.tar.xz?mirror=1#top"), u".tar.xz");
    EXPECT_EQ(ending("https://a.example/download?file=q.deb"), u"");
    EXPECT_EQ(ending("https://a.example/q.desktop"), u"");
    EXPECT_EQ(ending("https://a.example/q.deb%2f..%2f..%2f.bashrc"), u"");
}
