// helper_faults [--times N]
// Kills, stops and slows the real helper of the reference main process, whose window, log and event loop are
// looked at: the fault is told, the helper comes again after a growing pause, and the window never stands
// still.

#include "reliability/LogWatch.h"
#include "reliability/Report.h"
#include "reliability/SimulatedMain.h"
#include "reliability/TurnClock.h"
#include "simulator/MainWindow.h"
#include "simulator/MiniBarSession.h"
#include "support/HelperProcess.h"
#include "support/Processes.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLabel>
#include <QTimer>
#include <csignal>

using namespace std::chrono_literals;
using namespace TestSupport;

namespace {

// As the usual ones, in shorter spans.
const RestartSchedule schedule{{50ms, 100ms, 200ms, 400ms}, 60s};

HelperTimeouts shortTimeouts()
{
    HelperTimeouts timeouts;
    timeouts.question = 100ms;
    timeouts.acknowledge = 400ms;
    timeouts.silence = 1500ms;
    timeouts.terminate = 200ms;
    return timeouts;
}

// The longest turn of the event loop since the start.
class TurnWatch final
{
public:
    TurnWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_longest = qMax(m_longest, m_clock.milliseconds() - interval);
            m_clock.start();
        });
        m_timer.start(interval);
    }
    [[nodiscard]] double longest() const { return m_longest; }

private:
    static constexpr int interval = 5; // ms
    QTimer m_timer;
    TurnClock m_clock;
    double m_longest = 0;
};

// The main process with its window, as the program wires them.
struct Bench
{
    Bench()
        : main({helperPath()}, shortTimeouts(), 1)
        , session(main.host(), schedule)
        , window(main.instrument())
    {
        QObject::connect(&session, &Simulator::MiniBarSession::statusChanged, &window,
                         &Simulator::MainWindow::showStatus);
        QObject::connect(&session, &Simulator::MiniBarSession::mainWindowWanted, &window,
                         &QWidget::setVisible);
        window.show();
        session.start();
    }

    [[nodiscard]] bool shows(const QString& text) const
    {
        return waitUntil(
            [&] { return window.findChild<QLabel*>(QStringLiteral("statusLine"))->text().contains(text); });
    }
    [[nodiscard]] bool becomesReady() { return shows(QStringLiteral("The mini bar is ready.")); }
    [[nodiscard]] bool showBar()
    {
        session.minimise(std::nullopt);
        return shows(QStringLiteral("The mini bar is shown.")) && !window.isVisible();
    }
    // The main window says that the bar does not answer, and stands there again.
    [[nodiscard]] bool noticesSilence()
    {
        return shows(QStringLiteral("does not answer")) && window.isVisible();
    }
    void signalHelper(int number) const { ::kill(pid_t(main.helperId()), number); }
    // Another helper than this one gets ready.
    [[nodiscard]] bool comesAgain(qint64 before)
    {
        return becomesReady() && main.helperId() != before && !isRunning(before);
    }

    SimulatedMain main;
    Simulator::MiniBarSession session;
    Simulator::MainWindow window;
};

// Ends in the middle of nothing, again and again: the pauses grow up to the last one and stay there.
QString killed(int times)
{
    Bench bench;
    for (int i = 0; i < times + int(schedule.pauses.size()); ++i) {
        if (!bench.becomesReady() || !bench.showBar())
            return QStringLiteral("no bar");
        const qint64 before = bench.main.helperId();
        const auto pause = schedule.pauses[qMin(std::size_t(i), schedule.pauses.size() - 1)];
        bench.signalHelper(SIGKILL);
        const QString told = QStringLiteral("It crashed. The mini bar starts again in %1 s.")
                                 .arg(double(pause.count()) / 1000);
        if (!bench.shows(told) || !bench.window.isVisible())
            return QStringLiteral("not told: ") + told;
        QElapsedTimer clock;
        clock.start();
        if (!bench.comesAgain(before))
            return QStringLiteral("no other helper");
        if (clock.elapsed() < pause.count() - 20)
            return QStringLiteral("back after %1 ms already").arg(clock.elapsed());
    }
    const int told = LogWatch::count(QStringLiteral("It crashed."));
    return told == times + int(schedule.pauses.size()) ? QString() : QStringLiteral("%1 sentences").arg(told);
}

