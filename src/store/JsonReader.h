#pragma once

#include "base/Result.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>
#include <QStringView>
#include <optional>

/// Takes the typed values out of a record's JSON object one by one and remembers the first that is missing
/// or of the wrong type. A failed read answers an empty value; `finish` tells.
class JsonReader
{
public:
    explicit JsonReader(const QJsonObject &object);

    QString text(QStringView key);
    /// A JSON number without a fraction that fits.
    qint64 integer(QStringView key);
    /// Like `integer`, but an absent or null value is no failure.
    std::optional<qint64> optionalInteger(QStringView key);
    double real(QStringView key);
    QStringList texts(QStringView key);
    QList<QJsonObject> objects(QStringView key);

    /// `record`, or the first failure.
    template <typename Record> Result<Record> finish(const Record &record) const
    {
        if (m_failure)
            return *m_failure;
        return record;
    }

private:
    QJsonValue value(QStringView key);
    QJsonArray items(QStringView key, QJsonValue::Type type);
    void fail(int code, const QString &description, QStringView key);
    void failType(QStringView key);

    QJsonObject m_object;
    std::optional<Error> m_failure;
};
