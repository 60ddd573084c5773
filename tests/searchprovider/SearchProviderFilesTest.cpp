// The files by which desktops find the provider name what the program calls itself.
#include "searchprovider/RunnerSearchProvider.h"
#include "searchprovider/SearchProviderProgram.h"
#include "support/Printing.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace
{

/// The value of a key in one of the files of packaging/.
QString value(const QString &file, const QString &key)
{
    return QSettings(QStringLiteral(QUIREVAULT_PACKAGING "/") + file, QSettings::IniFormat)
        .value(key)
        .toString();
}

const auto kName = QString::fromLatin1(kSearchProviderName);
const auto kPath = QString::fromLatin1(kSearchProviderPath);

} // namespace

TEST(SearchProviderFiles, TellTheBusWhichProgramHasTheName)
{
    const auto file = QStringLiteral("org.quirevault.Quirevault.SearchProvider.service.in");
    EXPECT_EQ(value(file, QStringLiteral("D-BUS Service/Name")), kName);
    EXPECT_EQ(value(file, QStringLiteral("D-BUS Service/Exec")),
              QStringLiteral("@CMAKE_INSTALL_FULL_LIBEXECDIR@/quirevault/quirevault-search-provider"));
}

TEST(SearchProviderFiles, TellTheShellWhereToAsk)
{
    const auto file = QStringLiteral("org.quirevault.Quirevault.search-provider.ini");
    EXPECT_EQ(value(file, QStringLiteral("Shell Search Provider/BusName")), kName);
    EXPECT_EQ(value(file, QStringLiteral("Shell Search Provider/ObjectPath")), kPath);
    EXPECT_EQ(value(file, QStringLiteral("Shell Search Provider/Version")), QStringLiteral("2"));
}

TEST(SearchProviderFiles, TellKRunnerWhereToAsk)
{
    const auto file = QStringLiteral("plasma-runner-quirevault.desktop");
    EXPECT_EQ(value(file, QStringLiteral("Desktop Entry/X-Plasma-DBusRunner-Service")), kName);
    EXPECT_EQ(value(file, QStringLiteral("Desktop Entry/X-Plasma-DBusRunner-Path")), kPath);
    EXPECT_EQ(value(file, QStringLiteral("Desktop Entry/X-Plasma-Runner-Min-Letter-Count")).toInt(),
              RunnerSearchProvider::kFewestLetters);
}
