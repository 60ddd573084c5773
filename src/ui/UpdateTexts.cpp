#include "ui/UpdateTexts.h"

#include "app/Updater.h"
#include "platform/Paths.h"

#include <QLocale>

namespace
{
QString size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString newVersion(const Updater &updater)
{
    return u"Quirevault " + updater.update().displayVersion;
}

QString downloadedText(const Updater &updater)
{
    const QString text =
        QStringLiteral(
            "It is signed by its makers, and lies at %1.\n\nOpen it to install it with the program "
            "that installs packages here. Quirevault does not replace itself.")
            .arg(pathForPeople(updater.packagePath()));
    const QString problem = updater.problem;
    return problem.isEmpty() ? text : QString(text % u"\n\n" % problem);
}

UpdateTexts failureTexts(const Updater &updater)
{
    return {updater.hasDownloadFailed() ? QString(newVersion(updater) + u" was not downloaded")
                                        : QStringLiteral("Updates could not be looked for"),
            updater.problem};
}
} // namespace

UpdateTexts updateTexts(const Updater &updater)
{
    switch (updater.phase) {
    case UpdatePhase::Idle:
        break;
    case UpdatePhase::NotConfigured:
        return {QStringLiteral("No update service is configured"),
                QStringLiteral("This Quirevault has no address to look for updates at. If it was installed "
                               "as a package, the updates of your system bring new versions.")};
    case UpdatePhase::Checking:
        return {QStringLiteral("Looking for updates…"), {}};
    case UpdatePhase::UpToDate:
        return {QStringLiteral("Quirevault is up to date"),
                QStringLiteral("You have version %1, the newest.").arg(updater.installedVersion().text())};
    case UpdatePhase::Available:
        return {newVersion(updater) + u" is available",
                QStringLiteral("You have version %1. The download has %2.")
                    .arg(updater.installedVersion().text(), size(updater.update().sizeBytes))};
    case UpdatePhase::Downloading:
        return {
            QString(u"Downloading " + newVersion(updater) + u"…"),
            QStringLiteral("You may close this window: the download goes on, and tells when it is there.")};
    case UpdatePhase::Downloaded:
        return {newVersion(updater) + u" is downloaded", downloadedText(updater)};
    case UpdatePhase::Failed:
        return failureTexts(updater);
    }
    return {};
}

QString downloadProgressText(qint64 receivedBytes, qint64 sizeBytes)
{
    return QStringLiteral("%1 of %2").arg(size(receivedBytes), size(sizeBytes));
}
