#include "support/Waiting.h"
#include "system/tour/Tour.h"

using namespace TestSupport;

namespace {

constexpr double quiet = 0.65;
constexpr double full = 1.0;
const QString sweep = QStringLiteral("Sweep"); // the popup's title
const QString stopFrequency = QStringLiteral("Stop Frequency");

bool mainWindowAppears(Tour& tour)
{
    return waitUntil([&] { return tour.mainWindow().title == QLatin1String("Tarvinel Simulator"); }) &&
           tour.waitForLine("helper READY") && tour.waitForLine("main   EVT");
}

bool minimise(Tour& tour)
{
    return tour.clickInMainWindow(QStringLiteral("Minimise to mini bar")) &&
           tour.waitForLine("helper VISIBLE") && tour.bar().attach(tour.helperId()) &&
           waitUntil([&] { return !tour.mainWindow().mapped; }) && tour.bar().leave() &&
           tour.bar().waitForOpacity(quiet);
}

bool hover(Tour& tour)
{
    return tour.desktop().moveTo(tour.bar().centre(BarView::Level)) && tour.bar().waitForOpacity(full);
}

bool switchRfOn(Tour& tour)
{
    const QColor off = tour.desktop().x().pixel(tour.bar().corner(BarView::Rf));
    return tour.bar().click(tour.bar().centre(BarView::Rf)) &&
           tour.waitForLine(R"(helper REQ {"args":{"enabled":true},"cmd":"OUTP:STAT")") &&
           tour.bar().leave() &&
           waitUntil([&] { return tour.bar().shown(BarView::Rf) == QLatin1String("ON"); }) &&
           waitUntil([&] { return tour.desktop().x().pixel(tour.bar().corner(BarView::Rf)) != off; });
}

bool expand(Tour& tour)
{
    return tour.bar().expand() && tour.bar().waitForOpacity(full);
}

bool openFrequencyKeypad(Tour& tour)
{
    return tour.bar().openKeypad(BarView::Frequency) && tour.desktop().type(QStringLiteral("2.4"));
}

bool typeFrequency(Tour& tour)
{
    return tour.desktop().type(QStringLiteral("g")) && // a unit's letter ends the entry
           tour.waitForLine(R"(helper REQ {"args":{"hz":2400000000},"cmd":"SOUR:FREQ:CENT")") &&
           waitUntil([&] { return !tour.bar().isKeypadOpen(); }) &&
           waitUntil([&] { return tour.bar().shown(BarView::Frequency).startsWith(QLatin1String("2.4")); });
}

bool clickLevel(Tour& tour)
{
    return tour.bar().openKeypad(BarView::Level) && tour.bar().clickKey(QStringLiteral("3")) &&
           tour.bar().clickKey(QStringLiteral("5")) && tour.bar().clickKey(QStringLiteral("Change sign"));
}

bool acceptLevel(Tour& tour)
{
    return tour.bar().clickKey(QStringLiteral("dBm")) &&
           tour.waitForLine(R"(helper REQ {"args":{"dbm":-35},"cmd":"SOUR:POW:LEV")") &&
           waitUntil([&] { return tour.bar().shown(BarView::Level).startsWith(QLatin1String("-35")); });
}

bool refuseValue(Tour& tour)
{
    if (!tour.bar().openKeypad(BarView::Frequency))
        return false;
    const QString before = tour.bar().keypadRemark();
    return tour.bar().clickKey(QStringLiteral("Clear")) && tour.bar().clickKey(QStringLiteral("GHz")) &&
           waitUntil([&] { return tour.bar().keypadRemark() != before; }) && tour.bar().isKeypadOpen() &&
           !tour.hasLine("helper REQ");
}

bool cancelKeypad(Tour& tour)
{
    return tour.desktop().key(QStringLiteral("Escape")) &&
           waitUntil([&] { return !tour.bar().isKeypadOpen(); }) && tour.bar().isExpanded() &&
           !tour.hasLine("helper REQ");
}

bool openSweep(Tour& tour)
{
    return tour.bar().click(tour.bar().centre(BarView::Sweep)) && tour.bar().waitForBeside({sweep});
}

bool openSweepKeypad(Tour& tour)
{
    const QRect field = tour.bar().control(sweep, QStringLiteral("push button"), stopFrequency);
    return tour.bar().click(field.center()) && tour.bar().waitForKeyboard(stopFrequency) &&
           tour.desktop().type(QStringLiteral("2.5"));
}

bool typeSweepStop(Tour& tour)
{
    return tour.desktop().type(QStringLiteral("g")) && tour.waitForLine(R"("stopHz":2500000000)") &&
           tour.hasLine(R"("cmd":"SOUR:SWEEP:CONF")") && tour.bar().waitForBeside({sweep}) &&
           waitUntil([&] { return tour.bar().valueOf(stopFrequency).startsWith(QLatin1String("2.5")); });
}

bool openPlans(Tour& tour)
{
    const QRect plan = tour.bar().control(sweep, QStringLiteral("combo box"), QStringLiteral("Sweep Type"));
    return tour.bar().click(plan.center()) && tour.bar().waitForBeside({sweep, QStringLiteral("drop-down")});
}

bool closePlans(Tour& tour)
{
    return tour.desktop().key(QStringLiteral("Escape")) && tour.bar().waitForBeside({sweep}) &&
           !tour.hasLine("helper REQ");
}

bool pressBesideSweep(Tour& tour)
{
    return tour.bar().leave() && tour.bar().click(tour.desktop().x().pointerPosition()) &&
           tour.bar().waitForBeside({}) && tour.bar().isExpanded() && !tour.hasLine("helper REQ");
}

bool openModMenu(Tour& tour)
{
    return tour.bar().click(tour.bar().centre(BarView::Mod)) &&
           tour.bar().waitForBeside({QStringLiteral("menu")});
}

bool chooseModulation(Tour& tour)
{
    constexpr QPoint firstLine(30, 22);
    return tour.bar().click(tour.bar().placeOf(QStringLiteral("menu")).topLeft() + firstLine) &&
           waitUntil([&] {
               const QStringList things = tour.bar().shownBeside();
               return things.size() == 1 && things.first() != QLatin1String("menu");
           }) &&
           !tour.hasLine("helper REQ");
}

bool closeModulation(Tour& tour)
{
    return tour.desktop().key(QStringLiteral("Escape")) && tour.bar().waitForBeside({}) &&
           tour.bar().isExpanded() && !tour.hasLine("helper REQ");
}

bool dragBar(Tour& tour)
{
    const QRect before = tour.bar().geometry();
    constexpr QPoint distance(-120, 90);
    const QPoint grip = tour.bar().centre(BarView::Mod);
    return tour.desktop().drag(grip, grip + distance) &&
           waitUntil([&] { return tour.bar().geometry() == before.translated(distance); }) &&
           !tour.hasLine("helper REQ");
}

bool collapse(Tour& tour)
{
    return tour.bar().collapse() && tour.bar().leave() && tour.bar().waitForOpacity(quiet);
}

bool restore(Tour& tour)
{
    return tour.bar().expand() && tour.bar().click(tour.bar().restore()) &&
           tour.waitForLine("helper RESTORE_REQUEST") && tour.waitForLine("helper HIDDEN") &&
           waitUntil([&] { return tour.mainWindow().mapped && !tour.bar().bar().mapped; });
}

bool quit(Tour& tour)
{
    tour.desktop().x().requestClose(tour.mainWindow().id);
    return tour.waitForLine("main   SHUTDOWN") &&
           waitUntil([&] { return tour.simulator().state() == QProcess::NotRunning; }) &&
           tour.simulator().exitStatus() == QProcess::NormalExit && tour.simulator().exitCode() == 0;
}

} // namespace

