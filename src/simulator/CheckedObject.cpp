#include "simulator/CheckedObject.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

namespace Simulator {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

} // namespace

CheckedObject::CheckedObject(const QJsonObject& object, const QString& path, QString& error)
    : m_object(object)
    , m_path(path)
    , m_error(error)
{}

std::optional<bool> CheckedObject::boolean(QLatin1String key)
{
    const QJsonValue value = any(key);
    if (value.isBool())
        return value.toBool();
    if (!value.isUndefined())
        fault(key, translated("must be true or false"));
    return std::nullopt;
}

std::optional<double> CheckedObject::number(QLatin1String key, double minimum, double maximum)
{
    const QJsonValue value = any(key);
    if (value.isUndefined())
        return std::nullopt;
    if (value.isDouble() && value.toDouble() >= minimum && value.toDouble() <= maximum)
        return value.toDouble();
    fault(key, translated("must be a number from %1 to %2")
                   .arg(QString::number(minimum, 'g', 12), QString::number(maximum, 'g', 12)));
    return std::nullopt;
}

std::optional<int> CheckedObject::integer(QLatin1String key, int minimum)
{
    const QJsonValue value = any(key);
    if (value.isUndefined())
        return std::nullopt;
    const double number = value.toDouble();
    if (value.isDouble() && number == std::floor(number) && number >= minimum &&
        number <= std::numeric_limits<int>::max())
        return static_cast<int>(number);
    fault(key, translated("must be a whole number from %1 up").arg(minimum));
    return std::nullopt;
}

std::optional<QString> CheckedObject::text(QLatin1String key)
{
    const QJsonValue value = any(key);
    if (value.isString() && !value.toString().isEmpty())
        return value.toString();
    if (!value.isUndefined())
        fault(key, translated("must be a text that is not empty"));
    return std::nullopt;
}

std::optional<QJsonObject> CheckedObject::object(QLatin1String key)
{
    const QJsonValue value = any(key);
    if (value.isObject())
        return value.toObject();
    if (!value.isUndefined())
        fault(key, translated("must be an object"));
    return std::nullopt;
}

QJsonValue CheckedObject::any(QLatin1String key)
{
    m_known.append(key);
    return m_object.value(key);
}

bool CheckedObject::flag(QLatin1String key)
{
    const QJsonValue value = any(key);
    if (value.isUndefined())
        return false;
    if (value != QJsonValue(true))
        fault(key, translated("can only be true"));
    return true;
}

void CheckedObject::fault(const QString& key, const QString& sentence)
{
    if (m_error.isEmpty())
        m_error = translated("%1: %2.").arg(pathOf(key), sentence);
}

QString CheckedObject::pathOf(const QString& key) const
{
    return m_path.isEmpty() || key.isEmpty() ? QString(m_path + key)
                                             : QString(m_path + QLatin1Char('.') + key);
}

bool CheckedObject::finish()
{
    for (auto it = m_object.begin(); it != m_object.end(); ++it) {
        if (!m_known.contains(it.key()))
            fault(it.key(), translated("is not a known key"));
    }
    return m_error.isEmpty();
}

} // namespace Simulator
