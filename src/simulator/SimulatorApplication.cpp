#include "simulator/SimulatorApplication.h"

#include "host/HelperProcess.h"
#include "simulator/LightLook.h"
#include "simulator/MainWindow.h"
#include "simulator/TrafficPrinter.h"
#include "simulator/modulation/SampleWaveforms.h"

#include <QApplication>

#include <cstdio>

namespace Simulator {

namespace {

constexpr int exitBadInput = 2;
constexpr int exitNeverReady = 3;

void printLine(FILE* file, const QString& text)
{
    std::fprintf(file, "%s\n", qUtf8Printable(text));
}

} // namespace

SimulatorApplication::SimulatorApplication(const SimulatorOptions& options, const Scenario& scenario)
    : m_options(options)
    , m_instrument(options.waveforms)
    , m_host(std::make_unique<HelperProcess>(options.helper))
    , m_desk(m_host, m_instrument, scenario)
    , m_timeline(m_host, m_desk, m_instrument, scenario.timeline)
    , m_session(m_host, options.exitAfterClose ? RestartSchedule::never() : RestartSchedule())
{
    scenario.initial.applyTo(m_instrument);
    if (options.printTraffic)
        new TrafficPrinter(m_host, stdout, this);
    if (options.window)
        buildWindow();
    connect(&m_host, &HelperHost::failed, this, [this] { onEnded(exitNeverReady); });
    connect(&m_host, &HelperHost::closed, this, [this] { onEnded(0); });
    connect(&m_signals, &TerminationSignals::received, this, &SimulatorApplication::quit);
}

SimulatorApplication::~SimulatorApplication() = default;

void SimulatorApplication::buildWindow()
{
    m_window = std::make_unique<MainWindow>(m_instrument);
    m_window->showStatus(m_session.status());
    connect(m_window.get(), &MainWindow::minimiseWanted, this, &SimulatorApplication::minimise);
    connect(m_window.get(), &MainWindow::closeRequested, this, &SimulatorApplication::quit);
    connect(&m_session, &MiniBarSession::statusChanged, m_window.get(), &MainWindow::showStatus);
    connect(&m_session, &MiniBarSession::mainWindowWanted, m_window.get(), [this](bool wanted) {
        if (!wanted)
            m_window->hide();
        else if (!m_quitting)
            m_window->bringBack();
    });
    connect(&m_desk, &RequestDesk::handled, m_window.get(), &MainWindow::addRequest);
}

void SimulatorApplication::begin()
{
    if (m_options.minimised) {
        m_session.minimise(m_options.anchor);
        return;
    }
    if (m_window)
        m_window->bringBack();
    m_session.start();
}

void SimulatorApplication::minimise()
{
    m_session.minimise(m_options.anchor ? m_options.anchor : std::make_optional(m_window->topRight()));
}

void SimulatorApplication::onEnded(int exitCode)
{
    if (m_quitting)
        QCoreApplication::quit();
    else if (m_options.exitAfterClose)
        QCoreApplication::exit(exitCode);
}

void SimulatorApplication::quit()
{
    if (m_quitting || m_host.state() == HelperHost::State::Idle) {
        QCoreApplication::quit();
        return;
    }
    m_quitting = true;
    m_host.sendShutdown();
}

int runSimulator(int& argc, char** argv)
{
    // A widgets program: the GL integration would only cost time and memory.
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"))
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("TarvinelSimulator"));
    QApplication::setQuitOnLastWindowClosed(false); // it goes on behind the mini bar

    SimulatorOptions options;
    QString text;
    const OptionsResult result = parseOptions(QCoreApplication::arguments(), options, text);
    if (result == OptionsResult::Help) {
        printLine(stdout, text);
        return 0;
    }
    Scenario scenario;
    if (result == OptionsResult::Invalid ||
        (!options.scenario.isEmpty() && !loadScenario(options.scenario, scenario, text))) {
        printLine(stderr, text);
        return exitBadInput;
    }
    QApplication::setPalette(lightPalette());
    application.setStyleSheet(lightStyleSheet());
    if (options.ownWaveforms)
        provideSampleWaveforms(options.waveforms);
    SimulatorApplication simulator(options, scenario);
    simulator.begin();
    return QCoreApplication::exec();
}

} // namespace Simulator
