#include "minibar/KeyboardConfig.h"

#include "business/UnitAdapters.h"
#include "minibar/BarStatus.h"
#include "modeditors/contract/NumericFieldSpec.h"

using Config = PropertyBindingHelper::NumericKeyboardConfig;
using Field = RemoteSweepPanel::NumericField;

namespace {

constexpr double centerStep = 1e6; // Hz
constexpr double levelStep = 5.0;  // dB

// The smallest step that counts as one, in the field's unit.
double smallestPositive(Field field)
{
    switch (field) {
    case Field::FrequencyStep:
        return 1.0; // Hz
    case Field::LevelStep:
        return 1e-6; // dB
    default:
        return 1e-12; // s
    }
}

} // namespace

Config frequencyKeyboardConfig(const BarStatus& status)
{
    Config config;
    config.title = BarStatus::tr("Frequency");
    config.adapterType = Adapters::OutputFrequencyUnitAdapter::adapterType();
    config.value = status.centerHz;
    config.step = centerStep;
    config.unitText = status.centerUnit;
    return config;
}

Config levelKeyboardConfig(const BarStatus& status)
{
    Config config;
    config.title = BarStatus::tr("Level");
    config.adapterType = Adapters::PowerUnitAdapter::adapterType();
    config.value = status.levelDbm;
    config.step = levelStep;
    config.unitText = status.levelUnit;
    return config;
}

Config sweepKeyboardConfig(const RemoteSweepPanel& panel, Field field)
{
    Config config;
    config.title = panel.fieldTitle(field);
    config.adapterType = panel.fieldAdapterType(field);
    config.value = panel.fieldValue(field);
    config.step = panel.fieldStep(field);
    if (panel.fieldRequiresPositive(field))
        config.minimum = smallestPositive(field);
    if (panel.fieldDecimals(field) >= 0)
        config.decimals = panel.fieldDecimals(field);
    config.unitText = panel.fieldUnitText(field);
    config.auxText = panel.fieldAuxText(field);
    return config;
}

Config modKeyboardConfig(const NumericFieldSpec& spec)
{
    Config config;
    config.title = spec.title;
    config.adapterType = spec.unitType;
    config.value = spec.value;
    if (spec.hasStep)
        config.step = spec.step;
    if (spec.hasMinimum)
        config.minimum = spec.minimum;
    if (spec.hasMaximum)
        config.maximum = spec.maximum;
    if (spec.decimals >= 0)
        config.decimals = spec.decimals;
    config.integerOnly = spec.integerOnly;
    config.unitText = spec.unitText;
    config.auxText = spec.auxText;
    return config;
}
