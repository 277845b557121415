// How long it takes from SHOW_MINIBAR, handed to the socket, to VISIBLE and to the painted bar, and from
// HIDE_MINIBAR to HIDDEN; beside the window of the floor program, which shows and hides on a word through the
// same sort of socket.
#include "kit/Clocks.h"
#include "kit/HelperOnScreen.h"
#include "kit/Report.h"
#include "kit/TypicalSnapshot.h"

#include <QGuiApplication>
#include <algorithm>

namespace {

constexpr double mostMs = 16; // one frame
constexpr double alarmTimesTheFloor = 12;
constexpr double leastFloor = 1; // ms: below that, what a busy machine does to both counts for more

struct Rows
{
    std::vector<Work> all = {{"helper, VISIBLE on the wire", {}},
                             {"helper, VISIBLE and painted", {}},
                             {"helper, HIDDEN on the wire", {}},
                             {"floor, painted", {}}};
};

void showHelper(TimedDisplay& display, TimedProgram& helper, Rows& rows)
{
    auto& main = helper.main();
    const int shown = main.count("VISIBLE");
    const Stopwatch clock;
    main.sendLine("SHOW_MINIBAR", "900,100");
    helper.waitForWord("VISIBLE", shown);
    rows.all[0].times.add(clock.ms());
    require(display.waitForWindow(BarPlaces::rfCorner), "no bar");
    rows.all[1].times.add(clock.ms());
    const int hidden = main.count("HIDDEN");
    const Stopwatch hiding;
    main.sendLine("HIDE_MINIBAR");
    helper.waitForWord("HIDDEN", hidden);
    rows.all[2].times.add(hiding.ms());
    require(display.waitForScreen(BarPlaces::rfCorner), "the bar stays");
}

void showFloor(TimedDisplay& display, TimedProgram& floor, Rows& rows)
{
    const Stopwatch clock;
    floor.main().sendLine("SHOW");
    require(display.waitForWindow(BarPlaces::rfCorner), "no window");
    rows.all[3].times.add(clock.ms());
    floor.main().sendLine("HIDE");
    require(display.waitForScreen(BarPlaces::rfCorner), "the window stays");
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Report report(argc, argv, "Show and hide");
    TimedDisplay display;
    TimedProgram helper(display.environment(), TestSupport::helperPath());
    TimedProgram floor(display.environment(), floorPath());
    for (TimedProgram* program : {&helper, &floor}) {
        program->start({QStringLiteral("--only"), QStringLiteral("wire")});
        program->waitForWord("READY", 0);
    }
    helper.main().sendBytes(snapshotLine(typicalSnapshot(), 1));

    Rows first;
    showHelper(display, helper, first);
    showFloor(display, floor, first);
    Rows rows;
    const int rounds = report.pick(500, 60);
    for (int round = 0; round < rounds; ++round) {
        showHelper(display, helper, rows);
        showFloor(display, floor, rows);
    }
    report.printTimes("The first time, ms:", first.all);
    report.printTimes("Later, ms:", rows.all);
    report.limit("SHOW_MINIBAR to the first painted bar, ms", first.all[1].times.first(), mostMs);
    report.limit("SHOW_MINIBAR to the painted bar, p99, ms", rows.all[1].times.percentile(99), mostMs);
    report.watch("painted / floor, median",
                 rows.all[1].times.median() / std::max(rows.all[3].times.median(), leastFloor),
                 alarmTimesTheFloor);
    return report.finish();
}
