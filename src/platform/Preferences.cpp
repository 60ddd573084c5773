#include "platform/Preferences.h"

#include "base/Log.h"

#include <QSettings>
#include <QStandardPaths>

namespace
{
// The path is built here because QSettings looks at XDG_CONFIG_HOME once a process, and a process may be
// pointed elsewhere later.
QString filePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/Quirevault/Quirevault.ini";
}
} // namespace

// QSettings objects of one file share its content and their own lock, so a fresh one a call is cheap and is
// what makes calls from any thread safe.
std::optional<QString> Preferences::text(const QString &key) const
{
    const QSettings settings(filePath(), QSettings::IniFormat);
    const QVariant value = settings.value(key);
    if (!value.isValid())
        return {};
    return value.toString();
}

void Preferences::setText(const QString &key, const QString &value)
{
    QSettings settings(filePath(), QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        logLine(u"Preferences: Error writing " + filePath());
}
