#pragma once

#include "updates/DottedVersion.h"

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <optional>

class Preferences;

/// What the preferences say of updates. Call from any thread.
///
/// Their keys: `QuirevaultUpdateFeedURL`, `checksForUpdatesDaily` ("false" switches it off),
/// `lastUpdateCheckDate` (stored time form), `skippedUpdateVersion`.
class UpdateSettings
{
public:
    /// `builtInFeed` is the feed's address where the preferences name none; empty for none. The preferences
    /// must outlive this.
    UpdateSettings(Preferences &preferences, const QString &builtInFeed);

    /// Where to look for updates; none when nobody said, or the preference is empty.
    std::optional<QUrl> feedAddress() const;

    /// Whether to look every day without being asked.
    bool checksDaily() const;
    void setChecksDaily(bool checks);

    /// When updates were last looked for; none when never, or what is stored is no time.
    std::optional<QDateTime> lastCheck() const;
    void setLastCheck(const QDateTime &time);

    /// The version that is not to be offered unasked any more.
    std::optional<DottedVersion> skippedVersion() const;
    void setSkippedVersion(const DottedVersion &version);

private:
    Preferences &m_preferences;
    QString m_builtInFeed;
};
