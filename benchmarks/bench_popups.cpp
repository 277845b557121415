// How long it takes until what the user opens on the expanded bar is painted: the sweep popup, the modulation
// menu, the numeric keyboard and the popup with each of the thirteen editors; each the first time, when it is
// built, and again, beside an empty dialog of the same size that is made and shown in the same way.
//
//   first     on a new bar
//   another   the popup is there, and shows another item's editor (editors only)
//   again     it has been open before

#include "controls/LabelButton.h"
#include "kit/ExpandedBar.h"
#include "kit/PaintWatch.h"
#include "kit/Report.h"
#include "kit/TypicalSnapshot.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QJsonArray>
#include <QMenu>
#include <algorithm>
#include <memory>

namespace {

constexpr double mostMs = 100;    // what feels at once
constexpr double mostAgain = 50;  // ms
constexpr double alarmFirst = 80; // times the empty dialog
constexpr double alarmAgain = 20;
constexpr double leastFloor = 1; // ms of processor time: below that, noise counts for more

// One thing that can be opened.
struct Thing
{
    std::string name;
    std::function<void(const ExpandedBar&)> open;
    std::function<void(const ExpandedBar&)> close;
    std::function<QWidget*(const ExpandedBar&)> shown;
    std::function<void(const ExpandedBar&)> openAnother = {};
    Samples first = {}, another = {}, again = {}, emptyFirst = {}, emptyAgain = {}; // ms by the clock
    Samples firstCpu = {}, againCpu = {}, emptyCpu = {};                            // ms of processor time
};

Thing clicked(const char* name, QLatin1String button, std::function<QWidget*(const ExpandedBar&)> shown)
{
    return {name, [button](const ExpandedBar& bar) { bar.button(button)->click(); },
            [shown](const ExpandedBar& bar) { shown(bar)->close(); }, shown};
}

Thing editor(const QString& name, int line, int count)
{
    const auto trigger = [](const ExpandedBar& bar, int item) { bar.menu()->actions().at(item)->trigger(); };
    return {name.toStdString(), [=](const ExpandedBar& bar) { trigger(bar, line); },
            [](const ExpandedBar& bar) { bar.modPopup()->close(); },
            [](const ExpandedBar& bar) { return bar.modPopup(); },
            [=](const ExpandedBar& bar) { trigger(bar, (line + 1) % count); }};
}

std::vector<Thing> allThings(const QJsonObject& snapshot)
{
    std::vector<Thing> things = {
        clicked("sweep popup", QLatin1String("Sweep"),
                [](const ExpandedBar& bar) { return bar.sweepPopup(); }),
        clicked("modulation menu", QLatin1String("MOD"), [](const ExpandedBar& bar) { return bar.menu(); }),
        clicked("numeric keyboard", QLatin1String("Frequency"),
                [](const ExpandedBar&) { return QApplication::activeModalWidget(); }),
    };
    const QJsonArray items =
        snapshot.value(QLatin1String("mod")).toObject().value(QLatin1String("businesses")).toArray();
    for (int i = 0; i < items.size(); ++i)
        things.push_back(
            editor(items.at(i).toObject().value(QLatin1String("name")).toString(), i, items.size()));
    return things;
}

void turn()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents(); // what the first turn has posted
}

void timeOnce(PaintWatch& watch, const QJsonObject& snapshot, Thing& thing, int again)
{
    const ExpandedBar bar(snapshot);
    const auto open = [&] { thing.open(bar); };
    const auto shown = [&] { return thing.shown(bar); };
    thing.first.add(watch.timeOf(open, shown));
    thing.firstCpu.add(watch.lastCpu());
    const QSize size = shown()->size();
    std::unique_ptr<QDialog> empty;
    const auto emptyOne = [&empty] { return empty.get(); };
    thing.emptyFirst.add(watch.timeOf(
        [&] {
            empty = std::make_unique<QDialog>(nullptr, Qt::Tool | Qt::FramelessWindowHint);
            empty->resize(size);
            empty->show();
        },
        emptyOne));
    thing.emptyCpu.add(watch.lastCpu());
    const auto closeBoth = [&] {
        empty->hide();
        thing.close(bar);
        turn();
    };
    for (int i = 0; i < again; ++i) {
        closeBoth();
        if (thing.openAnother) {
            thing.openAnother(bar);
            turn();
            thing.close(bar);
            turn();
            thing.another.add(watch.timeOf(open, shown));
            thing.close(bar);
            turn();
        }
        thing.again.add(watch.timeOf(open, shown));
        thing.againCpu.add(watch.lastCpu());
        thing.emptyAgain.add(watch.timeOf([&empty] { empty->show(); }, emptyOne));
    }
    closeBoth();
}

std::string p95(const Samples& times)
{
    return times.isEmpty() ? std::string() : figure(times.percentile(95));
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    Report report(argc, argv, "Popups");
    const QJsonObject snapshot = typicalSnapshot();
    PaintWatch watch;
    std::vector<Thing> things = allThings(snapshot);
    const int rounds = report.pick(21, 3);
    for (int round = 0; round < rounds; ++round) {
        for (Thing& thing : things)
            timeOnce(watch, snapshot, thing, report.pick(5, 2));
    }

    Table table({"p95, ms", "first", "empty dialog", "another", "again", "empty dialog", "first, processor",
                 "empty dialog, processor"});
    for (const Thing& thing : things) {
        table.add({thing.name, p95(thing.first), p95(thing.emptyFirst), p95(thing.another), p95(thing.again),
                   p95(thing.emptyAgain), p95(thing.firstCpu), p95(thing.emptyCpu)});
        report.limit(thing.name + ", first, p95, ms", thing.first.percentile(95), mostMs);
        report.limit(thing.name + ", again, p95, ms", thing.again.percentile(95), mostAgain);
        const double floor = std::max(thing.emptyCpu.median(), leastFloor);
        report.watch(thing.name + ", first / empty dialog, processor time", thing.firstCpu.median() / floor,
                     alarmFirst);
        report.watch(thing.name + ", again / empty dialog, processor time", thing.againCpu.median() / floor,
                     alarmAgain);
    }
    report.print("From the click to the painted window:", table);
    return report.finish();
}
