#include "store/JsonReader.h"

#include "store/RecordJson.h"

#include <algorithm>

namespace
{
std::optional<qint64> integerIn(const QJsonValue &value)
{
    // The value answers its argument when it is no integer, so two arguments tell that from a real one.
    const qint64 number = value.toInteger(0);
    return number == value.toInteger(1) ? std::optional(number) : std::nullopt;
}
} // namespace

JsonReader::JsonReader(const QJsonObject &object)
    : m_object(object)
{
}

QString JsonReader::text(QStringView key)
{
    const QJsonValue found = value(key);
    if (!found.isString())
        failType(key);
    return found.toString();
}

qint64 JsonReader::integer(QStringView key)
{
    const std::optional<qint64> number = integerIn(value(key));
    if (!number)
        failType(key);
    return number.value_or(0);
}

std::optional<qint64> JsonReader::optionalInteger(QStringView key)
{
    const QJsonValue found = m_object.value(key);
    if (found.isUndefined() || found.isNull())
        return std::nullopt;
    return integer(key);
}

double JsonReader::real(QStringView key)
{
    const QJsonValue found = value(key);
    if (!found.isDouble())
        failType(key);
    return found.toDouble();
}

QStringList JsonReader::texts(QStringView key)
{
    QStringList texts;
    for (const QJsonValue item : items(key, QJsonValue::String))
        texts.append(item.toString());
    return texts;
}

QList<QJsonObject> JsonReader::objects(QStringView key)
{
    QList<QJsonObject> objects;
    for (const QJsonValue item : items(key, QJsonValue::Object))
        objects.append(item.toObject());
    return objects;
}

/// The items of an array, all of which should be of this type.
QJsonArray JsonReader::items(QStringView key, QJsonValue::Type type)
{
    const QJsonValue found = value(key);
    const QJsonArray items = found.toArray();
    const bool isOfType = std::all_of(items.begin(), items.end(),
                                      [type](const QJsonValue &item) { return item.type() == type; });
    if (!found.isArray() || !isOfType)
        failType(key);
    return items;
}

QJsonValue JsonReader::value(QStringView key)
{
    const QJsonValue found = m_object.value(key);
    if (found.isUndefined())
        fail(kMissingKey, QStringLiteral("A required key is missing"), key);
    return found;
}

void JsonReader::failType(QStringView key)
{
    fail(kWrongType, QStringLiteral("A value has the wrong type"), key);
}

void JsonReader::fail(int code, const QString &description, QStringView key)
{
    if (!m_failure)
        m_failure = Error{QStringLiteral("RecordJson"), code, description, key.toString()};
}
