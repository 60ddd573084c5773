#include "app/UpdateSettings.h"

#include "base/Clock.h"
#include "platform/Preferences.h"

namespace
{
const auto kFeedKey = QStringLiteral("QuirevaultUpdateFeedURL");
const auto kDailyKey = QStringLiteral("checksForUpdatesDaily");
const auto kLastCheckKey = QStringLiteral("lastUpdateCheckDate");
const auto kSkippedKey = QStringLiteral("skippedUpdateVersion");
} // namespace

UpdateSettings::UpdateSettings(Preferences &preferences, const QString &builtInFeed)
    : m_preferences(preferences)
    , m_builtInFeed(builtInFeed)
{
}

std::optional<QUrl> UpdateSettings::feedAddress() const
{
    const QString address = m_preferences.text(kFeedKey).value_or(m_builtInFeed).trimmed();
    return address.isEmpty() ? std::nullopt : std::optional(QUrl(address));
}

bool UpdateSettings::checksDaily() const
{
    return m_preferences.text(kDailyKey) != QStringLiteral("false");
}

void UpdateSettings::setChecksDaily(bool checks)
{
    m_preferences.setText(kDailyKey, checks ? QStringLiteral("true") : QStringLiteral("false"));
}

std::optional<QDateTime> UpdateSettings::lastCheck() const
{
    const QDateTime time =
        QDateTime::fromString(m_preferences.text(kLastCheckKey).value_or(QString()), Qt::ISODate);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

void UpdateSettings::setLastCheck(const QDateTime &time)
{
    m_preferences.setText(kLastCheckKey, toStoredTime(time));
}

std::optional<DottedVersion> UpdateSettings::skippedVersion() const
{
    return DottedVersion::fromText(m_preferences.text(kSkippedKey).value_or(QString()));
}

void UpdateSettings::setSkippedVersion(const DottedVersion &version)
{
    m_preferences.setText(kSkippedKey, version.text());
}
