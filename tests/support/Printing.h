#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <ostream>

// Makes GoogleTest print Qt's texts readably.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.toStdString() << '"';
}
inline void PrintTo(const QStringList &list, std::ostream *out)
{
    *out << '[' << list.join(QStringLiteral(", ")).toStdString() << ']';
}
