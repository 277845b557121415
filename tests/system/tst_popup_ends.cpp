// What becomes of everything that opens from the bar when the main process speaks and with Esc, and what an
// edit in a popup sends. The window manager comes in TARVINEL_WINDOW_MANAGER.

#include "system/PopupSession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace TestSupport;
using Thing = PopupSession::Thing;

Q_DECLARE_METATYPE(PopupSession::Thing)

namespace {

const QStringList nothing;
const QString stopField = QStringLiteral("Stop Frequency");
constexpr char malformedSweep[] =
    "Ignoring malformed minibar Sweep snapshot: Expected numeric field 'dwellSeconds'.\n";

// popupSnapshot() as the next one in order, with one part of it replaced.
QJsonObject with(const char* part, const QJsonValue& value)
{
    QJsonObject snapshot = popupSnapshot();
    snapshot.insert(QStringLiteral("seq"), 2);
    snapshot.insert(QLatin1String(part), value);
    return snapshot;
}

QJsonObject sweepWith(const char* key, const QJsonValue& value)
{
    QJsonObject sweep = popupSnapshot().value(QLatin1String("sweep")).toObject();
    sweep.insert(QLatin1String(key), value);
    return with("sweep", sweep);
}

// Without the first function, or without any.
QJsonObject businessesFrom(int first)
{
    QJsonObject mod = popupSnapshot().value(QLatin1String("mod")).toObject();
    QJsonArray businesses = mod.value(QLatin1String("businesses")).toArray();
    for (int i = 0; i < first; ++i)
        businesses.removeFirst();
    mod.insert(QStringLiteral("businesses"), businesses);
    return with("mod", mod);
}

struct Named
{
    const char* name;
    Thing thing;
};

constexpr Named things[] = {
    {"keypad", Thing::Keypad},    {"keypad of a field", Thing::FieldKeypad},
    {"sweep", Thing::SweepPopup}, {"mod", Thing::ModPopup},
    {"menu", Thing::ModMenu},     {"drop-down", Thing::DropDown},
};

} // namespace

class TestPopupEnds final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void snapshotArrives_data();
    void snapshotArrives();
    void hidden_data();
    void hidden();
    void ended_data();
    void ended();
    void escapeClosesOneThing_data();
    void escapeClosesOneThing();
    void sweepFieldIsEdited_data();
    void sweepFieldIsEdited();
    void planIsChosen();
    void functionWithoutEditor();

private:
    PrivateDisplay m_display{qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"))};
    Accessibility m_accessibility{m_display};
};

void TestPopupEnds::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestPopupEnds::snapshotArrives_data()
{
    QTest::addColumn<Thing>("thing");
    QTest::addColumn<QJsonObject>("snapshot");
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<QByteArray>("logged");

    const QStringList sweep = PopupSession::shownWith(Thing::SweepPopup);
    for (const Named& row : things) {
        const auto add = [&row](const char* what, const QJsonObject& snapshot, const QStringList& left,
                                const QByteArray& logged = {}) {
            QTest::addRow("%s, %s", row.name, what) << row.thing << snapshot << left << logged;
        };
        const QStringList all = PopupSession::shownWith(row.thing);
        const bool needsSweep = row.thing == Thing::FieldKeypad || row.thing == Thing::DropDown;
        const bool isMod = row.thing == Thing::ModPopup;
        const bool needsFunctions = isMod || row.thing == Thing::ModMenu;

        add("everything changes", changedPopupSnapshot(),
            isMod ? QStringList{QStringLiteral("Alpha, new")} : all);
        add("the function goes", businessesFrom(1), isMod ? nothing : all);
        add("all functions go", businessesFrom(3), needsFunctions ? nothing : all);
        add("sweep unavailable", sweepWith("available", false), needsSweep ? sweep : all);
        add("sweep malformed", sweepWith("dwellSeconds", QStringLiteral("1")), needsSweep ? sweep : all,
            malformedSweep);
        add("no sweep", with("sweep", QJsonValue()), needsSweep ? sweep : all);
    }
}

void TestPopupEnds::snapshotArrives()
{
    QFETCH(Thing, thing);
    QFETCH(QJsonObject, snapshot);
    QFETCH(QStringList, left);
    QFETCH(QByteArray, logged);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(thing));
    session.main().sendSnapshot(snapshot);
    QVERIFY(session.main().show()); // answered: the snapshot has been taken
    QVERIFY(session.waitForShown(left));
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), left);
    QVERIFY(session.bar().isExpanded());
    QCOMPARE(session.main().count("REQ"), 0);
    const QByteArray log = session.bar().helper().errorOutput();
    QCOMPARE(log.count('\n'), logged.isEmpty() ? 0 : 1);
    QVERIFY2(log.contains(logged), log.constData());
}

void TestPopupEnds::hidden_data()
{
    QTest::addColumn<Thing>("thing");
    for (const Named& row : things)
        QTest::newRow(row.name) << row.thing;
}

void TestPopupEnds::hidden()
{
    QFETCH(Thing, thing);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(thing));
    QVERIFY(session.main().hide());
    QTRY_COMPARE(session.desktop().mappedWindows(session.bar().helper().processId()).size(), 0);
    QVERIFY(session.main().show());
    QTRY_VERIFY(session.bar().isExpanded());
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), nothing);
    QVERIFY(session.open(thing));
    QCOMPARE(session.main().count("REQ"), 0);
    QCOMPARE(session.bar().helper().errorOutput(), QByteArray());
}

