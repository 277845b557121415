#include "simulator/SummaryTexts.h"

#include "simulator/SignalGenerator.h"

#include <QCoreApplication>

namespace Simulator {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

} // namespace

QString sweepSummary(const SignalGenerator& instrument)
{
    const SweepSettings& sweep = instrument.sweep().settings;
    const QString line = translated("%1 to %2\nstep %3, dwell %4");
    const QString dwell = quantityText(sweep.dwellSeconds, Unit::Seconds);
    switch (sweep.selectedPlanId) {
    case SweepPlanId::FrequencyScan:
        return line.arg(quantityText(sweep.startHz, Unit::Hertz), quantityText(sweep.stopHz, Unit::Hertz),
                        quantityText(sweep.stepHz, Unit::Hertz), dwell);
    case SweepPlanId::LevelScan:
        return line.arg(quantityText(sweep.startDbm, Unit::Dbm), quantityText(sweep.stopDbm, Unit::Dbm),
                        quantityText(sweep.stepDb, Unit::Decibel), dwell);
    case SweepPlanId::None:
    case SweepPlanId::Unsupported:
        break;
    }
    return translated("A plan that the mini bar cannot show");
}

QString modulationSummary(const SignalGenerator& instrument)
{
    const ModulationItem* item = instrument.modulation().enabledItem();
    return item ? QString(item->names().text) : translated("None");
}

} // namespace Simulator
