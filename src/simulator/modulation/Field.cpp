#include "simulator/modulation/Field.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace Simulator {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

Field plain(QLatin1String key, Field::Type type, const char* name, const QJsonValue& initial)
{
    return {key, type, {name, Unit::None, 0, 0}, initial, {}};
}

QString optionsText(const QJsonArray& options)
{
    QStringList words;
    for (const QJsonValue option : options)
        words += option.toVariant().toString();
    return words.join(QLatin1String(", "));
}

bool isTexts(const QJsonValue& value)
{
    const QJsonArray array = value.toArray();
    return value.isArray() && std::all_of(array.begin(), array.end(),
                                          [](const QJsonValue& element) { return element.isString(); });
}

bool isWhole(const QJsonValue& value)
{
    return value.isDouble() && value.toDouble() == std::floor(value.toDouble());
}

// What a value of this type must be; a null sentence when it is one.
const char* typeFault(const QJsonValue& value, const Field& field)
{
    switch (field.type) {
    case Field::Type::Number:
        return value.isDouble() ? nullptr : "The %1 must be a number.";
    case Field::Type::Integer:
        return isWhole(value) ? nullptr : "The %1 must be a whole number.";
    case Field::Type::Choice:
        return field.options.contains(value) ? nullptr : "The %1 must be one of: %2.";
    case Field::Type::Switch:
        return value.isBool() ? nullptr : "The %1 must be true or false.";
    case Field::Type::Text:
        return value.isString() ? nullptr : "The %1 must be a text.";
    case Field::Type::Texts:
        return isTexts(value) ? nullptr : "The %1 must be an array of texts.";
    case Field::Type::Fixed:
        return "The %1 cannot be set.";
    }
    return nullptr;
}

} // namespace

Field numberField(QLatin1String key, double initial, const Limits& limits)
{
    return {key, Field::Type::Number, limits, initial, {}};
}

Field integerField(QLatin1String key, double initial, const Limits& limits)
{
    return {key, Field::Type::Integer, limits, initial, {}};
}

Field choiceField(QLatin1String key, const char* name, const QJsonValue& initial, const QJsonArray& options)
{
    Field field = plain(key, Field::Type::Choice, name, initial);
    field.options = options;
    return field;
}

Field switchField(QLatin1String key, const char* name, bool initial)
{
    return plain(key, Field::Type::Switch, name, initial);
}

Field textField(QLatin1String key, const char* name)
{
    return plain(key, Field::Type::Text, name, QString());
}

Field textsField(QLatin1String key, const char* name)
{
    return plain(key, Field::Type::Texts, name, QJsonArray());
}

Field fixedField(QLatin1String key, const char* name, const QJsonValue& initial)
{
    return plain(key, Field::Type::Fixed, name, initial);
}

QString faultOf(const QJsonValue& value, const Field& field)
{
    if (const char* sentence = typeFault(value, field)) {
        QString text = translated(sentence).arg(translated(field.limits.name));
        if (field.type == Field::Type::Choice)
            text = text.arg(optionsText(field.options));
        return text;
    }
    const bool isNumber = field.type == Field::Type::Number || field.type == Field::Type::Integer;
    return isNumber ? faultOf(value.toDouble(), field.limits) : QString();
}

} // namespace Simulator
