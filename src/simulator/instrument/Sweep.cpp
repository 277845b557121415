#include "simulator/instrument/Sweep.h"

#include "link/Keys.h"
#include "simulator/instrument/InstrumentLimits.h"

#include <QCoreApplication>

namespace Simulator {

namespace Errors = MinibarHelperProtocol::Errors;

namespace {

using namespace InstrumentLimits;

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

// The numbers of a plan that depend on each other.
struct Plan
{
    double SweepSettings::*start;
    double SweepSettings::*stop;
    double SweepSettings::*step;
    Unit unit;     // of start and stop
    Unit stepUnit; // of step and span
    const char* startName;
    const char* stopName;
    const char* stepName;
};

const Plan plans[] = {
    {&SweepSettings::startHz, &SweepSettings::stopHz, &SweepSettings::stepHz, Unit::Hertz, Unit::Hertz,
     "start frequency", "stop frequency", "frequency step"},
    {&SweepSettings::startDbm, &SweepSettings::stopDbm, &SweepSettings::stepDb, Unit::Dbm, Unit::Decibel,
     "start level", "stop level", "level step"},
};

// A span is a difference of decimals: 0.7 - 0.4 comes out below 0.3.
constexpr double roundingSlack = 1 + 1e-9;

QString faultOf(const SweepSettings& settings, const Plan& plan)
{
    const double start = settings.*plan.start;
    const double span = settings.*plan.stop - start;
    if (!(span > 0))
        return translated("The %1 must lie above the %2 (%3).")
            .arg(translated(plan.stopName), translated(plan.startName), quantityText(start, plan.unit));
    if (settings.*plan.step > span * roundingSlack)
        return translated("The %1 must not be larger than the span (%2).")
            .arg(translated(plan.stepName), quantityText(span, plan.stepUnit));
    return {};
}

bool offersSelectedPlan(const SweepSnapshot& record)
{
    const SweepPlanId selected = record.settings.selectedPlanId;
    return record.supportedPlanIds.contains(selected) ||
           (!record.available && selected == SweepPlanId::Unsupported);
}

} // namespace

const SweepLimit sweepLimits[sweepLimitCount] = {
    {&SweepSettings::startHz, {"start frequency", Unit::Hertz, minimumHz, maximumHz}},
    {&SweepSettings::stopHz, {"stop frequency", Unit::Hertz, minimumHz, maximumHz}},
    {&SweepSettings::stepHz, {"frequency step", Unit::Hertz, 1, maximumHz - minimumHz}},
    {&SweepSettings::startDbm, {"start level", Unit::Dbm, minimumDbm, maximumDbm}},
    {&SweepSettings::stopDbm, {"stop level", Unit::Dbm, minimumDbm, maximumDbm}},
    {&SweepSettings::stepDb, {"level step", Unit::Decibel, 0.01, maximumDbm - minimumDbm}},
    {&SweepSettings::dwellSeconds, {"dwell time", Unit::Seconds, 1e-6, 100}},
};

QString faultOf(const SweepSettings& settings)
{
    for (const SweepLimit& row : sweepLimits) {
        const QString fault = faultOf(settings.*row.member, row.limits);
        if (!fault.isEmpty())
            return fault;
    }
    for (const Plan& plan : plans) {
        const QString fault = faultOf(settings, plan);
        if (!fault.isEmpty())
            return fault;
    }
    return {};
}

SweepSettings turned(SweepSettings settings, const SweepTurn& turn)
{
    settings.enabled = turn.enabled.value_or(settings.enabled);
    settings.selectedPlanId = turn.selectedPlanId.value_or(settings.selectedPlanId);
    settings.dwellSeconds = turn.dwellSeconds.value_or(settings.dwellSeconds);
    if (turn.frequencyPlan) {
        settings.startHz = turn.frequencyPlan->startHz;
        settings.stopHz = turn.frequencyPlan->stopHz;
        settings.stepHz = turn.frequencyPlan->stepHz;
    }
    if (turn.levelPlan) {
        settings.startDbm = turn.levelPlan->startDbm;
        settings.stopDbm = turn.levelPlan->stopDbm;
        settings.stepDb = turn.levelPlan->stepDb;
    }
    return settings;
}

Verdict Sweep::change(const SweepSettings& wanted, int expectedRevision)
{
    if (!m_record.available)
        return Refusal{Errors::NOT_SUPPORTED, translated("The sweep cannot be changed now.")};
    if (expectedRevision != m_record.revision)
        return Refusal{Errors::CONFLICT, translated("The sweep has changed in the meantime.")};
    if (!m_record.supportedPlanIds.contains(wanted.selectedPlanId))
        return Refusal{Errors::NOT_SUPPORTED,
                       translated("The instrument does not offer the sweep plan '%1'.")
                           .arg(MinibarHelperProtocol::planWord(wanted.selectedPlanId))};
    const QString fault = faultOf(wanted);
    if (!fault.isEmpty())
        return Refusal{Errors::INVALID_ARG, fault};
    SweepSnapshot record = m_record;
    record.settings = wanted;
    take(record);
    return {};
}

void Sweep::turn(const SweepTurn& turn)
{
    SweepSnapshot record = m_record;
    record.available = turn.available.value_or(record.available);
    record.supportedPlanIds = turn.supportedPlanIds.value_or(record.supportedPlanIds);
    record.settings = turned(record.settings, turn);
    if (record.supportedPlanIds.isEmpty() || !faultOf(record.settings).isEmpty())
        return;
    if (!offersSelectedPlan(record))
        record.settings.selectedPlanId = record.supportedPlanIds.constFirst();
    take(record);
}

void Sweep::take(const SweepSnapshot& record)
{
    if (record == m_record)
        return;
    m_record = record;
    ++m_record.revision;
}

} // namespace Simulator
