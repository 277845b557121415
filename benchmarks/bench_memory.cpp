// What the helper's memory is from its start to the end of a long day, beside programs that do nothing; and
// that it sleeps while nothing happens: the kernel counts its context switches and its processor time.
//
//   resident   pages in memory, those of shared libraries included
//   private    pages that nobody shares now; how many that are depends on what else runs
//   written    those of them that the process has written to, which nobody can share
#include "kit/HelperOnScreen.h"
#include "kit/ProcessFacts.h"
#include "kit/Report.h"
#include "kit/TypicalSnapshot.h"
#include "support/Waiting.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QThread>
#include <algorithm>

using namespace TestSupport;

namespace {

constexpr double mostWrittenTimesTheFloor = 3;
constexpr double alarmWrittenTimesTheFloor = 6;
constexpr double mostGrowth = 0.25; // MiB written, from snapshots that change nothing, one after the other
constexpr double alarmGrowth = 1;
constexpr int burst = 100;
constexpr double alarmBurst = 4; // MiB: what waits in a burst takes memory that is kept for the next one

class Memory final
{
public:
    void add(const std::string& state, qint64 processId)
    {
        const MemoryFacts now = memoryOf(processId);
        m_table.add({state, figure(now.residentMiB), figure(now.privateMiB), figure(now.writtenMiB)});
        m_last = now;
    }
    [[nodiscard]] const MemoryFacts& last() const { return m_last; }
    [[nodiscard]] const Table& table() const { return m_table; }

private:
    Table m_table{{"MiB", "resident", "private", "written"}};
    MemoryFacts m_last;
};

// The helper's bar, used with the mouse, without a window manager.
class Bar final
{
public:
    Bar(TimedDisplay& display, TimedProgram& helper)
        : m_display(display)
        , m_helper(helper)
    {}

    void show()
    {
        require(m_helper.main().show(BarPlaces::anchor) && m_display.waitForWindow(BarPlaces::rfCorner),
                "no bar");
        m_bar = windows().first().id;
    }
    void expand()
    {
        const int height = geometry().height();
        m_display.hand().click(toggle());
        require(waitUntil([&] { return geometry().height() > height; }), "the bar stays collapsed");
    }
    // Chooses the n-th of `count` lines in the modulation menu and waits for the popup to be painted.
    void openEditor(int line, int count)
    {
        constexpr int modButton = 4;
        constexpr int buttonHeight = 60;
        m_display.hand().click(geometry().topLeft() + QPoint(20, 14 + modButton * buttonHeight));
        const QRect menu = waitForSecond([](const WindowFacts&) { return true; });
        m_display.hand().click(
            {menu.center().x(), menu.top() + (2 * line + 1) * menu.height() / (2 * count)});
        (void)waitForSecond([&menu](const WindowFacts& window) { return window.geometry != menu; });
        settle();
    }
    void closeEditor()
    {
        m_display.hand().click(geometry().topLeft() + QPoint(20, 14));
        require(waitUntil([&] { return windows().size() == 1; }), "the popup stays");
        settle();
    }
    void settle() { require(m_helper.main().show() && m_helper.main().show(), "no answer"); }

private:
    [[nodiscard]] QVector<WindowFacts> windows() const
    {
        QVector<WindowFacts> mapped;
        const auto all = m_display.hand().eye().windowsOfProcess(m_helper.processId());
        std::copy_if(all.begin(), all.end(), std::back_inserter(mapped),
                     [](const WindowFacts& window) { return window.mapped; });
        return mapped;
    }
    [[nodiscard]] QRect geometry() const { return m_display.hand().eye().facts(m_bar)->geometry; }
    [[nodiscard]] QPoint toggle() const { return {geometry().center().x(), geometry().bottom() - 20}; }
    template <typename Wanted>
    QRect waitForSecond(Wanted wanted) const
    {
        QRect found;
        require(waitUntil([&] {
                    const auto all = windows();
                    for (const WindowFacts& window : all) {
                        if (window.id != m_bar && wanted(window))
                            found = window.geometry;
                    }
                    return all.size() == 2 && found.isValid();
                }),
                "nothing opens");
        return found;
    }