QString stopped(int times)
{
    Bench bench;
    for (int i = 0; i < times; ++i) {
        if (!bench.becomesReady() || !bench.showBar())
            return QStringLiteral("no bar");
        const qint64 before = bench.main.helperId();
        bench.signalHelper(SIGSTOP);
        if (!bench.noticesSilence())
            return QStringLiteral("not noticed");
        if (!bench.shows(QStringLiteral("The helper did not answer. The mini bar starts again")))
            return QStringLiteral("not ended");
        if (!bench.comesAgain(before))
            return QStringLiteral("no other helper");
    }
    return {};
}

QString stoppedAndContinued(int times)
{
    Bench bench;
    for (int i = 0; i < times; ++i) {
        if (!bench.becomesReady() || !bench.showBar())
            return QStringLiteral("no bar");
        const qint64 before = bench.main.helperId();
        bench.signalHelper(SIGSTOP);
        const bool noticed = bench.noticesSilence();
        bench.signalHelper(SIGCONT);
        if (!noticed || !bench.becomesReady())
            return QStringLiteral("not noticed, or not come back");
        if (bench.main.helperId() != before)
            return QStringLiteral("another helper");
        if (!bench.window.isVisible() || bench.main.host().bar() != HelperHost::Bar::Hidden)
            return QStringLiteral("bar and window side by side");
    }
    return {};
}

// Runs a tenth of the time, under a hundred states a second.
QString slowed(int times)
{
    Bench bench;
    if (!bench.becomesReady() || !bench.showBar())
        return QStringLiteral("no bar");
    const qint64 before = bench.main.helperId();
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        bench.signalHelper(++turns % 10 == 0 ? SIGCONT : SIGSTOP);
        bench.main.moveState();
    });
    timer.start(10ms);
    const bool slow = waitUntil([&] { return turns >= 150 * times; }, 10'000 * times);
    timer.stop();
    bench.signalHelper(SIGCONT);
    bench.session.restore();
    if (!slow || !bench.becomesReady())
        return QStringLiteral("not come back");
    return bench.main.helperId() == before ? QString() : QStringLiteral("another helper");
}

// A stopped helper and states without end: what waits for it stays small.
QString flooded(int times)
{
    constexpr qint64 limit = 16 * 1024; // KiB
    Bench bench;
    const qint64 memory = factsOf(QCoreApplication::applicationPid())->memory;
    qint64 most = memory;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        constexpr int atOnce = 20;
        for (int i = 0; i < atOnce; ++i)
            bench.main.moveState();
        most = qMax(most, factsOf(QCoreApplication::applicationPid())->memory);
    });
    for (int i = 0; i < times; ++i) {
        if (!bench.becomesReady() || !bench.showBar())
            return QStringLiteral("no bar");
        const qint64 before = bench.main.helperId();
        bench.signalHelper(SIGSTOP);
        timer.start(5ms);
        const bool ended = bench.shows(QStringLiteral("The mini bar starts again"));
        timer.stop();
        if (!ended || !bench.comesAgain(before))
            return QStringLiteral("not ended, or not come again");
    }
    return most - memory < limit ? QString() : QStringLiteral("%1 KiB more").arg(most - memory);
}

struct Fault
{
    const char* name;
    QString (*perform)(int times); // what went wrong
};

constexpr Fault faults[] = {
    {"helper killed", killed},
    {"helper stopped", stopped},
    {"helper stopped for a while", stoppedAndContinued},
    {"helper slowed", slowed},
    {"helper stopped under a flood of states", flooded},
};

} // namespace

int main(int argc, char* argv[])
{
    constexpr double longestTurn = 100; // ms
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption times(QStringLiteral("times"), QStringLiteral("How often each fault."),
                                   QStringLiteral("number"), QStringLiteral("1"));
    parser.addOption(times);
    parser.process(application);

    Report report;
    for (const Fault& fault : faults) {
        QString wrong;
        const auto perform = [&] {
            const LogWatch log;
            const TurnWatch turns;
            wrong = fault.perform(qMax(1, parser.value(times).toInt()));
            if (!wrong.isEmpty())
                qInfo("%s", qPrintable(LogWatch::lines().join(QLatin1Char('\n'))));
            return turns.longest();
        };
        double longest = perform();
        if (wrong.isEmpty() && longest >= longestTurn) // a disk that stalls does so once, a fault always
            longest = perform();
        report.check(QLatin1String(fault.name), wrong.isEmpty() && longest < longestTurn,
                     QStringLiteral("longest turn of the window's event loop %1 ms %2")
                         .arg(longest, 0, 'f', 1)
                         .arg(wrong));
    }
    return report.exitCode();
}
