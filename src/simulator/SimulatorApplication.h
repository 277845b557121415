#pragma once

#include "host/HelperHost.h"
#include "simulator/MiniBarSession.h"
#include "simulator/RequestDesk.h"
#include "simulator/Scenario.h"
#include "simulator/ScenarioTimeline.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/TerminationSignals.h"

#include <QObject>

#include <memory>

namespace Simulator {

class MainWindow;

// The whole program behind its command line: instrument, host, scenario and main window, wired.
class SimulatorApplication final : public QObject
{
    Q_OBJECT

public:
    // Needs a QApplication.
    SimulatorApplication(const SimulatorOptions& options, const Scenario& scenario);
    ~SimulatorApplication() override;

    void begin();

private:
    void buildWindow();
    void minimise();
    void onEnded(int exitCode);
    // Ends the helper, then the program; at once when asked a second time.
    void quit();

    SimulatorOptions m_options;
    SignalGenerator m_instrument;
    HelperHost m_host;
    RequestDesk m_desk;
    ScenarioTimeline m_timeline;
    MiniBarSession m_session;
    TerminationSignals m_signals;
    std::unique_ptr<MainWindow> m_window;
    bool m_quitting = false;
};

// Reads the command line, runs the program and gives its exit code: 0; 2 for a bad command line or scenario;
// 3 with
// --exit-after-close when the mini bar never became ready.
[[nodiscard]] int runSimulator(int& argc, char** argv);

} // namespace Simulator
