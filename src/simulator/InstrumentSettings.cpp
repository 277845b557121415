#include "simulator/InstrumentSettings.h"

#include "link/Keys.h"
#include "simulator/CheckedObject.h"
#include "simulator/SignalGenerator.h"
#include "simulator/modulation/ModulationBank.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <algorithm>

namespace Simulator {

namespace Keys = MinibarHelperProtocol::Keys;

namespace {

const QLatin1String deviceOpenKey("deviceOpen");

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

// A number that must be there, within the limits of that sweep setting.
double readSweepNumber(CheckedObject& reader, QLatin1String key, double SweepSettings::*member)
{
    for (const SweepLimit& row : sweepLimits) {
        if (row.member != member)
            continue;
        if (!reader.contains(key))
            reader.fault(key, translated("is missing"));
        return reader.number(key, row.limits.minimum, row.limits.maximum).value_or(row.limits.minimum);
    }
    return 0;
}

SweepTurn::FrequencyPlan readFrequencyPlan(CheckedObject reader)
{
    const SweepTurn::FrequencyPlan plan{
        readSweepNumber(reader, Keys::startHz, &SweepSettings::startHz),
        readSweepNumber(reader, Keys::stopHz, &SweepSettings::stopHz),
        readSweepNumber(reader, Keys::stepHz, &SweepSettings::stepHz),
    };
    (void)reader.finish();
    return plan;
}

SweepTurn::LevelPlan readLevelPlan(CheckedObject reader)
{
    const SweepTurn::LevelPlan plan{
        readSweepNumber(reader, Keys::startDbm, &SweepSettings::startDbm),
        readSweepNumber(reader, Keys::stopDbm, &SweepSettings::stopDbm),
        readSweepNumber(reader, Keys::stepDb, &SweepSettings::stepDb),
    };
    (void)reader.finish();
    return plan;
}

QVector<SweepPlanId> readPlanIds(CheckedObject& reader)
{
    const QJsonArray words = reader.any(Keys::supportedPlanIds).toArray();
    QVector<SweepPlanId> plans;
    for (const QJsonValue word : words) {
        const SweepPlanId plan = MinibarHelperProtocol::planOfWord(word.toString());
        if ((plan == SweepPlanId::FrequencyScan || plan == SweepPlanId::LevelScan) && !plans.contains(plan))
            plans.append(plan);
    }
    if (plans.isEmpty() || plans.size() != words.size())
        reader.fault(Keys::supportedPlanIds,
                     translated("must be an array of '%1', '%2' or both")
                         .arg(MinibarHelperProtocol::Plans::fscan, MinibarHelperProtocol::Plans::lscan));
    return plans;
}

SweepPlanId readSelectedPlan(CheckedObject& reader)
{
    const SweepPlanId plan =
        MinibarHelperProtocol::planOfWord(reader.text(Keys::selectedPlanId).value_or(QString()));
    if (plan == SweepPlanId::None)
        reader.fault(Keys::selectedPlanId, translated("must be the word of a sweep plan"));
    return plan;
}

SweepTurn readSweep(const QJsonObject& object, const QString& path, QString& error)
{
    CheckedObject reader(object, path, error);
    const auto inner = [&](QLatin1String key) {
        return CheckedObject(reader.object(key).value_or(QJsonObject()), reader.pathOf(key), error);
    };
    SweepTurn turn;
    turn.available = reader.boolean(Keys::available);
    turn.enabled = reader.boolean(Keys::enabled);
    if (reader.contains(Keys::supportedPlanIds))
        turn.supportedPlanIds = readPlanIds(reader);
    if (reader.contains(Keys::selectedPlanId))
        turn.selectedPlanId = readSelectedPlan(reader);
    if (reader.contains(Keys::frequencyPlan))
        turn.frequencyPlan = readFrequencyPlan(inner(Keys::frequencyPlan));
    if (reader.contains(Keys::levelPlan))
        turn.levelPlan = readLevelPlan(inner(Keys::levelPlan));
    if (reader.contains(Keys::dwellSeconds))
        turn.dwellSeconds = readSweepNumber(reader, Keys::dwellSeconds, &SweepSettings::dwellSeconds);
    (void)reader.finish();
    const QString fault = faultOf(turned(SweepSettings(), turn));
    if (!fault.isEmpty())
        reader.fault(QString(), translated("is refused: %1").arg(fault.chopped(1)));
    return turn;
}

// The id of a modulation that can be switched on as it is, or an empty text for none.
QString readModulation(CheckedObject& reader)
{
    const QJsonValue value = reader.any(Keys::enabledBusinessId);
    const QString id = value.toString();
    const ModulationBank bank({});
    const auto canBeOn = [&id](const ModulationBank::Entry& entry) {
        return entry.item->names().id == id && entry.item->reasonToStayOff().isEmpty();
    };
    const bool isKnown = id.isEmpty() || std::any_of(bank.entries().cbegin(), bank.entries().cend(), canBeOn);
    if (!value.isString() || !isKnown)
        reader.fault(Keys::enabledBusinessId,
                     translated("must be the id of a modulation that needs no file, or empty"));
    return id;
}

} // namespace

InstrumentSettings readInstrumentSettings(const QJsonObject& object, const QString& path, QString& error)
{
    CheckedObject reader(object, path, error);
    InstrumentSettings settings;
    settings.deviceOpen = reader.boolean(deviceOpenKey);
    settings.rf = reader.boolean(Keys::rf);
    settings.centerHz = reader.number(Keys::centerHz, SignalGenerator::minimumHz, SignalGenerator::maximumHz);
    settings.levelDbm =
        reader.number(Keys::levelDbm, SignalGenerator::minimumDbm, SignalGenerator::maximumDbm);
    if (reader.contains(Keys::sweep))
        settings.sweep =
            readSweep(reader.object(Keys::sweep).value_or(QJsonObject()), reader.pathOf(Keys::sweep), error);
    if (reader.contains(Keys::enabledBusinessId))
        settings.enabledBusinessId = readModulation(reader);
    if (settings.deviceOpen == false && settings.rf == true)
        reader.fault(Keys::rf, translated("cannot be on while the instrument is closed"));
    (void)reader.finish();
    return settings;
}

void InstrumentSettings::applyTo(SignalGenerator& instrument) const
{
    // A closed instrument takes nothing: open it first, close it last.
    if (deviceOpen == true)
        instrument.setOpen(true);
    if (centerHz)
        instrument.setCenterHz(*centerHz);
    if (levelDbm)
        instrument.setLevelDbm(*levelDbm);
    if (sweep)
        instrument.turnSweep(*sweep);
    if (enabledBusinessId)
        instrument.turnModulation(*enabledBusinessId);
    if (rf)
        instrument.setRfOn(*rf);
    if (deviceOpen == false)
        instrument.setOpen(false);
}

} // namespace Simulator
