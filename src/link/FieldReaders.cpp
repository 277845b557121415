#include "link/FieldReaders.h"

#include <QJsonValue>

#include <cmath>
#include <limits>

namespace MinibarHelperProtocol {

bool fail(QString* error, const QString& message)
{
    if (error != nullptr)
        *error = message;
    return false;
}

bool readBool(const QJsonObject& object, QLatin1String key, bool* target, QString* error)
{
    const QJsonValue value = object.value(key);
    if (!value.isBool())
        return fail(error, QStringLiteral("Expected boolean field '%1'.").arg(key));
    *target = value.toBool();
    return true;
}

bool readString(const QJsonObject& object, QLatin1String key, QString* target, QString* error)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        return fail(error, QStringLiteral("Expected string field '%1'.").arg(key));
    *target = value.toString();
    return true;
}

bool readArray(const QJsonObject& object, QLatin1String key, QJsonArray* target, QString* error)
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        return fail(error, QStringLiteral("Expected array field '%1'.").arg(key));
    *target = value.toArray();
    return true;
}

bool readFiniteNumber(const QJsonObject& object, QLatin1String key, double* target, QString* error)
{
    const QJsonValue value = object.value(key);
    if (!value.isDouble())
        return fail(error, QStringLiteral("Expected numeric field '%1'.").arg(key));
    const double number = value.toDouble();
    if (!std::isfinite(number))
        return fail(error, QStringLiteral("Field '%1' must be finite.").arg(key));
    *target = number;
    return true;
}

bool readPositiveInteger(const QJsonObject& object, QLatin1String key, int* target, QString* error)
{
    const QJsonValue value = object.value(key);
    if (!value.isDouble())
        return fail(error, QStringLiteral("Expected numeric field '%1'.").arg(key));
    const double number = value.toDouble();
    // Written so that NaN is refused and a number that no int can hold is never converted.
    if (!(number >= 1 && number <= std::numeric_limits<int>::max()) || std::trunc(number) != number)
        return fail(error, QStringLiteral("Field '%1' must be a positive integer.").arg(key));
    *target = static_cast<int>(number);
    return true;
}

} // namespace MinibarHelperProtocol
