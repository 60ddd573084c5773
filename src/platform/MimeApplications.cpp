#include "platform/MimeApplications.h"

#include "platform/KeyFile.h"

#include <QDir>
#include <QDirIterator>
#include <QHash>
#include <QSet>
#include <QStandardPaths>

namespace
{
/// What one folder says.
struct Level {
    QList<KeyFile> lists; ///< those of the running desktop first
    QStringList entryIds; ///< of the entries in the folder, by name
};

class Applications
{
public:
    explicit Applications(const DesktopFolders &folders)
    {
        for (const QString &folder : folders.config)
            m_levels.append({listsIn(folder, folders.desktops), {}});
        for (const QString &folder : folders.data)
            m_levels.append({listsIn(folder + u"/applications", folders.desktops),
                             readEntries(folder + u"/applications")});
    }

    QList<DesktopEntry> of(const QString &mimeType)
    {
        for (const Level &level : std::as_const(m_levels)) {
            for (const KeyFile &list : level.lists)
                choose(list.list(QStringLiteral("Default Applications"), mimeType));
        }
        for (const Level &level : std::as_const(m_levels)) {
            for (const KeyFile &list : level.lists) {
                choose(list.list(QStringLiteral("Added Associations"), mimeType));
                for (const QString &id : list.list(QStringLiteral("Removed Associations"), mimeType))
                    m_seen.insert(id);
            }
            for (const QString &id : level.entryIds) {
                if (m_entries.value(id).mimeTypes.contains(mimeType))
                    choose({id});
            }
        }
        return m_chosen;
    }

private:
    static QList<KeyFile> listsIn(const QString &folder, const QStringList &desktops)
    {
        QList<KeyFile> lists;
        for (const QString &desktop : desktops)
            lists.append(KeyFile::read(folder + u'/' + desktop + u"-mimeapps.list"));
        lists.append(KeyFile::read(folder + u"/mimeapps.list"));
        return lists;
    }

    /// An entry's id is its path below the folder, with dashes; one in a folder before hides it.
    QStringList readEntries(const QString &folder)
    {
        QStringList ids;
        QDirIterator files(folder, {QStringLiteral("*.desktop")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QString id = path.mid(folder.size() + 1).replace(u'/', u'-');
            if (m_entries.contains(id))
                continue;
            m_entries.insert(id, DesktopEntry::read(path, id).value_or(DesktopEntry{.isHidden = true}));
            ids.append(id);
        }
        ids.sort();
        return ids;
    }

    void choose(const QStringList &ids)
    {
        for (const QString &id : ids) {
            const auto entry = m_entries.constFind(id);
            if (m_seen.contains(id) || entry == m_entries.constEnd())
                continue;
            m_seen.insert(id);
            if (!entry->isHidden && entry->isInstalled())
                m_chosen.append(*entry);
        }
    }

    QList<Level> m_levels;
    QHash<QString, DesktopEntry> m_entries;
    QSet<QString> m_seen; ///< chosen already, or not to be chosen
    QList<DesktopEntry> m_chosen;
};
} // namespace

DesktopFolders DesktopFolders::ofTheUser()
{
    return {.config = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation),
            .data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation),
            .desktops =
                qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(u':', Qt::SkipEmptyParts)};
}

QList<DesktopEntry> applicationsFor(const QString &mimeType, const DesktopFolders &folders)
{
    return Applications(folders).of(mimeType);
}
