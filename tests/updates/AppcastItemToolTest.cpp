// The tool that signs releases, and what this program makes of its work.
#include "platform/Ed25519.h"
#include "support/FeedText.h"
#include "support/Printing.h"
#include "support/Programs.h"
#include "support/TemporaryFolder.h"
#include "updates/Appcast.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace
{
struct ToolRun {
    int status = -1;
    QByteArray out;
};

ToolRun run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput()};
}

class AppcastItemToolTest : public testing::Test
{
protected:
    AppcastItemToolTest()
    {
        EXPECT_EQ(
            run(u"openssl"_qs, {u"genpkey"_qs, u"-algorithm"_qs, u"ed25519"_qs, u"-out"_qs, keyFile}).status,
            0);
    }
    /// The public half as the build takes it: the last 32 bytes of what openssl writes.
    Ed25519PublicKey publicKey() const
    {
        const ToolRun der =
            run(u"openssl"_qs, {u"pkey"_qs, u"-in"_qs, keyFile, u"-pubout"_qs, u"-outform"_qs, u"DER"_qs});
        return *Ed25519PublicKey::fromBase64(der.out.right(32).toBase64());
    }

    TemporaryFolder folder;
    QString keyFile = folder.path(u"release.pem"_qs);
    QByteArray package = QByteArray("package\0with zeros\n", 19).repeated(1000);
    QString packageFile = folder.write(u"quirevault 2.deb"_qs, package);
};
} // namespace

TEST_F(AppcastItemToolTest, WritesAnItemThatThisProgramAccepts)
{
    const QString notes = folder.write(u"notes.md"_qs, "# New\n\n<b> & ]]> \"quotes\"\n");
    const QString address = u"https://updates.example/q.deb?a=1&b=2"_qs;
    const ToolRun item = run(appcastItemTool(), {keyFile, packageFile, u"2.0.1"_qs, address, notes});
    ASSERT_EQ(item.status, 0);
    const auto items = parseAppcast("<rss xmlns:quirevault=\"https://quirevault.org/ns/appcast\"><channel>" +
                                    item.out + "</channel></rss>");
    ASSERT_TRUE(items) << items.error().message().toStdString();
    ASSERT_EQ(items->size(), 1);
    const AppcastItem &read = items->first();
    EXPECT_EQ(read.version.text(), u"2.0.1");
    EXPECT_EQ(read.url, QUrl(address));
    EXPECT_EQ(read.sizeBytes, package.size());
    EXPECT_EQ(read.notes,
              (ReleaseNotes{u"# New\n\n<b> & ]]> \"quotes\""_qs, ReleaseNotes::Format::Markdown}));
    EXPECT_TRUE(publicKey().verifies(package, read.signature));
}

TEST_F(AppcastItemToolTest, WritesNothingWithoutAKeyOrAPackage)
{
    for (const QStringList &arguments :
         {QStringList{folder.path(u"missing.pem"_qs), packageFile, u"2.0"_qs, u"https://a.example/"_qs},
          QStringList{keyFile, folder.path(u"missing.deb"_qs), u"2.0"_qs, u"https://a.example/"_qs}}) {
        const ToolRun item = run(appcastItemTool(), arguments);
        EXPECT_NE(item.status, 0);
        EXPECT_EQ(item.out, "");
    }
}

TEST_F(AppcastItemToolTest, TakesNoVersionThatCannotBeCompared)
{
    EXPECT_EQ(run(appcastItemTool(), {keyFile, packageFile, u"2.0-beta"_qs, u"https://a.example/"_qs}).status,
              1);
}
