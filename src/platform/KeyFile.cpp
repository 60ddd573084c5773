#include "platform/KeyFile.h"

#include <QFile>
#include <QFileInfo>

namespace
{
constexpr qint64 kMaximumBytes = 1024 * 1024;

QString unescaped(const QString &value)
{
    static const QHash<QChar, QChar> meanings{{u's', u' '}, {u'n', u'\n'}, {u't', u'\t'}, {u'r', u'\r'}};
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        // Of other letters the backslash stays: what starts a program has escapes of its own.
        if (isEscape && meanings.contains(value[i + 1]))
            text += meanings.value(value[++i]);
        else if (isEscape && value[i + 1] == u'\\')
            text += value[++i];
        else
            text += value[i];
    }
    return text;
}
} // namespace

KeyFile KeyFile::read(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > kMaximumBytes || !file.open(QIODevice::ReadOnly))
        return {};
    return parse(file.read(kMaximumBytes));
}

KeyFile KeyFile::parse(const QByteArray &content)
{
    KeyFile result;
    QString group;
    const QStringList lines = QString::fromUtf8(content).split(u'\n');
    for (const QString &line : lines) {
        const QString trimmed = line.trimmed();
        const qsizetype equals = trimmed.indexOf(u'=');
        if (trimmed.startsWith(u'[') && trimmed.endsWith(u']')) {
            group = trimmed.mid(1, trimmed.size() - 2);
            result.m_groups[group];
        } else if (!trimmed.startsWith(u'#') && equals > 0 && !group.isEmpty()) {
            result.m_groups[group].insert(trimmed.left(equals).trimmed(), trimmed.mid(equals + 1).trimmed());
        }
    }
    return result;
}

QString KeyFile::text(const QString &group, const QString &key) const
{
    return unescaped(m_groups.value(group).value(key));
}

QStringList KeyFile::list(const QString &group, const QString &key) const
{
    return text(group, key).split(u';', Qt::SkipEmptyParts);
}

bool KeyFile::flag(const QString &group, const QString &key) const
{
    return text(group, key) == u"true";
}
