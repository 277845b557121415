#include "system/PopupSession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <csignal>

using namespace TestSupport;

namespace {

const QStringList keypadTitles = {QStringLiteral("Frequency"), QStringLiteral("Start Frequency"),
                                  QStringLiteral("Stop Frequency"), QStringLiteral("Frequency Step")};

QJsonObject parsed(const char* json)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON");
    return object;
}

} // namespace

QJsonObject popupSnapshot()
{
    return parsed(R"({"seq":1,"tx":{"rf":false,"centerHz":1e9,"levelDbm":-20},
        "sweep":{"available":true,"revision":3,"enabled":true,"selectedPlanId":"fscan",
            "frequencyPlan":{"startHz":1e9,"stopHz":2e9,"stepHz":1e7},
            "levelPlan":{"startDbm":-20,"stopDbm":-10,"stepDb":1},
            "dwellSeconds":0.0025,"supportedPlanIds":["fscan","lscan"]},
        "mod":{"enabled":true,"enabledBusinessId":"am","businesses":[
            {"id":"am","name":"Alpha","text":"Alpha in full","editorKind":"alpha","revision":2},
            {"id":"fm","name":"Beta","text":"Beta in full","editorKind":"beta","revision":1},
            {"id":"pm","name":"Gamma","text":"Gamma in full","editorKind":"gamma","revision":1}]}})");
}

QJsonObject changedPopupSnapshot()
{
    return parsed(R"({"seq":2,"tx":{"rf":true,"centerHz":2e9,"levelDbm":-10,"centerUnit":"MHz"},
        "sweep":{"available":true,"revision":4,"enabled":false,"selectedPlanId":"lscan",
            "frequencyPlan":{"startHz":3e9,"stopHz":4e9,"stepHz":2e7},
            "levelPlan":{"startDbm":-30,"stopDbm":-5,"stepDb":2},
            "dwellSeconds":0.5,"supportedPlanIds":["lscan","fscan"]},
        "mod":{"enabled":false,"enabledBusinessId":"fm","businesses":[
            {"id":"pm","name":"Gamma, newly named and much longer","text":"Gamma, new","revision":7},
            {"id":"fm","name":"Beta, new","text":"Beta, new","revision":8},
            {"id":"am","name":"Alpha, new","text":"Alpha, new","editorKind":"other","revision":9}]}})");
}

const QString PopupSession::sweepTitle = QStringLiteral("Sweep");
const QString PopupSession::modTitle = QStringLiteral("Alpha in full");

PopupSession::PopupSession(const PrivateDisplay& display, const Accessibility& accessibility)
    : m_bar(display, accessibility)
{}

bool PopupSession::begin(const QPoint& anchor)
{
    if (!m_bar.begin(anchor))
        return false;
    main().sendSnapshot(popupSnapshot());
    return m_bar.expand() && settle();
}

QStringList PopupSession::shownWith(Thing thing)
{
    switch (thing) {
    case Keypad:
        return {QStringLiteral("Frequency")};
    case FieldKeypad:
        return {QStringLiteral("Stop Frequency"), sweepTitle};
    case SweepPopup:
        return {sweepTitle};
    case ModPopup:
        return {modTitle};
    case ModMenu:
        return {QStringLiteral("menu")};
    case DropDown:
        return {sweepTitle, QStringLiteral("drop-down")};
    }
    return {};
}

bool PopupSession::open(Thing thing)
{
    switch (thing) {
    case Keypad:
        return m_bar.openKeypad(BarSession::Frequency) && waitForShown(shownWith(thing));
    case FieldKeypad:
        return open(SweepPopup) && clickField(QStringLiteral("Stop Frequency")) &&
               waitForShown(shownWith(thing));
    case SweepPopup:
        return clickSweep() && waitForShown(shownWith(thing)) && settle();
    case ModPopup:
        return open(ModMenu) && chooseInMenu(0) && waitForShown(shownWith(thing)) && settle();
    case ModMenu:
        return clickMod() && waitForShown(shownWith(thing)) && settle();
    case DropDown:
        return open(SweepPopup) &&
               m_bar.click(
                   m_bar.control(sweepTitle, QStringLiteral("combo box"), QStringLiteral("Sweep Type"))
                       .center()) &&
               waitForShown(shownWith(thing)) && settle();
    }
    return false;
}

bool PopupSession::chooseInMenu(int line)
{
    constexpr int lines = 3;
    return m_bar.chooseInMenu(line, lines);
}

bool PopupSession::settle()
{
    const auto isKeypad = [](const QString& name) { return keypadTitles.contains(name); };
    const QStringList things = shown();
    if (std::none_of(things.cbegin(), things.cend(), isKeypad)) { // which leaves the bar deaf to all others
        const int before = main().count("RESTORE_REQUEST");
        desktop().x().tellToClose(m_bar.barWindow());
        if (!main().waitForCount("RESTORE_REQUEST", before + 1))
            return false;
    }
    return main().show() && main().show(); // the second is obeyed when the loop has turned once more
}

bool PopupSession::clickField(const QString& name)
{
    return m_bar.click(m_bar.control(sweepTitle, QStringLiteral("push button"), name).center());
}

bool PopupSession::clickAtOnce(const QVector<QPoint>& places)
{
    const auto helper = pid_t(m_bar.helper().processId());
    if (kill(helper, SIGSTOP) != 0)
        return false;
    const bool clicked = std::all_of(places.cbegin(), places.cend(),
                                     [this](const QPoint& place) { return m_bar.click(place); });
    return kill(helper, SIGCONT) == 0 && clicked && settle();
}

bool PopupSession::doubleClick(const QPoint& place)
{
    return desktop().doubleClick(place) && settle();
}
