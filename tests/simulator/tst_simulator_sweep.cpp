#include "simulator/SnapshotWriter.h"
#include "simulator/SweepTalk.h"

#include <QSignalSpy>

using namespace Simulator;

class TestSimulatorSweep final : public QObject
{
    Q_OBJECT

private slots:
    void snapshotHoldsTheSweep();
    void bounds_data();
    void bounds();
    void order_data();
    void order();
    void malformedRequests_data();
    void malformedRequests();
    void everyChangeRaisesTheRevision();
    void sameAgainIsNoChange();
    void staleRevisions_data();
    void staleRevisions();
    void planNotOffered();
    void sweepThatIsNotAvailable();
    void closedInstrument();
    void turnedByHand();
    void turningAwayFromAPlan();
    void changeIsAnsweredAndPushed();
    void refusalOverTheLink();
    void rulesBendTheAnswer();
};

void TestSimulatorSweep::snapshotHoldsTheSweep()
{
    SignalGenerator instrument;
    const QJsonObject snapshot = snapshotOf(instrument);
    QCOMPARE(text(sweepOf(snapshot)),
             QByteArray(R"({"available":true,"dwellSeconds":0.001,"enabled":false,)"
                        R"("frequencyPlan":{"startHz":1000000000,"stepHz":10000000,"stopHz":2000000000},)"
                        R"("levelPlan":{"startDbm":-20,"stepDb":1,"stopDbm":-19},"revision":1,)"
                        R"("selectedPlanId":"fscan","supportedPlanIds":["fscan","lscan"]})"));
    QCOMPARE(parsed(snapshot), instrument.sweep());
    instrument.setOpen(false);
    QVERIFY(!snapshotOf(instrument).contains(QStringLiteral("sweep")));
}

void TestSimulatorSweep::bounds_data()
{
    QTest::addColumn<QByteArray>("changes");
    QTest::addColumn<QString>("sentence"); // empty: taken
    const auto row = [](const char* name, const char* changes, const char* sentence = "") {
        QTest::newRow(name) << QByteArray(changes) << QString::fromUtf8(sentence);
    };
    const char* startHz = "The start frequency must lie between 9 kHz and 6 GHz.";
    row("lowest start", R"({"frequencyPlan":{"startHz":9e3}})");
    row("start below", R"({"frequencyPlan":{"startHz":8999.999}})", startHz);
    row("start above", R"({"frequencyPlan":{"startHz":6000000000.001}})", startHz);
    row("highest start", R"({"frequencyPlan":{"startHz":5.99e9,"stopHz":6e9}})");
    const char* stopHz = "The stop frequency must lie between 9 kHz and 6 GHz.";
    row("highest stop", R"({"frequencyPlan":{"stopHz":6e9}})");
    row("stop above", R"({"frequencyPlan":{"stopHz":6000000000.001}})", stopHz);
    row("stop below", R"({"frequencyPlan":{"stopHz":8999.999}})", stopHz);
    const char* stepHz = "The frequency step must lie between 1 Hz and 5.999991 GHz.";
    row("smallest step", R"({"frequencyPlan":{"stepHz":1}})");
    row("step too small", R"({"frequencyPlan":{"stepHz":0.999}})", stepHz);
    row("negative step", R"({"frequencyPlan":{"stepHz":-1e6}})", stepHz);
    row("largest step", R"({"frequencyPlan":{"startHz":9e3,"stopHz":6e9,"stepHz":5999991000}})");
    row("step too large", R"({"frequencyPlan":{"startHz":9e3,"stopHz":6e9,"stepHz":5999991001}})", stepHz);
    const char* startDbm = "The start level must lie between -120 dBm and 20 dBm.";
    row("lowest start level", R"({"levelPlan":{"startDbm":-120}})");
    row("start level below", R"({"levelPlan":{"startDbm":-120.001}})", startDbm);
    row("start level above", R"({"levelPlan":{"startDbm":20.001}})", startDbm);
    const char* stopDbm = "The stop level must lie between -120 dBm and 20 dBm.";
    row("highest stop level", R"({"levelPlan":{"stopDbm":20}})");
    row("stop level above", R"({"levelPlan":{"stopDbm":20.001}})", stopDbm);
    row("stop level below", R"({"levelPlan":{"stopDbm":-120.001}})", stopDbm);
    const char* stepDb = "The level step must lie between 0.01 dB and 140 dB.";
    row("smallest level step", R"({"levelPlan":{"stepDb":0.01}})");
    row("level step too small", R"({"levelPlan":{"stepDb":0.009}})", stepDb);
    row("level step zero", R"({"levelPlan":{"stepDb":0}})", stepDb);
    row("largest level step", R"({"levelPlan":{"startDbm":-120,"stopDbm":20,"stepDb":140}})");
    row("level step too large", R"({"levelPlan":{"startDbm":-120,"stopDbm":20,"stepDb":140.1}})", stepDb);
    const char* dwell = "The dwell time must lie between 1 µs and 100 s.";
    row("shortest dwell", R"({"dwellSeconds":1e-6})");
    row("dwell too short", R"({"dwellSeconds":9.99e-7})", dwell);
    row("longest dwell", R"({"dwellSeconds":100})");
    row("dwell too long", R"({"dwellSeconds":100.001})", dwell);
}

