#include "simulator/SignalGenerator.h"

#include "link/Keys.h"
#include "simulator/ErrorTexts.h"

namespace Simulator {

namespace {

// A NaN lies nowhere.
bool liesWithin(double value, double minimum, double maximum)
{
    return value >= minimum && value <= maximum;
}

Refusal notOpen()
{
    const QString code = MinibarHelperProtocol::Errors::NOT_OPEN;
    return {code, errorText(code)};
}

} // namespace

SignalGenerator::SignalGenerator(const QString& waveformFolder, QObject* parent)
    : QObject(parent)
    , m_modulation(waveformFolder)
{
    connect(&m_modulation, &ModulationBank::changed, this, &SignalGenerator::changed);
}

template <typename Value>
SignalGenerator::Outcome SignalGenerator::take(Value& member, Value value)
{
    if (!m_open)
        return Outcome::NotOpen;
    if (member != value) {
        member = value;
        emit changed();
    }
    return Outcome::Done;
}

void SignalGenerator::setOpen(bool open)
{
    if (m_open == open)
        return;
    m_open = open;
    m_rfOn = false;
    emit changed();
}

SignalGenerator::Outcome SignalGenerator::setRfOn(bool on)
{
    return take(m_rfOn, on);
}

SignalGenerator::Outcome SignalGenerator::setCenterHz(double hz)
{
    return liesWithin(hz, minimumHz, maximumHz) ? take(m_centerHz, hz) : Outcome::OutOfRange;
}

SignalGenerator::Outcome SignalGenerator::setLevelDbm(double dbm)
{
    return liesWithin(dbm, minimumDbm, maximumDbm) ? take(m_levelDbm, dbm) : Outcome::OutOfRange;
}

Verdict SignalGenerator::changeSweep(const SweepSettings& wanted, int expectedRevision)
{
    if (!m_open)
        return notOpen();
    const int before = sweep().revision;
    const Verdict verdict = m_sweep.change(wanted, expectedRevision);
    if (sweep().revision != before)
        emit changed();
    return verdict;
}

Verdict SignalGenerator::changeModulation(const MinibarHelperProtocol::ModChangeRequest& wanted)
{
    return m_open ? m_modulation.change(wanted) : notOpen();
}

void SignalGenerator::turnModulation(const QString& id)
{
    MinibarHelperProtocol::ModChangeRequest wanted;
    wanted.businessId = id.isEmpty() ? m_modulation.enabledId() : id;
    wanted.hasEnabled = true;
    wanted.enabled = !id.isEmpty();
    (void)changeModulation(wanted);
}

void SignalGenerator::turnSweep(const SweepTurn& turn)
{
    if (!m_open)
        return;
    const int before = sweep().revision;
    m_sweep.turn(turn);
    if (sweep().revision != before)
        emit changed();
}

} // namespace Simulator
