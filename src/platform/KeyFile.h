#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

/// Groups of keys and values in the form of the desktop's own files: programs' entries and lists of defaults.
/// Lines that have another form are passed over.
class KeyFile
{
public:
    /// Without groups where `path` is no regular file, cannot be read, or has more than 1 MiB: real ones have
    /// a few KiB, and anybody may put one into the user's folders.
    static KeyFile read(const QString &path);
    static KeyFile parse(const QByteArray &content);

    bool hasGroup(const QString &group) const { return m_groups.contains(group); }
    /// The value with its escapes ("\s", "\n", "\t", "\r", "\\") resolved; empty when there is none.
    QString text(const QString &group, const QString &key) const;
    /// The parts between semicolons, without empty ones.
    QStringList list(const QString &group, const QString &key) const;
    bool flag(const QString &group, const QString &key) const;

private:
    QHash<QString, QHash<QString, QString>> m_groups;
};