void TestSimulatorSweep::bounds()
{
    QFETCH(QByteArray, changes);
    QFETCH(QString, sentence);
    Bench bench;
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith(changes));
    const QJsonObject response = bench.hear(QStringLiteral("RSP"));
    const QJsonObject error = response.value(QStringLiteral("error")).toObject();
    QCOMPARE(error.value(QStringLiteral("message")).toString(), sentence);
    QCOMPARE(error.value(QStringLiteral("code")).toString(),
             sentence.isEmpty() ? QString() : QStringLiteral("INVALID_ARG"));
    if (!sentence.isEmpty()) {
        QCOMPARE(bench.instrument.sweep(), SignalGenerator().sweep());
        return;
    }
    const QJsonObject snapshot = response.value(QStringLiteral("payload")).toObject();
    QCOMPARE(text(sweepOf(snapshot)),
             text(merged(sweepOf(bench.first), merged(object(changes), {{QStringLiteral("revision"), 2}}))));
}

void TestSimulatorSweep::order_data()
{
    QTest::addColumn<QByteArray>("changes");
    QTest::addColumn<QString>("sentence"); // empty: taken
    const auto row = [](const char* name, const char* changes, const char* sentence = "") {
        QTest::newRow(name) << QByteArray(changes) << QString::fromUtf8(sentence);
    };
    row("stop just above", R"({"frequencyPlan":{"startHz":1e9,"stopHz":1000000001,"stepHz":1}})");
    row("stop on the start", R"({"frequencyPlan":{"stopHz":1e9}})",
        "The stop frequency must lie above the start frequency (1 GHz).");
    row("stop below the start", R"({"frequencyPlan":{"stopHz":900e6}})",
        "The stop frequency must lie above the start frequency (1 GHz).");
    row("step as wide as the span", R"({"frequencyPlan":{"stepHz":1e9}})");
    row("step wider than the span", R"({"frequencyPlan":{"stepHz":1000001000}})",
        "The frequency step must not be larger than the span (1 GHz).");
    row("stop level on the start", R"({"levelPlan":{"stopDbm":-20}})",
        "The stop level must lie above the start level (-20 dBm).");
    row("level step as wide as the span", R"({"levelPlan":{"startDbm":0.4,"stopDbm":0.7,"stepDb":0.3}})");
    row("level step wider than the span", R"({"levelPlan":{"stepDb":1.01}})",
        "The level step must not be larger than the span (1 dB).");
    row("range before order", R"({"frequencyPlan":{"stopHz":1e9},"dwellSeconds":0})",
        "The dwell time must lie between 1 µs and 100 s.");
}

void TestSimulatorSweep::order()
{
    QFETCH(QByteArray, changes);
    QFETCH(QString, sentence);
    SweepSettings wanted;
    QVERIFY(MinibarHelperProtocol::parseSweepSettings(object(requestWith(changes)), &wanted));
    SignalGenerator instrument;
    const Verdict verdict = instrument.changeSweep(wanted, 1);
    QCOMPARE(verdict ? verdict->sentence : QString(), sentence);
    QCOMPARE(instrument.sweep().settings, sentence.isEmpty() ? wanted : SweepSettings());
}

void TestSimulatorSweep::malformedRequests_data()
{
    QTest::addColumn<QByteArray>("changes");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* changes, const char* sentence) {
        QTest::newRow(changes) << QByteArray(changes) << QString::fromUtf8(sentence);
    };
    row(R"({"expectedRevision":null})", "'expectedRevision' must be a whole number.");
    row(R"({"expectedRevision":"1"})", "'expectedRevision' must be a whole number.");
    row(R"({"expectedRevision":1.5})", "'expectedRevision' must be a whole number.");
    row(R"({"enabled":1})", "Expected boolean field 'enabled'.");
    row(R"({"selectedPlanId":null})", "Expected string field 'selectedPlanId'.");
    row(R"({"selectedPlanId":""})", "Unsupported Sweep plan id.");
    row(R"({"levelPlan":7})", "Sweep request requires frequencyPlan and levelPlan objects.");
    row(R"({"frequencyPlan":{"startHz":"1 GHz"}})", "Expected numeric field 'startHz'.");
    row(R"({"levelPlan":{"stepDb":null}})", "Expected numeric field 'stepDb'.");
    row(R"({"dwellSeconds":null})", "Expected numeric field 'dwellSeconds'.");
}

