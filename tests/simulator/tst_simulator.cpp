#include "simulator/ErrorTexts.h"
#include "simulator/InstrumentCommands.h"
#include "simulator/JsonTexts.h"
#include "simulator/QuantityText.h"
#include "simulator/Scenario.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SnapshotWriter.h"

#include <QJsonArray>
#include <QSignalSpy>
#include <QtTest>

#include <limits>

using namespace Simulator;

class TestSimulator final : public QObject
{
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void nanLiesNowhere();
    void changesAreTold();
    void closingSwitchesOff();
    void everyErrorHasASentence();
    void snapshots_data();
    void snapshots();
    void merging_data();
    void merging();
    void typedFrequencies_data();
    void typedFrequencies();
    void typedLevels_data();
    void typedLevels();
    void examplesOfThePage();
    void brokenScenarios_data();
    void brokenScenarios();
    void brokenScenarioLeavesTheTarget();
    void missingScenarioFile();
};

void TestSimulator::commands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QString>("code");       // empty for a success
    QTest::addColumn<QString>("closedCode"); // the same for a closed instrument
    QTest::addColumn<QByteArray>("tx");      // what is different afterwards
    const auto add = [](const char* name, const char* command, const char* arguments, const char* code,
                        const char* closedCode, const char* tx) {
        QTest::newRow(name) << QString::fromLatin1(command) << QByteArray(arguments)
                            << QString::fromLatin1(code) << QString::fromLatin1(closedCode) << QByteArray(tx);
    };
    const auto row = [add](const char* name, const char* command, const char* arguments, const char* code,
                           const char* tx = "{}") { add(name, command, arguments, code, "NOT_OPEN", tx); };
    row("RF on", "OUTP:STAT", R"({"enabled":true})", "", R"({"rf":true})");
    row("RF off again", "OUTP:STAT", R"({"enabled":false})", "");
    row("RF missing", "OUTP:STAT", "{}", "INVALID_ARG");
    row("RF number", "OUTP:STAT", R"({"enabled":1})", "INVALID_ARG");
    row("RF text", "OUTP:STAT", R"({"enabled":"true"})", "INVALID_ARG");

    row("frequency", "SOUR:FREQ:CENT", R"({"hz":2.4e9})", "", R"({"centerHz":2.4e9,"centerText":"2.4 GHz"})");
    row("lowest frequency", "SOUR:FREQ:CENT", R"({"hz":9000})", "",
        R"({"centerHz":9000,"centerText":"9 kHz","centerUnit":"kHz"})");
    row("below the lowest", "SOUR:FREQ:CENT", R"({"hz":8999.999})", "INVALID_ARG");
    row("highest frequency", "SOUR:FREQ:CENT", R"({"hz":6e9})", "",
        R"({"centerHz":6e9,"centerText":"6 GHz"})");
    row("above the highest", "SOUR:FREQ:CENT", R"({"hz":6000000000.001})", "INVALID_ARG");
    row("negative frequency", "SOUR:FREQ:CENT", R"({"hz":-2.4e9})", "INVALID_ARG");
    row("frequency missing", "SOUR:FREQ:CENT", R"({"dbm":1})", "INVALID_ARG");
    row("frequency NaN text", "SOUR:FREQ:CENT", R"({"hz":"NaN"})", "INVALID_ARG");
    row("frequency text", "SOUR:FREQ:CENT", R"({"hz":"2400000000"})", "INVALID_ARG");
    row("frequency null", "SOUR:FREQ:CENT", R"({"hz":null})", "INVALID_ARG");
    row("frequency true", "SOUR:FREQ:CENT", R"({"hz":true})", "INVALID_ARG");

    row("level", "SOUR:POW:LEV", R"({"dbm":-10.125})", "",
        R"({"levelDbm":-10.125,"levelText":"-10.125 dBm"})");
    row("lowest level", "SOUR:POW:LEV", R"({"dbm":-120})", "", R"({"levelDbm":-120,"levelText":"-120 dBm"})");
    row("below the lowest level", "SOUR:POW:LEV", R"({"dbm":-120.001})", "INVALID_ARG");
    row("highest level", "SOUR:POW:LEV", R"({"dbm":20})", "", R"({"levelDbm":20,"levelText":"20 dBm"})");
    row("above the highest level", "SOUR:POW:LEV", R"({"dbm":20.001})", "INVALID_ARG");
    row("level missing", "SOUR:POW:LEV", "{}", "INVALID_ARG");
    row("level text", "SOUR:POW:LEV", R"({"dbm":"-10"})", "INVALID_ARG");
    row("level array", "SOUR:POW:LEV", R"({"dbm":[-10]})", "INVALID_ARG");

    add("state", "STAT:SNAP?", "{}", "", "", "{}");
    row("sweep without arguments", "SOUR:SWEEP:CONF", "{}", "INVALID_ARG");
    row("modulation without arguments", "SOUR:MOD:CONF", "{}", "INVALID_ARG");
    add("unknown", "SOUR:COFFEE", "{}", "NOT_SUPPORTED", "NOT_SUPPORTED", "{}");
    add("wrong case", "outp:stat", R"({"enabled":true})", "NOT_SUPPORTED", "NOT_SUPPORTED", "{}");
}

