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
    return kind == Kind::Integer ? stored.toInt() : stored.toDouble(fallback);
}

QString NumericField::text(const QJsonObject& state) const
{
    if (kind == Kind::Frequency) {
        return Utils::normalizeFrequency(value(state), true, false);
    }
    const double number = value(state);
    return Utils::toString(kind == Kind::NearestInteger ? nearestInteger(number) : number, decimals, true) +
           suffix;
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
    spec.describe(key, editor.tr(title, nullptr), value(state), step, decimals, isInteger);
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
