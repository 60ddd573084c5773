#pragma once

#include "store/SqlValue.h"

#include <QLatin1String>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

/// One row of a result: a map from column name to value in which a NULL column is absent. Rows of one
/// result share their column names. Each reader supplies its own default for what is absent.
class Row
{
public:
    Row(std::shared_ptr<const QStringList> columns, std::vector<SqlValue> values);

    /// Whether the column exists and is not NULL.
    bool contains(QLatin1String column) const;

    /// The column's value when it exists and has this type.
    std::optional<QString> text(QLatin1String column) const;
    std::optional<qint64> integer(QLatin1String column) const;
    std::optional<double> real(QLatin1String column) const;
    std::optional<QByteArray> blob(QLatin1String column) const;

private:
    const SqlValue *find(QLatin1String column) const;

    std::shared_ptr<const QStringList> m_columns;
    std::vector<SqlValue> m_values;
};