void TestSimulator::commands()
{
    QFETCH(QString, command);
    QFETCH(QByteArray, arguments);
    QFETCH(QString, code);
    QFETCH(QByteArray, tx);
    SignalGenerator instrument;
    const QJsonObject before = snapshotOf(instrument);
    const Host::Response response = execute(instrument, command, object(arguments));
    QCOMPARE(response.errorCode, code);
    QCOMPARE(response.ok, code.isEmpty());
    QVERIFY(response.ok || response.errorMessage.endsWith(QLatin1Char('.')));
    QCOMPARE(text(snapshotOf(instrument)), text(merged(before, {{QStringLiteral("tx"), object(tx)}})));

    SignalGenerator closed;
    closed.setOpen(false);
    QTEST(execute(closed, command, object(arguments)).errorCode, "closedCode");
}

void TestSimulator::nanLiesNowhere()
{
    SignalGenerator instrument;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {nan, infinity, -infinity}) {
        QCOMPARE(instrument.setCenterHz(value), SignalGenerator::Outcome::OutOfRange);
        QCOMPARE(instrument.setLevelDbm(value), SignalGenerator::Outcome::OutOfRange);
    }
    QCOMPARE(instrument.centerHz(), 1e9);
}

void TestSimulator::changesAreTold()
{
    SignalGenerator instrument;
    QSignalSpy changed(&instrument, &SignalGenerator::changed);
    QCOMPARE(instrument.setRfOn(true), SignalGenerator::Outcome::Done);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(instrument.setRfOn(true), SignalGenerator::Outcome::Done);
    QCOMPARE(instrument.setCenterHz(1), SignalGenerator::Outcome::OutOfRange);
    QCOMPARE(changed.count(), 1);
}

void TestSimulator::closingSwitchesOff()
{
    SignalGenerator instrument;
    instrument.setRfOn(true);
    QSignalSpy changed(&instrument, &SignalGenerator::changed);
    instrument.setOpen(false);
    QCOMPARE(changed.count(), 1);
    QVERIFY(!instrument.isRfOn());
    QCOMPARE(instrument.setRfOn(true), SignalGenerator::Outcome::NotOpen);
    QCOMPARE(instrument.setCenterHz(2e9), SignalGenerator::Outcome::NotOpen);
    instrument.setOpen(true);
    QVERIFY(!instrument.isRfOn());
    QCOMPARE(instrument.centerHz(), 1e9);
}

void TestSimulator::everyErrorHasASentence()
{
    for (const char* code : {"NOT_OPEN", "INVALID_ARG", "NOT_SUPPORTED", "INTERNAL_ERROR", "CONFLICT"})
        QVERIFY2(errorText(QString::fromLatin1(code)).endsWith(QLatin1Char('.')), code);
    QVERIFY(errorText(QStringLiteral("TIMEOUT")).isEmpty());
    QVERIFY(errorText(QString()).isEmpty());
}

