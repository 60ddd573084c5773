#include "store/Row.h"

#include <utility>

namespace
{
template <typename T> std::optional<T> valueAs(const SqlValue *value)
{
    const T *typed = value ? std::get_if<T>(value) : nullptr;
    return typed ? std::optional<T>(*typed) : std::nullopt;
}
} // namespace

Row::Row(std::shared_ptr<const QStringList> columns, std::vector<SqlValue> values)
    : m_columns(std::move(columns))
    , m_values(std::move(values))
{
}

bool Row::contains(QLatin1String column) const
{
    return find(column) != nullptr;
}

std::optional<QString> Row::text(QLatin1String column) const
{
    return valueAs<QString>(find(column));
}

std::optional<qint64> Row::integer(QLatin1String column) const
{
    return valueAs<qint64>(find(column));
}

std::optional<double> Row::real(QLatin1String column) const
{
    return valueAs<double>(find(column));
}

std::optional<QByteArray> Row::blob(QLatin1String column) const
{
    return valueAs<QByteArray>(find(column));
}

const SqlValue *Row::find(QLatin1String column) const
{
    // Of columns that share a name the last one that holds a value counts.
    for (size_t i = m_values.size(); i-- > 0;) {
        const bool isNull = std::holds_alternative<std::monostate>(m_values[i]);
        if (!isNull && m_columns->at(static_cast<qsizetype>(i)) == column)
            return &m_values[i];
    }
    return nullptr;
}
