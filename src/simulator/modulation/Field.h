#pragma once

#include "simulator/instrument/Limits.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QLatin1String>
#include <QVector>

namespace Simulator {

// One key of an editor's state and what may be put there.
struct Field
{
    enum class Type {
        Number,  // within the limits
        Integer, // the same, without a fraction
        Choice,  // one of the options
        Switch,  // true or false
        Text,    // a text
        Texts,   // an array of texts
        Fixed    // shown only
    };

    QLatin1String key;
    Type type;
    Limits limits; // of a field that is no number only the name counts
    QJsonValue initial;
    QJsonArray options;
};
using FieldTable = QVector<Field>;

[[nodiscard]] Field numberField(QLatin1String key, double initial, const Limits& limits);
[[nodiscard]] Field integerField(QLatin1String key, double initial, const Limits& limits);
[[nodiscard]] Field choiceField(QLatin1String key, const char* name, const QJsonValue& initial,
                                const QJsonArray& options);
[[nodiscard]] Field switchField(QLatin1String key, const char* name, bool initial);
[[nodiscard]] Field textField(QLatin1String key, const char* name);
[[nodiscard]] Field textsField(QLatin1String key, const char* name);
[[nodiscard]] Field fixedField(QLatin1String key, const char* name, const QJsonValue& initial);

// The sentence that refuses the value; empty when it can be put there. The limits and options of the moment
// stand for those of the field.
[[nodiscard]] QString faultOf(const QJsonValue& value, const Field& field);

} // namespace Simulator