void TestSimulator::snapshots_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QByteArray>("tx");
    QTest::newRow("start") << QByteArray("{}")
                           << QByteArray(
                                  R"({"centerHz":1000000000,"centerText":"1 GHz","centerUnit":"GHz",)"
                                  R"("levelDbm":-20,"levelText":"-20 dBm","levelUnit":"dBm","rf":false})");
    QTest::newRow("fine") << QByteArray(R"({"rf":true,"centerHz":123456789.012,"levelDbm":-0.5})")
                          << QByteArray(R"({"centerHz":123456789.012,"centerText":"123.456789012 MHz",)"
                                        R"("centerUnit":"MHz","levelDbm":-0.5,"levelText":"-0.5 dBm",)"
                                        R"("levelUnit":"dBm","rf":true})");
    QTest::newRow("closed") << QByteArray(R"({"deviceOpen":false})") << QByteArray(R"({"rf":false})");
}

void TestSimulator::snapshots()
{
    QFETCH(QByteArray, settings);
    Scenario scenario;
    QString error;
    QVERIFY2(parseScenario("{\"initial\":" + settings + "}", scenario, error), qPrintable(error));
    SignalGenerator instrument;
    scenario.initial.applyTo(instrument);
    const QJsonObject snapshot = snapshotOf(instrument);
    QTEST(text(snapshot.value(QStringLiteral("tx")).toObject()), "tx");
    const QJsonObject mod = snapshot.value(QStringLiteral("mod")).toObject();
    QCOMPARE(mod.value(QStringLiteral("enabled")), QJsonValue(false));
    const bool open = object(settings).value(QStringLiteral("deviceOpen")) != QJsonValue(false);
    QCOMPARE(snapshot.contains(QStringLiteral("sweep")), open);
    QCOMPARE(mod.value(QStringLiteral("businesses")).toArray().isEmpty(), !open);
    QVERIFY(!snapshot.contains(QStringLiteral("seq")));
}

void TestSimulator::merging_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QByteArray>("patch");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("nothing") << QByteArray(R"({"a":1})") << QByteArray("{}") << QByteArray(R"({"a":1})");
    QTest::newRow("replace") << QByteArray(R"({"a":1})") << QByteArray(R"({"a":"x"})")
                             << QByteArray(R"({"a":"x"})");
    QTest::newRow("remove") << QByteArray(R"({"a":1,"b":2})") << QByteArray(R"({"a":null})")
                            << QByteArray(R"({"b":2})");
    QTest::newRow("deep") << QByteArray(R"({"a":{"b":1,"c":2}})") << QByteArray(R"({"a":{"b":null,"d":3}})")
                          << QByteArray(R"({"a":{"c":2,"d":3}})");
    QTest::newRow("object over value")
        << QByteArray(R"({"a":1})") << QByteArray(R"({"a":{"b":1}})") << QByteArray(R"({"a":{"b":1}})");
    QTest::newRow("array") << QByteArray(R"({"a":[1]})") << QByteArray(R"({"a":[]})")
                           << QByteArray(R"({"a":[]})");
}

void TestSimulator::merging()
{
    QFETCH(QByteArray, target);
    QFETCH(QByteArray, patch);
    QTEST(text(merged(object(target), object(patch))), "result");
}

void TestSimulator::typedFrequencies_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("hz"); // negative: no frequency
    const auto row = [](const char* typed, double hz) {
        QTest::newRow(typed) << QString::fromLatin1(typed) << hz;
    };
    row("2.4 GHz", 2.4e9);
    row("2,4g", 2.4e9);
    row(" 900k ", 900e3);
    row("900 KHZ", 900e3);
    row("12.5m", 12.5e6);
    row("5000h", 5000);
    row("5000 Hz", 5000);
    row(".5G", 0.5e9);
    row("7", 7e6); // the unit that is shown
    row("-1 GHz", -1);
    row("GHz", -1);
    row("1e9", -1);
    row("2.4 GHzz", -1);
    row("2.4.1 GHz", -1);
}

