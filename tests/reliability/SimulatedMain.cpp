#include "reliability/SimulatedMain.h"

#include "host/HelperProcess.h"
#include "support/HelperProcess.h"

#include <cmath>

using namespace Simulator;

namespace {

QString waveforms()
{
    return TestSupport::stagePath() + QStringLiteral("/data");
}

int below(int limit, std::mt19937& random)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
}

double between(double low, double high, std::mt19937& random)
{
    return std::uniform_real_distribution<double>(low, high)(random);
}

void turnSweep(SignalGenerator& instrument, std::mt19937& random)
{
    SweepTurn turn;
    turn.enabled = !instrument.sweep().settings.enabled;
    turn.selectedPlanId = below(2, random) == 0 ? SweepPlanId::FrequencyScan : SweepPlanId::LevelScan;
    turn.dwellSeconds = between(0.001, 1, random);
    instrument.turnSweep(turn);
}

void turnModulation(SignalGenerator& instrument, std::mt19937& random)
{
    const auto& entries = instrument.modulation().entries();
    const int chosen = below(int(entries.size()) + 1, random);
    instrument.turnModulation(chosen == 0 ? QString() : entries[std::size_t(chosen - 1)].item->names().id);
}

} // namespace

SimulatedMain::SimulatedMain(const QStringList& program, const HelperTimeouts& timeouts, quint32 seed)
    : m_process(new ::HelperProcess(program.first(), program.mid(1)))
    , m_instrument(waveforms())
    , m_host(std::unique_ptr<HelperRunner>(m_process), timeouts)
    , m_desk(m_host, m_instrument, {})
    , m_random(seed)
{}

qint64 SimulatedMain::helperId() const
{
    return m_process->processId();
}

void SimulatedMain::moveState()
{
    turnSomething(m_instrument, m_random);
}

void turnSomething(SignalGenerator& instrument, std::mt19937& random)
{
    switch (below(8, random)) {
    case 0:
        turnSweep(instrument, random);
        break;
    case 1:
        turnModulation(instrument, random);
        break;
    case 2:
        instrument.setRfOn(!instrument.isRfOn());
        break;
    case 3:
    case 4:
        instrument.setLevelDbm(between(SignalGenerator::minimumDbm, SignalGenerator::maximumDbm, random));
        break;
    default:
        instrument.setCenterHz(
            std::round(between(SignalGenerator::minimumHz, SignalGenerator::maximumHz, random)));
        break;
    }
}