    TimedDisplay& m_display;
    TimedProgram& m_helper;
    WindowId m_bar = 0;
};

void addFloors(TimedDisplay& display, Memory& memory)
{
    TimedProgram core(display.environment(), floorPath());
    core.start({QStringLiteral("--only"), QStringLiteral("core")});
    waitForRest(core.processId());
    memory.add("floor: a Qt program without window", core.processId());
}

double addWindowFloor(TimedDisplay& display, Memory& memory, bool openGl, const std::string& name)
{
    TimedProgram window(display.environment(openGl), floorPath());
    window.start({QStringLiteral("--only"), QStringLiteral("window")});
    require(display.waitForWindow(BarPlaces::rfCorner), "no window");
    memory.add(name, window.processId());
    window.stop();
    require(display.waitForScreen(BarPlaces::rfCorner), "the window stays");
    return memory.last().writtenMiB;
}

// So many snapshots, `atOnce` of which are sent before the helper has taken the first of them.
double addSnapshots(TimedProgram& helper, Bar& bar, Memory& memory, SnapshotSource& source, int count,
                    int atOnce)
{
    const double before = memory.last().writtenMiB;
    for (int sequence = 1; sequence <= count; ++sequence) {
        helper.main().sendBytes(source.next());
        if (sequence % atOnce == 0)
            bar.settle();
    }
    const std::string manner =
        atOnce == 1 ? " snapshots, one by one" : ", " + std::to_string(atOnce) + " at once";
    memory.add("helper, after " + std::to_string(count) + manner, helper.processId());
    return memory.last().writtenMiB - before;
}

// Nothing happens meanwhile, not even a look at the process.
ActivityFacts restOf(qint64 processId, int seconds)
{
    const ActivityFacts before = activityOf(processId);
    QThread::sleep(static_cast<unsigned long>(seconds));
    const ActivityFacts after = activityOf(processId);
    return {after.switches - before.switches, after.ticks - before.ticks};
}

void reportRest(Report& report, Table& table, const std::string& state, qint64 processId)
{
    const int seconds = report.pick(60, 3);
    waitForRest(processId);
    const ActivityFacts rest = restOf(processId, seconds);
    table.add({state, std::to_string(seconds), std::to_string(rest.switches), std::to_string(rest.ticks)});
    report.limit(state + ": context switches", double(rest.switches), 0, 0);
    report.limit(state + ": ticks of processor time", double(rest.ticks), 0, 0);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Report report(argc, argv, "Memory and rest");
    TimedDisplay display;
    Memory memory;
    Table rests({"nothing happens", "seconds", "context switches", "processor ticks"});
    addFloors(display, memory);
    const double floor =
        addWindowFloor(display, memory, false, "floor: empty window, OpenGL integration off");
    addWindowFloor(display, memory, true, "floor: empty window, Qt's defaults");

    TimedProgram helper(display.environment(), helperPath());
    helper.start();
    helper.waitForWord("READY", 0);
    const QJsonObject typical = typicalSnapshot();
    helper.main().sendBytes(snapshotLine(typical, 1));
    require(helper.main().hide(), "no answer");
    memory.add("helper, hidden", helper.processId());
    reportRest(report, rests, "hidden", helper.processId());

    Bar bar(display, helper);
    bar.show();
    bar.settle();
    memory.add("helper, collapsed", helper.processId());
    const double collapsed = memory.last().writtenMiB;
    reportRest(report, rests, "collapsed", helper.processId());
    bar.expand();
    const int items =
        typical.value(QStringLiteral("mod")).toObject().value(QStringLiteral("businesses")).toArray().size();
    for (int line = 0; line < items; ++line) {
        bar.openEditor(line, items);
        bar.closeEditor();
    }
    memory.add("helper, after all " + std::to_string(items) + " editors", helper.processId());
    SnapshotSource source;
    const int count = report.pick(100'000, 5'000);
    const double growth = addSnapshots(helper, bar, memory, source, count, 1);
    const double burstGrowth = addSnapshots(helper, bar, memory, source, count, burst);

    report.print("Memory:", memory.table());
    report.print("Rest:", rests);
    report.limit("written, collapsed / empty window, OpenGL integration off", collapsed / floor,
                 mostWrittenTimesTheFloor, alarmWrittenTimesTheFloor);
    report.limit("written, grown by the snapshots, MiB", growth, mostGrowth, alarmGrowth);
    report.watch("written, grown by the bursts, MiB", burstGrowth, alarmBurst);
    return report.finish();
}
