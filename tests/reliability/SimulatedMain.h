#pragma once

#include "host/HelperHost.h"
#include "simulator/RequestDesk.h"
#include "simulator/Scenario.h"
#include "simulator/SignalGenerator.h"

#include <QStringList>
#include <random>

class HelperProcess;

// The reference main process inside the test's own: a simulated generator whose state moves all the time, and
// a real helper that is told of it.
class SimulatedMain final
{
public:
    // `program` and its leading arguments start the helper; the same seed gives the same states.
    SimulatedMain(const QStringList& program, const HelperTimeouts& timeouts, quint32 seed);

    [[nodiscard]] HelperHost& host() { return m_host; }
    [[nodiscard]] Simulator::RequestDesk& desk() { return m_desk; }
    [[nodiscard]] Simulator::SignalGenerator& instrument() { return m_instrument; }
    // 0 while none runs.
    [[nodiscard]] qint64 helperId() const;
    // Changes something, of which the helper gets a snapshot.
    void moveState();

private:
    HelperProcess* m_process; // owned by the host
    Simulator::SignalGenerator m_instrument;
    HelperHost m_host;
    Simulator::RequestDesk m_desk;
    std::mt19937 m_random;
};

// Turns something of the instrument at random, as a user at its own panel would; always a change.
void turnSomething(Simulator::SignalGenerator& instrument, std::mt19937& random);