const QVector<TourStep>& tourSteps()
{
    static const QVector<TourStep> steps = {
        {"01-main-window", "the main window appears", mainWindowAppears},
        {"02-bar-collapsed", "minimised: the bar stands in its place", minimise},
        {"03-hover", "the pointer makes the bar opaque", hover},
        {"04-rf-on", "RF is switched on by a click", switchRfOn},
        {"05-expanded", "the bar expands", expand},
        {"06-keypad", "the keypad opens for the frequency", openFrequencyKeypad},
        {"07-frequency", "2.4 GHz is typed on the keyboard", typeFrequency},
        {"08-keypad-clicked", "a level is put together with the pointer", clickLevel},
        {"09-level", "-35 dBm is set", acceptLevel},
        {"10-refused", "the keypad refuses a value", refuseValue},
        {"11-cancelled", "Esc closes it and sends nothing", cancelKeypad},
        {"12-sweep", "the sweep popup opens", openSweep},
        {"13-sweep-keypad", "the keypad opens for the stop frequency", openSweepKeypad},
        {"14-sweep-edited", "the sweep ends at 2.5 GHz now", typeSweepStop},
        {"15-sweep-plans", "the plans drop down", openPlans},
        {"16-sweep-plans-closed", "Esc closes the list alone", closePlans},
        {"17-sweep-closed", "a press beside the popup closes it and nothing else", pressBesideSweep},
        {"18-mod-menu", "the menu of modulations opens", openModMenu},
        {"19-mod", "the first modulation is looked at", chooseModulation},
        {"20-mod-closed", "Esc closes it", closeModulation},
        {"21-dragged", "the bar is dragged", dragBar},
        {"22-collapsed", "the bar collapses", collapse},
        {"23-restored", "the main window comes back", restore},
        {"24-ended", "the main window is closed, and the bar with it", quit},
    };
    return steps;
}
