#pragma once

#include <QString>
#include <optional>

/// The user's preferences, a text by key, kept through QSettings under $XDG_CONFIG_HOME. Call from any
/// thread.
class Preferences
{
public:
    std::optional<QString> text(const QString &key) const;
    void setText(const QString &key, const QString &value);
};

/// When the last import started, in stored time form.
inline constexpr char kLastImportDateKey[] = "lastImportDate";
