#include "sweep/SweepFields.h"

#include "business/UnitAdapters.h"
#include "utils/NumberText.h"

#include <cmath>

using Adapters::FrequencyUnitAdapter;
using Adapters::PowerStepUnitAdapter;
using Adapters::PowerUnitAdapter;
using Adapters::TimeUnitAdapter;
using Field = RemoteSweepPanel::NumericField;

namespace {

constexpr int shownDecimals = 3;

// clang-format off
constexpr SweepField fields[] = {
    {Field::FrequencyStart, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Start Frequency"), FrequencyUnitAdapter::adapterType,
     nullptr, 1, 1e6, "125", -1, false, &SweepSettings::startHz},
    {Field::FrequencyStop, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Stop Frequency"), FrequencyUnitAdapter::adapterType,
     nullptr, 1, 1e6, "125", -1, false, &SweepSettings::stopHz},
    {Field::FrequencyStep, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Frequency Step"), FrequencyUnitAdapter::adapterType,
     nullptr, 1, 1e7, "", -1, true, &SweepSettings::stepHz},
    {Field::LevelStart, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Start Level"), PowerUnitAdapter::adapterType,
     "dBm", 1, 10, "", 2, false, &SweepSettings::startDbm},
    {Field::LevelStop, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Stop Level"), PowerUnitAdapter::adapterType,
     "dBm", 1, 10, "", 2, false, &SweepSettings::stopDbm},
    {Field::LevelStep, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Level Step"), PowerStepUnitAdapter::adapterType,
     "dB", 1, 10, "", 2, true, &SweepSettings::stepDb},
    {Field::Dwell, QT_TRANSLATE_NOOP("RemoteSweepPanel", "Dwell Time"), TimeUnitAdapter::adapterType,
     "ms", 1000, 0.001, "", 3, true, &SweepSettings::dwellSeconds},
};
// clang-format on

QString frequencyUnit(double hz)
{
    const double magnitude = std::abs(hz);
    if (magnitude >= 1e9) {
        return QStringLiteral("GHz");
    }
    if (magnitude >= 1e6) {
        return QStringLiteral("MHz");
    }
    return magnitude >= 1e3 ? QStringLiteral("kHz") : QStringLiteral("Hz");
}

} // namespace

const SweepField* sweepField(Field field)
{
    for (const SweepField& candidate : fields) {
        if (candidate.field == field) {
            return &candidate;
        }
    }
    return nullptr;
}

QString valueText(const SweepField& field, const SweepSettings& settings)
{
    const double value = settings.*field.value;
    if (!field.unit) {
        return Utils::normalizeFrequency(value, true, false);
    }
    return Utils::toString(value * field.unitsPerValue, shownDecimals, true) + QLatin1Char(' ') +
           QLatin1String(field.unit);
}

QString unitText(const SweepField& field, const SweepSettings& settings)
{
    return field.unit ? QString(QLatin1String(field.unit)) : frequencyUnit(settings.*field.value);
}
