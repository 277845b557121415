#include "modeditors/NumericField.h"

#include "business/UnitAdapters.h"
#include "modeditors/contract/NumericFieldSpec.h"
#include "utils/NumberText.h"

#include <QMetaObject>
#include <cmath>

namespace {

constexpr double half = 0.5;

double nearestInteger(double value)
{
    const double below = std::floor(value);
    return value - below >= half ? below + 1 : below;
}

} // namespace

double NumericField::value(const QJsonObject& state) const
{
    const QJsonValue stored = state.value(key);
    switch (kind) {
    case Kind::Integer:
        return stored.toInt();
    case Kind::NearestInteger:
        return nearestInteger(stored.toDouble(fallback));
    case Kind::Frequency:
    case Kind::Number:
        break;
    }
    return stored.toDouble(fallback);
}

QString NumericField::text(const QJsonObject& state) const
{
    if (kind == Kind::Frequency) {
        return Utils::normalizeFrequency(value(state), true, false);
    }
    return Utils::toString(value(state), decimals, true) + suffix;
}

bool NumericField::isEditable(const QJsonObject& profile) const
{
    return conditionKey.isEmpty() || profile.value(conditionKey).toBool() == conditionValue;
}

NumericFieldSpec NumericField::spec(const QJsonObject& state, const QJsonObject& profile,
                                    const QMetaObject& editor) const
{
    NumericFieldSpec spec;
    const bool isInteger = kind == Kind::Integer || kind == Kind::NearestInteger;
    const double given = kind == Kind::NearestInteger ? state.value(key).toDouble(fallback) : value(state);
    spec.describe(key, editor.tr(title, nullptr), given, step, decimals, isInteger);
    if (kind == Kind::Frequency) {
        spec.unitType = Adapters::FrequencyUnitAdapter::adapterType();
    }
    spec.setMinimum(minimum);
    const double profileMaximum = maximumKey.isEmpty() ? 0 : profile.value(maximumKey).toDouble();
    if (profileMaximum > 0) {
        spec.setMaximum(profileMaximum);
    } else if (maximum) {
        spec.setMaximum(*maximum);
    }
    return spec;
}