void TestPopupEnds::ended_data()
{
    QTest::addColumn<Thing>("thing");
    QTest::addColumn<bool>("told");
    for (const Named& row : things) {
        QTest::addRow("%s, shut down", row.name) << row.thing << true;
        QTest::addRow("%s, link lost", row.name) << row.thing << false;
    }
}

void TestPopupEnds::ended()
{
    QFETCH(Thing, thing);
    QFETCH(bool, told);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(thing));
    if (told)
        session.main().sendLine("SHUTDOWN");
    else
        session.main().hangUp();
    QCOMPARE(session.bar().helper().waitForExitCode(), std::optional<int>(0));
    QCOMPARE(session.main().count("REQ"), 0);
    QCOMPARE(session.bar().helper().errorOutput(), QByteArray());
}

void TestPopupEnds::escapeClosesOneThing_data()
{
    QTest::addColumn<Thing>("thing");
    QTest::addColumn<QStringList>("left");
    const QStringList sweep = PopupSession::shownWith(Thing::SweepPopup);
    QTest::newRow("keypad") << Thing::Keypad << nothing;
    QTest::newRow("keypad of a field") << Thing::FieldKeypad << sweep;
    QTest::newRow("drop-down") << Thing::DropDown << sweep;
    QTest::newRow("sweep") << Thing::SweepPopup << nothing;
    QTest::newRow("mod") << Thing::ModPopup << nothing;
    QTest::newRow("menu") << Thing::ModMenu << nothing;
}

void TestPopupEnds::escapeClosesOneThing()
{
    QFETCH(Thing, thing);
    QFETCH(QStringList, left);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(thing));
    QVERIFY(session.desktop().key(QStringLiteral("Escape")));
    QVERIFY(session.waitForShown(left));
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), left);
    if (!left.isEmpty()) {
        QVERIFY(session.desktop().key(QStringLiteral("Escape")));
        QVERIFY(session.waitForShown(nothing));
        QVERIFY(session.settle());
    }
    QVERIFY(session.bar().isExpanded());
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestPopupEnds::sweepFieldIsEdited_data()
{
    QTest::addColumn<bool>("answered"); // with the new state, else an event brings it
    QTest::newRow("response") << true;
    QTest::newRow("event") << false;
}

void TestPopupEnds::sweepFieldIsEdited()
{
    QFETCH(bool, answered);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(Thing::FieldKeypad));
    QVERIFY(session.bar().waitForKeyboard(stopField));
    QVERIFY(session.desktop().type(QStringLiteral("2.5")));
    QVERIFY(session.desktop().key(QStringLiteral("Return"))); // in the unit that the field showed
    QVERIFY(session.waitForShown(PopupSession::shownWith(Thing::SweepPopup)));
    QVERIFY(session.main().waitForRequests(1));
    QVERIFY(session.settle());
    QCOMPARE(session.main().count("REQ"), 1);
    const QByteArray expected =
        R"({"args":{"dwellSeconds":0.0025,"enabled":true,"expectedRevision":3,)"
        R"("frequencyPlan":{"startHz":1000000000,"stepHz":10000000,"stopHz":2500000000},)"
        R"("levelPlan":{"startDbm":-20,"stepDb":1,"stopDbm":-10},"selectedPlanId":"fscan"},)"
        R"("cmd":"SOUR:SWEEP:CONF","id":1,"v":1})";
    QCOMPARE(QJsonDocument(session.main().requests().constFirst()).toJson(QJsonDocument::Compact), expected);
    QCOMPARE(session.bar().valueOf(stopField), QStringLiteral("2GHz")); // until it is confirmed

    QJsonObject plan = popupSnapshot()
                           .value(QLatin1String("sweep"))
                           .toObject()
                           .value(QLatin1String("frequencyPlan"))
                           .toObject();
    plan.insert(QStringLiteral("stopHz"), 2.5e9);
    const QJsonObject confirmed = sweepWith("frequencyPlan", plan);
    if (answered)
        session.main().answer(1, true, {{QStringLiteral("payload"), confirmed}});
    else
        session.main().sendSnapshot(confirmed);
    QTRY_COMPARE(session.bar().valueOf(stopField), QStringLiteral("2.5GHz"));
    QCOMPARE(session.main().count("REQ"), 1);
    QCOMPARE(session.shown(), PopupSession::shownWith(Thing::SweepPopup));
}

void TestPopupEnds::planIsChosen()
{
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(Thing::DropDown));
    const QRect list = session.dropDown();
    QVERIFY(session.bar().click(QPoint(list.center().x(), list.top() + list.height() * 3 / 4)));
    QVERIFY(session.waitForShown(PopupSession::shownWith(Thing::SweepPopup)));
    QVERIFY(session.main().waitForRequests(1));
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), PopupSession::shownWith(Thing::SweepPopup));
    const QJsonObject sent = session.main().requests().constFirst().value(QLatin1String("args")).toObject();
    QCOMPARE(sent.value(QLatin1String("selectedPlanId")).toString(), QStringLiteral("lscan"));
    QVERIFY(!session.bar().valueOf(stopField).isEmpty()); // the page of the confirmed plan
    session.main().sendSnapshot(sweepWith("selectedPlanId", QStringLiteral("lscan")));
    QTRY_COMPARE(session.bar().valueOf(QStringLiteral("Stop Level")), QStringLiteral("-10 dBm"));
}

void TestPopupEnds::functionWithoutEditor()
{
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(Thing::ModPopup));
    QVERIFY(!session.bar()
                 .control(PopupSession::modTitle, QStringLiteral("label"),
                          QStringLiteral("No UI editor is available for Alpha in full."))
                 .isEmpty());
}

QTEST_GUILESS_MAIN(TestPopupEnds)

#include "tst_popup_ends.moc"