void TestSimulator::typedFrequencies()
{
    QFETCH(QString, typed);
    QTEST(parseFrequency(typed, shownFactor(900e6)).value_or(-1), "hz");
}

void TestSimulator::typedLevels_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("dbm"); // 999: no level
    const auto row = [](const char* typed, double dbm) {
        QTest::newRow(typed) << QString::fromLatin1(typed) << dbm;
    };
    row("-10 dBm", -10);
    row("-10", -10);
    row("+3,5db", 3.5);
    row("- 10", 999);
    row("ten", 999);
}

void TestSimulator::typedLevels()
{
    QFETCH(QString, typed);
    QTEST(parseLevel(typed).value_or(999), "dbm");
}

void TestSimulator::examplesOfThePage()
{
    QFile page(QStringLiteral(SCENARIOS_PAGE));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QStringList pieces = QString::fromUtf8(page.readAll()).split(QStringLiteral("```"));
    int examples = 0;
    for (const QString& piece : pieces) {
        if (!piece.startsWith(QLatin1String("json\n")))
            continue;
        Scenario scenario;
        QString error;
        QVERIFY2(parseScenario(piece.mid(5).toUtf8(), scenario, error), qPrintable(error + piece));
        QVERIFY(!scenario.overlay.isEmpty() || !scenario.rules.isEmpty() || !scenario.timeline.isEmpty());
        ++examples;
    }
    QCOMPARE(examples, 3);
}

