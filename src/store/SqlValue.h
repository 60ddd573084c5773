#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <variant>

/// A value as SQLite stores it; std::monostate is NULL.
using SqlValue = std::variant<std::monostate, QString, qint64, double, QByteArray>;
using SqlValues = QList<SqlValue>;
