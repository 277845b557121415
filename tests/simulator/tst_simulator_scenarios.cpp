#include "simulator/SweepTalk.h"
#include "simulator/modulation/ItemTalk.h"

#include <QDir>

using namespace Simulator;

namespace {

// A scenario of the folder that goes with the documents.
Scenario shipped(const char* name)
{
    Scenario scenario;
    QString error;
    if (!loadScenario(QDir(QStringLiteral(SCENARIOS)).filePath(QLatin1String(name)), scenario, error))
        qFatal("%s", qPrintable(error));
    return scenario;
}

} // namespace

class TestSimulatorScenarios final : public QObject
{
    Q_OBJECT

private slots:
    void shippedScenarios_data();
    void shippedScenarios();
    void shippedMalformedScenario();
    void shippedHandScenario();
    void shippedModulationScenario();
    void shippedConflictScenario();
    void everyShippedScenarioIsTested();
};

void TestSimulatorScenarios::shippedScenarios_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("expected"); // of the sweep in the first snapshot
    QTest::addColumn<QString>("codeOfChange");
    const auto row = [](const char* file, const char* expected, const char* code) {
        QTest::newRow(file) << QString::fromLatin1(file) << QByteArray(expected) << QString::fromLatin1(code);
    };
    row("sweep-levels.json",
        R"({"available":true,"enabled":true,"selectedPlanId":"lscan","dwellSeconds":0.02})", "");
    row("sweep-unavailable.json", R"({"available":false,"enabled":false,"dwellSeconds":0.5})",
        "NOT_SUPPORTED");
    row("sweep-unsupported-plan.json",
        R"({"available":false,"selectedPlanId":"unsupported","supportedPlanIds":["fscan"]})",
        "NOT_SUPPORTED");
}

void TestSimulatorScenarios::shippedScenarios()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, expected);
    Bench bench(shipped(file.toLatin1().constData()));
    const QJsonObject sweep = sweepOf(bench.first);
    QCOMPARE(merged(sweep, object(expected)), sweep);
    QCOMPARE(parsed(bench.first), bench.instrument.sweep());
    bench.ask(1, "SOUR:SWEEP:CONF", requestWith(R"({"dwellSeconds":2})", revision(bench.first)));
    QTEST(bench.errorCode(), "codeOfChange");
}

void TestSimulatorScenarios::shippedMalformedScenario()
{
    Bench bench(shipped("sweep-malformed.json"));
    SweepSnapshot sweep;
    QString error;
    QVERIFY(!MinibarHelperProtocol::parseSweepSnapshot(sweepOf(bench.first), &sweep, &error));
    QCOMPARE(error, QStringLiteral("Expected numeric field 'dwellSeconds'."));
    QVERIFY(bench.first.contains(QStringLiteral("tx")));
}

void TestSimulatorScenarios::shippedHandScenario()
{
    Scenario scenario = shipped("sweep-turned-by-hand.json");
    QCOMPARE(scenario.timeline.size(), 3);
    for (ScenarioStep& step : scenario.timeline)
        step.delayMs /= 100;
    Bench bench(scenario);
    QVERIFY(bench.f.host.sendShow());
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    bench.f.helper.say(QStringLiteral("VISIBLE"));
    QCOMPARE(sweepValue(bench.payload(QStringLiteral("EVT")), "enabled"), QJsonValue(true));
    QCOMPARE(parsed(bench.payload(QStringLiteral("EVT"))).settings.startHz, 2.4e9);
    const QJsonObject last = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(sweepValue(last, "selectedPlanId"), QJsonValue(QStringLiteral("lscan")));
    QCOMPARE(revision(last), 4);
}

void TestSimulatorScenarios::shippedModulationScenario()
{
    Scenario scenario = shipped("modulation-fm-on.json");
    scenario.timeline.first().delayMs = 10;
    Bench bench(scenario);
    QCOMPARE(enabledIn(bench.first), QStringLiteral("fm"));
    QVERIFY(bench.f.host.sendShow());
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    bench.f.helper.say(QStringLiteral("VISIBLE"));
    const QJsonObject pushed = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(enabledIn(pushed), QStringLiteral("am"));
    QCOMPARE(itemIn(pushed, QStringLiteral("fm")).revision, 3);
}

void TestSimulatorScenarios::shippedConflictScenario()
{
    Bench bench(shipped("modulation-conflict.json"));
    for (int i = 1; i <= 5; ++i) {
        bench.ask(i, "SOUR:MOD:CONF", R"({"businessId":"am"})");
        QCOMPARE(bench.errorCode(), i == 2 || i == 4 ? QStringLiteral("CONFLICT") : QString());
    }
}

void TestSimulatorScenarios::everyShippedScenarioIsTested()
{
    const QStringList files = QDir(QStringLiteral(SCENARIOS)).entryList(QDir::Files);
    QCOMPARE(files, (QStringList{
                        QStringLiteral("modulation-conflict.json"), QStringLiteral("modulation-fm-on.json"),
                        QStringLiteral("sweep-levels.json"), QStringLiteral("sweep-malformed.json"),
                        QStringLiteral("sweep-turned-by-hand.json"), QStringLiteral("sweep-unavailable.json"),
                        QStringLiteral("sweep-unsupported-plan.json")}));
}

QTEST_GUILESS_MAIN(TestSimulatorScenarios)
#include "tst_simulator_scenarios.moc"