void TestSimulator::brokenScenarios_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* json, const char* error) {
        QTest::newRow(error) << QByteArray(json) << QString::fromLatin1(error);
    };
    row("{", "At byte 1: unterminated object.");
    row("[]", "The file must hold one object.");
    row(R"({"rule":[]})", "rule: is not a known key.");
    row(R"({"rules":{}})", "rules: must be an array.");
    row(R"({"rules":[3]})", "rules[0]: must be an object.");
    row(R"({"rules":[{}]})", "rules[0].cmd: is missing.");
    row(R"({"rules":[{"cmd":""}]})", "rules[0].cmd: must be a text that is not empty.");
    row(R"({"rules":[{"cmd":"A"},{"cmd":"A","nth":0}]})", "rules[1].nth: must be a whole number from 1 up.");
    row(R"({"rules":[{"cmd":"A","delayMs":-1}]})", "rules[0].delayMs: must be a whole number from 0 up.");
    row(R"({"rules":[{"cmd":"A","delayms":1}]})", "rules[0].delayms: is not a known key.");
    row(R"({"rules":[{"cmd":"A","silence":false}]})", "rules[0].silence: can only be true.");
    row(R"({"rules":[{"cmd":"A","silence":true,"close":true}]})",
        "rules[0].close: is a second action, one is allowed.");
    row(R"({"rules":[{"cmd":"A","error":{"code":"TIMEOUT"}}]})",
        "rules[0].error.code: must be an error code of the main process.");
    row(R"({"rules":[{"cmd":"A","error":"CONFLICT"}]})", "rules[0].error: must be an object.");
    row(R"({"rules":[{"cmd":"A","error":{"code":"CONFLICT","text":"x"}}]})",
        "rules[0].error.text: is not a known key.");
    row(R"({"rules":[{"cmd":"A","payload":[]}]})", "rules[0].payload: must be an object.");
    row(R"({"rules":[{"cmd":"A","raw":"a\nb"}]})", "rules[0].raw: must not hold a line feed.");
    row(R"({"initial":{"rf":"on"}})", "initial.rf: must be true or false.");
    row(R"({"initial":{"rf":true,"deviceOpen":false}})",
        "initial.rf: cannot be on while the instrument is closed.");
    row(R"({"initial":{"centerHz":8999}})", "initial.centerHz: must be a number from 9000 to 6000000000.");
    row(R"({"initial":{"sweep":{"speed":1}}})", "initial.sweep.speed: is not a known key.");
    row(R"({"initial":{"sweep":{"available":1}}})", "initial.sweep.available: must be true or false.");
    row(R"({"initial":{"sweep":{"supportedPlanIds":[]}}})",
        "initial.sweep.supportedPlanIds: must be an array of 'fscan', 'lscan' or both.");
    row(R"({"initial":{"sweep":{"selectedPlanId":"zigzag"}}})",
        "initial.sweep.selectedPlanId: must be the word of a sweep plan.");
    row(R"({"initial":{"sweep":{"frequencyPlan":{"startHz":1e9,"stopHz":2e9}}}})",
        "initial.sweep.frequencyPlan.stepHz: is missing.");
    row(R"({"initial":{"sweep":{"levelPlan":{"startDbm":0,"stopDbm":21,"stepDb":1}}}})",
        "initial.sweep.levelPlan.stopDbm: must be a number from -120 to 20.");
    row(R"({"initial":{"sweep":{"levelPlan":{"startDbm":5,"stopDbm":0,"stepDb":1}}}})",
        "initial.sweep: is refused: The stop level must lie above the start level (5 dBm).");
    row(R"({"timeline":[{"afterReady":0,"set":{"sweep":{"dwellSeconds":0}}}]})",
        "timeline[0].set.sweep.dwellSeconds: must be a number from 1e-06 to 100.");
    row(R"({"timeline":[{"afterReady":0,"set":{"enabledBusinessId":"streaming"}}]})",
        "timeline[0].set.enabledBusinessId: must be the id of a modulation that needs no file, or empty.");
    row(R"({"initial":{"enabledBusinessId":"cw"}})",
        "initial.enabledBusinessId: must be the id of a modulation that needs no file, or empty.");
    row(R"({"initial":{"levelDbm":20.1}})", "initial.levelDbm: must be a number from -120 to 20.");
    row(R"({"overlay":7})", "overlay: must be an object.");
    row(R"({"timeline":[{"show":true}]})", "timeline[0]: needs either 'afterReady' or 'afterVisible'.");
    row(R"({"timeline":[{"afterReady":1}]})", "timeline[0]: has no action.");
    row(R"({"timeline":[{"afterReady":1.5,"hide":true}]})",
        "timeline[0].afterReady: must be a whole number from 0 up.");
    row(R"({"timeline":[{"afterReady":0,"show":[1]}]})",
        "timeline[0].show: must be true or two whole numbers [x, y].");
    row(R"({"timeline":[{"afterReady":0,"set":{"freq":1}}]})", "timeline[0].set.freq: is not a known key.");
    row(R"({"timeline":[{"afterReady":0,"hide":true,"shutdown":true}]})",
        "timeline[0].shutdown: is a second action, one is allowed.");
}

void TestSimulator::brokenScenarios()
{
    QFETCH(QByteArray, json);
    Scenario scenario;
    QString error;
    QVERIFY(!parseScenario(json, scenario, error));
    QTEST(error, "error");
}

void TestSimulator::brokenScenarioLeavesTheTarget()
{
    Scenario scenario;
    scenario.overlay = object(R"({"a":1})");
    QString error;
    QVERIFY(!parseScenario(R"({"overlay":{"b":1},"x":1})", scenario, error));
    QCOMPARE(text(scenario.overlay), QByteArray(R"({"a":1})"));
}

void TestSimulator::missingScenarioFile()
{
    Scenario scenario;
    QString error;
    QVERIFY(!loadScenario(QStringLiteral("/nonexistent/tour.json"), scenario, error));
    QVERIFY2(error.startsWith(QLatin1String("/nonexistent/tour.json: ")), qPrintable(error));
}

QTEST_MAIN(TestSimulator)
#include "tst_simulator.moc"
