#pragma once

#include "simulator/instrument/InstrumentLimits.h"
#include "simulator/instrument/Sweep.h"
#include "simulator/modulation/ModulationBank.h"

#include <QObject>

namespace Simulator {

// The simulated instrument: what it is set to, and within which limits. It knows neither link nor window.
class SignalGenerator final : public QObject
{
    Q_OBJECT

public:
    static constexpr double minimumHz = InstrumentLimits::minimumHz;
    static constexpr double maximumHz = InstrumentLimits::maximumHz;
    static constexpr double minimumDbm = InstrumentLimits::minimumDbm;
    static constexpr double maximumDbm = InstrumentLimits::maximumDbm;

    enum class Outcome { Done, NotOpen, OutOfRange };

    // waveformFolder: of the quick waveforms; empty for none.
    explicit SignalGenerator(const QString& waveformFolder = {}, QObject* parent = nullptr);

    [[nodiscard]] bool isOpen() const { return m_open; }
    [[nodiscard]] bool isRfOn() const { return m_rfOn; }
    [[nodiscard]] double centerHz() const { return m_centerHz; } // hertz, within the limits
    [[nodiscard]] double levelDbm() const { return m_levelDbm; } // dBm, within the limits

    [[nodiscard]] const SweepSnapshot& sweep() const { return m_sweep.record(); }

    // Closing switches RF off. A closed instrument keeps its settings and takes none.
    void setOpen(bool open);
    Outcome setRfOn(bool on);
    Outcome setCenterHz(double hz);
    Outcome setLevelDbm(double dbm);
    // The rules are those of Sweep; a closed instrument refuses with NOT_OPEN, or ignores the hand.
    [[nodiscard]] Verdict changeSweep(const SweepSettings& wanted, int expectedRevision);
    void turnSweep(const SweepTurn& turn);
    [[nodiscard]] const ModulationBank& modulation() const { return m_modulation; }
    // Switches that one on, or all off with an empty id; what cannot be is ignored.
    void turnModulation(const QString& id);
    // The rules are those of ModulationBank; a closed instrument refuses with NOT_OPEN.
    [[nodiscard]] Verdict changeModulation(const MinibarHelperProtocol::ModChangeRequest& wanted);

signals:
    // Once for every change; setting what is set already is none.
    void changed();

private:
    template <typename Value>
    Outcome take(Value& member, Value value);

    bool m_open = true;
    bool m_rfOn = false;
    double m_centerHz = 1e9;
    double m_levelDbm = -20;
    Sweep m_sweep;
    ModulationBank m_modulation;
};

} // namespace Simulator
