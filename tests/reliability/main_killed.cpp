// main_killed [--times N]
// Kills the real main process (SIGKILL) at every point of a session, N times each, and looks what becomes of
// the helper: gone within a second, by itself, with exit code 0 and without a core file.

#include "reliability/MainSession.h"
#include "reliability/Report.h"
#include "support/Waiting.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <csignal>
#include <sys/wait.h>

using namespace TestSupport;

namespace {

const QByteArray plain = "{}";
const QByteArray silent = R"({"rules":[{"cmd":"*","silence":true}]})";
// Answered by a line that no socket takes at once, and late enough for the helper to be stopped before.
const QByteArray longLine =
    R"({"rules":[{"cmd":"*","delayMs":100,"raw":"EVT )" + QByteArray(4'000'000, 'x') + R"("}]})";
const QByteArray playerOnly = R"({"overlay":{"mod":{"businesses":[
    {"id":"p","name":"Player","text":"Player","editorKind":"playback","revision":1}]}}})";
const QString sweep = QStringLiteral("Sweep");
const QString menu = QStringLiteral("menu");

bool ready(MainSession& session)
{
    return session.waitForLine("helper READY");
}

bool shown(MainSession& session)
{
    return session.waitForLine("helper VISIBLE") && session.bar().attach(session.helperId());
}

bool expanded(MainSession& session)
{
    return shown(session) && session.bar().expand();
}

bool requestOpen(MainSession& session)
{
    return shown(session) && session.bar().click(session.bar().centre(BarView::Rf)) &&
           session.waitForLine("helper REQ");
}

// The helper goes on only when the main process is dead.
bool midLine(MainSession& session)
{
    return requestOpen(session) && ::kill(pid_t(session.helperId()), SIGSTOP) == 0 &&
           session.waitForLine("main   EVT x");
}

bool keypadOpen(MainSession& session)
{
    return expanded(session) && session.bar().openKeypad(BarView::Frequency);
}

bool sweepOpen(MainSession& session)
{
    return expanded(session) && session.bar().click(session.bar().centre(BarView::Sweep)) &&
           session.bar().waitForBeside({sweep});
}

bool fieldKeypadOpen(MainSession& session)
{
    const QString field = QStringLiteral("Stop Frequency");
    return sweepOpen(session) &&
           session.bar().click(session.bar().control(sweep, QStringLiteral("push button"), field).center()) &&
           session.bar().waitForKeyboard(field);
}

bool dropDownOpen(MainSession& session)
{
    const QRect plans = sweepOpen(session) ? session.bar().control(sweep, QStringLiteral("combo box"),
                                                                   QStringLiteral("Sweep Type"))
                                           : QRect();
    return session.bar().click(plans.center()) &&
           session.bar().waitForBeside({sweep, QStringLiteral("drop-down")});
}

bool menuOpen(MainSession& session)
{
    return expanded(session) && session.bar().click(session.bar().centre(BarView::Mod)) &&
           session.bar().waitForBeside({menu});
}

bool editorOpen(MainSession& session)
{
    return menuOpen(session) && session.bar().desktop().key(QStringLiteral("Down")) &&
           session.bar().desktop().key(QStringLiteral("Return")) && waitUntil([&] {
               const QStringList things = session.bar().shownBeside();
               return things.size() == 1 && things.first() != menu;
           });
}

bool chooserOpen(MainSession& session)
{
    const QString popup = QStringLiteral("Player");
    const QString chooser = QStringLiteral("Select WAV/ARB file");
    return editorOpen(session) &&
           session.bar().click(session.bar()
                                   .control(popup, QStringLiteral("push button"), QStringLiteral("Load"))
                                   .center()) &&
           waitUntil([&] { return session.bar().shownBeside().contains(chooser); });
}

bool dragging(MainSession& session)
{
    const Desktop& desktop = session.bar().desktop();
    if (!shown(session))
        return false;
    const QPoint grip = session.bar().centre(BarView::Level);
    const QRect before = session.bar().geometry();
    return desktop.press(grip) && desktop.moveTo(grip + QPoint(-40, 30)) &&
           desktop.moveTo(grip + QPoint(-80, 60)) &&
           waitUntil([&] { return session.bar().geometry() == before.translated(-80, 60); });
}