void TestSimulatorSweep::malformedRequests()
{
    QFETCH(QByteArray, changes);
    Bench bench;
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith(changes));
    const QJsonObject error = bench.error();
    QCOMPARE(error.value(QStringLiteral("code")), QJsonValue(QStringLiteral("INVALID_ARG")));
    QTEST(error.value(QStringLiteral("message")).toString(), "sentence");
    QCOMPARE(bench.instrument.sweep().revision, 1);
}

void TestSimulatorSweep::everyChangeRaisesTheRevision()
{
    SignalGenerator instrument;
    QSignalSpy changed(&instrument, &SignalGenerator::changed);
    SweepSettings wanted;
    wanted.enabled = true;
    QVERIFY(!instrument.changeSweep(wanted, 1));
    wanted.selectedPlanId = SweepPlanId::LevelScan;
    QVERIFY(!instrument.changeSweep(wanted, 2));
    wanted.dwellSeconds = 0.25;
    QVERIFY(!instrument.changeSweep(wanted, 3));
    QCOMPARE(instrument.sweep().revision, 4);
    QCOMPARE(instrument.sweep().settings, wanted);
    QCOMPARE(changed.count(), 3);
}

void TestSimulatorSweep::sameAgainIsNoChange()
{
    SignalGenerator instrument;
    QSignalSpy changed(&instrument, &SignalGenerator::changed);
    QVERIFY(!instrument.changeSweep(SweepSettings(), 1));
    QCOMPARE(instrument.sweep().revision, 1);
    QCOMPARE(changed.count(), 0);
}

void TestSimulatorSweep::staleRevisions_data()
{
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("older") << QByteArray("1");
    QTest::newRow("newer") << QByteArray("3");
    QTest::newRow("none") << QByteArray("0");
    QTest::newRow("negative") << QByteArray("-2");
    QTest::newRow("beyond 32 bits") << QByteArray("4294967298"); // 2 in its low half
}

void TestSimulatorSweep::staleRevisions()
{
    QFETCH(QByteArray, expected);
    Bench bench(R"({"initial":{"sweep":{"dwellSeconds":0.5}}})");
    QCOMPARE(revision(bench.first), 2);
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true,"expectedRevision":)" + expected + '}'));
    const QJsonObject error = bench.error();
    QCOMPARE(error.value(QStringLiteral("code")), QJsonValue(QStringLiteral("CONFLICT")));
    QCOMPARE(error.value(QStringLiteral("message")),
             QJsonValue(QStringLiteral("The sweep has changed in the meantime.")));
    QVERIFY(!bench.instrument.sweep().settings.enabled);
}

void TestSimulatorSweep::planNotOffered()
{
    SignalGenerator instrument;
    SweepTurn turn;
    turn.supportedPlanIds = {SweepPlanId::FrequencyScan};
    instrument.turnSweep(turn);
    SweepSettings wanted;
    for (const SweepPlanId plan : {SweepPlanId::LevelScan, SweepPlanId::Unsupported, SweepPlanId::None}) {
        wanted.selectedPlanId = plan;
        const Verdict verdict = instrument.changeSweep(wanted, 2);
        QVERIFY(verdict);
        QCOMPARE(verdict->code, QStringLiteral("NOT_SUPPORTED"));
        QCOMPARE(verdict->sentence, QStringLiteral("The instrument does not offer the sweep plan '%1'.")
                                        .arg(MinibarHelperProtocol::planWord(plan)));
    }
    QCOMPARE(instrument.sweep().revision, 2);
}

void TestSimulatorSweep::sweepThatIsNotAvailable()
{
    Bench bench(R"({"initial":{"sweep":{"available":false}}})");
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true})", 2));
    const QJsonObject error = bench.error();
    QCOMPARE(error.value(QStringLiteral("code")), QJsonValue(QStringLiteral("NOT_SUPPORTED")));
    QCOMPARE(error.value(QStringLiteral("message")),
             QJsonValue(QStringLiteral("The sweep cannot be changed now.")));
}

void TestSimulatorSweep::closedInstrument()
{
    SignalGenerator instrument;
    instrument.setOpen(false);
    QSignalSpy changed(&instrument, &SignalGenerator::changed);
    const Verdict verdict = instrument.changeSweep(SweepSettings(), 1);
    QVERIFY(verdict);
    QCOMPARE(verdict->code, QStringLiteral("NOT_OPEN"));
    SweepTurn turn;
    turn.enabled = true;
    instrument.turnSweep(turn);
    QVERIFY(!instrument.sweep().settings.enabled);
    QCOMPARE(changed.count(), 0);
}

