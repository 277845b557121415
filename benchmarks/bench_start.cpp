// How long the helper takes from its start to READY on the wire, and to the painted bar when it is shown at
// once, beside a Qt program with one empty window on the same display and in the same environment
// (floor_window.cpp). All take turns; the eye is the same for all: a pixel of the screen.
#include "kit/Clocks.h"
#include "kit/HelperOnScreen.h"
#include "kit/ProcessFacts.h"
#include "kit/Report.h"

#include <QGuiApplication>

namespace {

constexpr double mostTimesTheFloor = 1.3;
constexpr double mostTimesTheDefault = 1.0;
constexpr double alarmFloor = 5;
constexpr double alarmDefault = 2.5;

struct Start
{
    double ready = 0;   // ms, as the others; READY has been said
    double visible = 0; // VISIBLE has been said
    double painted = 0; // and the window is seen
    double cpu = 0;     // processor time until then
};

Start startFloor(TimedDisplay& display, bool openGl, const QString& kind = QStringLiteral("window"))
{
    Start start;
    TimedProgram program(display.environment(openGl), floorPath());
    const Stopwatch clock;
    program.start({QStringLiteral("--only"), kind});
    require(display.waitForWindow(BarPlaces::rfCorner), "no window");
    start.painted = clock.ms();
    start.cpu = cpuMsOf(program.processId());
    program.stop();
    require(display.waitForScreen(BarPlaces::rfCorner), "the window stays");
    return start;
}

Start startHelper(TimedDisplay& display)
{
    Start start;
    TimedProgram helper(display.environment(), TestSupport::helperPath());
    const Stopwatch clock;
    helper.start();
    helper.waitForWord("READY", 0);
    start.ready = clock.ms();
    helper.main().sendLine("SHOW_MINIBAR", "900,100");
    helper.waitForWord("VISIBLE", 0);
    start.visible = clock.ms();
    require(display.waitForWindow(BarPlaces::rfCorner), "no bar");
    start.painted = clock.ms();
    start.cpu = cpuMsOf(helper.processId());
    helper.stop();
    require(display.waitForScreen(BarPlaces::rfCorner), "the bar stays");
    return start;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Report report(argc, argv, "Start");
    TimedDisplay display;
    enum Row { Floor, DefaultFloor, TextFloor, Ready, Visible, Painted };
    std::vector<Work> rows = {{"empty window, OpenGL integration off", {}},
                              {"empty window, Qt's defaults", {}},
                              {"window with one word, OpenGL integration off", {}},
                              {"helper, READY on the wire", {}},
                              {"helper, VISIBLE on the wire", {}},
                              {"helper, bar painted", {}}};
    std::vector<Work> cpu = {rows[Floor], rows[DefaultFloor], rows[TextFloor], rows[Painted]};
    const int rounds = report.pick(60, 9);
    startFloor(display, true); // whoever comes first pays for what all read from the disk
    startHelper(display);
    for (int round = 0; round < rounds; ++round) {
        const Start floor = startFloor(display, false);
        const Start defaultFloor = startFloor(display, true);
        const Start text = startFloor(display, false, QStringLiteral("text"));
        const Start helper = startHelper(display);
        rows[Floor].times.add(floor.painted);
        rows[DefaultFloor].times.add(defaultFloor.painted);
        rows[TextFloor].times.add(text.painted);
        rows[Ready].times.add(helper.ready);
        rows[Visible].times.add(helper.visible);
        rows[Painted].times.add(helper.painted);
        cpu[0].times.add(floor.cpu);
        cpu[1].times.add(defaultFloor.cpu);
        cpu[2].times.add(text.cpu);
        cpu[3].times.add(helper.cpu);
    }
    report.printTimes("From the start of the process, ms:", rows);
    report.printTimes("Its processor time until then, ms:", cpu);
    const double painted = rows[Painted].times.median();
    report.limit("painted / empty window, OpenGL integration off", painted / rows[Floor].times.median(),
                 mostTimesTheFloor);
    report.limit("painted / empty window, Qt's defaults", painted / rows[DefaultFloor].times.median(),
                 mostTimesTheDefault);
    report.watch("processor time / empty window, OpenGL integration off",
                 cpu[3].times.median() / cpu[0].times.median(), alarmFloor);
    report.watch("processor time / empty window, Qt's defaults",
                 cpu[3].times.median() / cpu[1].times.median(), alarmDefault);
    return report.finish();
}