struct Point
{
    const char* name;
    const QByteArray& scenario;
    bool (*reach)(MainSession&);
};

const Point points[] = {
    {"the helper starts", plain, nullptr},
    {"ready", plain, ready},
    {"bar shown", plain, shown},
    {"request open", silent, requestOpen},
    {"in the middle of a line", longLine, midLine},
    {"keypad open", plain, keypadOpen},
    {"sweep popup open", plain, sweepOpen},
    {"keypad of a field open", plain, fieldKeypadOpen},
    {"drop-down open", plain, dropDownOpen},
    {"menu open", plain, menuOpen},
    {"modulation popup open", plain, editorOpen},
    {"file chooser open", playerOnly, chooserOpen},
    {"bar being dragged", plain, dragging},
};

// What has come of one point so far.
struct Outcome
{
    int times = 0;
    double slowest = 0; // ms until the helper was gone
    QStringList faults;
};

// Lets so much of the start pass that every moment of the handshake is met in the long run.
void passTime(int time)
{
    constexpr int steps = 25;
    constexpr int stepMilliseconds = 2;
    QElapsedTimer clock;
    clock.start();
    (void)waitUntil([&] { return clock.hasExpired(time % steps * stepMilliseconds); });
}

void judge(Outcome& outcome, MainSession& session, bool isStarting)
{
    constexpr double second = 1000; // ms
    session.killMain();
    ::kill(pid_t(session.helperId()), SIGCONT);
    const auto end = session.helperEnd();
    if (!end) {
        outcome.faults += QStringLiteral("the helper stays");
        return;
    }
    outcome.slowest = qMax(outcome.slowest, end->milliseconds);
    if (end->milliseconds > second)
        outcome.faults += QStringLiteral("the helper stayed too long");
    if (!WIFEXITED(end->status))
        outcome.faults += QStringLiteral("signal %1").arg(WTERMSIG(end->status));
    else if (WEXITSTATUS(end->status) != 0 && !(isStarting && WEXITSTATUS(end->status) > 1))
        outcome.faults += QStringLiteral("exit code %1").arg(WEXITSTATUS(end->status));
    if (!session.cores().isEmpty())
        outcome.faults += QStringLiteral("a core file");
}

void perform(const Point& point, Outcome& outcome, const PrivateDisplay& display,
             const Accessibility& accessibility)
{
    MainSession session(display, accessibility);
    if (!session.begin(point.scenario)) {
        outcome.faults += QStringLiteral("no start");
        return;
    }
    if (point.reach == nullptr)
        passTime(outcome.times);
    else if (!point.reach(session))
        outcome.faults += QStringLiteral("the point was not reached");
    judge(outcome, session, point.reach == nullptr);
    (void)session.bar().desktop().release(); // of the drag
    ++outcome.times;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption times(QStringLiteral("times"), QStringLiteral("How often at each point."),
                                   QStringLiteral("number"), QStringLiteral("1"));
    parser.addOption(times);
    parser.process(application);

    MainSession::adoptOrphans();
    PrivateDisplay display;
    Accessibility accessibility(display);
    if (!display.start() || !accessibility.start()) {
        qCritical("No desktop: %s%s", qPrintable(display.errorString()),
                  qPrintable(accessibility.errorString()));
        return 2;
    }
    Report report;
    const int wanted = parser.value(times).toInt();
    for (const Point& point : points) {
        Outcome outcome;
        while (outcome.times < wanted && outcome.faults.isEmpty())
            perform(point, outcome, display, accessibility);
        report.check(QStringLiteral("main process killed, ") + QLatin1String(point.name),
                     outcome.faults.isEmpty() && outcome.times > 0,
                     QStringLiteral("%1 times, helper gone after %2 ms at most %3")
                         .arg(outcome.times)
                         .arg(outcome.slowest, 0, 'f', 0)
                         .arg(outcome.faults.join(QStringLiteral(", "))));
    }
    return report.exitCode();
}