void TestSimulatorSweep::turnedByHand()
{
    Bench bench;
    SweepTurn turn;
    turn.enabled = true;
    turn.levelPlan = SweepTurn::LevelPlan{-50, -30, 2};
    bench.instrument.turnSweep(turn);
    const QJsonObject pushed = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(seq(pushed), 2);
    const SweepSnapshot sweep = parsed(pushed);
    QCOMPARE(sweep.revision, 2);
    QVERIFY(sweep.settings.enabled);
    QCOMPARE(sweep.settings.startDbm, -50.0);
    QCOMPARE(sweep.settings.stepDb, 2.0);
    // Numbers with a fault change nothing.
    turn.levelPlan = SweepTurn::LevelPlan{-30, -50, 2};
    turn.enabled = false;
    bench.instrument.turnSweep(turn);
    QCOMPARE(bench.instrument.sweep(), sweep);
}

void TestSimulatorSweep::turningAwayFromAPlan()
{
    SignalGenerator instrument;
    SweepTurn turn;
    turn.supportedPlanIds = {SweepPlanId::LevelScan};
    instrument.turnSweep(turn);
    QCOMPARE(instrument.sweep().settings.selectedPlanId, SweepPlanId::LevelScan);
    turn = {};
    turn.selectedPlanId = SweepPlanId::Unsupported;
    instrument.turnSweep(turn); // it is available: no such plan
    QCOMPARE(instrument.sweep().settings.selectedPlanId, SweepPlanId::LevelScan);
    turn.available = false;
    instrument.turnSweep(turn);
    QCOMPARE(instrument.sweep().settings.selectedPlanId, SweepPlanId::Unsupported);
    turn = {};
    turn.available = true;
    instrument.turnSweep(turn);
    QCOMPARE(instrument.sweep().settings.selectedPlanId, SweepPlanId::LevelScan);
}

void TestSimulatorSweep::changeIsAnsweredAndPushed()
{
    Bench bench;
    bench.ask(7, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true,"selectedPlanId":"lscan"})"));
    const QJsonObject answer = bench.hear(QStringLiteral("RSP"));
    QCOMPARE(answer.value(QStringLiteral("id")), QJsonValue(7));
    QCOMPARE(answer.value(QStringLiteral("ok")), QJsonValue(true));
    const QJsonObject answered = answer.value(QStringLiteral("payload")).toObject();
    QCOMPARE(seq(answered), 2);
    QCOMPARE(revision(answered), 2);
    QCOMPARE(sweepValue(answered, "selectedPlanId"), QJsonValue(QStringLiteral("lscan")));
    const QJsonObject pushed = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(seq(pushed), 3);
    QCOMPARE(sweepOf(pushed), sweepOf(answered));
    // What changes nothing is answered and not pushed.
    bench.ask(8, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true,"selectedPlanId":"lscan"})", 2));
    QCOMPARE(revision(bench.payload(QStringLiteral("RSP"))), 2);
    bench.ask(9, "STAT:SNAP?", "{}");
    QCOMPARE(seq(bench.payload(QStringLiteral("RSP"))), 5);
}

void TestSimulatorSweep::refusalOverTheLink()
{
    Bench bench(R"({"initial":{"deviceOpen":false}})");
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith("{}"));
    QCOMPARE(bench.errorCode(), QStringLiteral("NOT_OPEN"));
    bench.instrument.setOpen(true);
    QVERIFY(!sweepOf(bench.payload(QStringLiteral("EVT"))).isEmpty());
    bench.ask(2, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true})"));
    QCOMPARE(revision(bench.payload(QStringLiteral("RSP"))), 2);
    QCOMPARE(revision(bench.payload(QStringLiteral("EVT"))), 2);
    bench.ask(3, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":false})"));
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
}

void TestSimulatorSweep::rulesBendTheAnswer()
{
    Bench bench(R"({"rules":[{"cmd":"SOUR:SWEEP:CONF","nth":1,"stale":true},
                             {"cmd":"SOUR:SWEEP:CONF","nth":2,"payload":{"sweep":{"enabled":false}}}]})");
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true})"));
    QCOMPARE(revision(bench.payload(QStringLiteral("EVT"))), 2);
    QCOMPARE(bench.payload(QStringLiteral("RSP")), bench.first);
    bench.ask(2, "SOUR:SWEEP:CONF", requestWith(R"({"enabled":true,"dwellSeconds":1})", 2));
    QCOMPARE(sweepValue(bench.payload(QStringLiteral("RSP")), "enabled"), QJsonValue(false));
    // Nothing follows that would undo what the rule shows.
    bench.ask(3, "STAT:SNAP?", "{}");
    QCOMPARE(sweepValue(bench.payload(QStringLiteral("RSP")), "enabled"), QJsonValue(true));
}

QTEST_GUILESS_MAIN(TestSimulatorSweep)
#include "tst_simulator_sweep.moc"
