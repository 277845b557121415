#include "simulator/Bench.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using namespace Simulator;

namespace {

QString request(int id, const QString& command, const QString& arguments)
{
    return QStringLiteral(R"(REQ {"v":1,"id":%1,"cmd":"%2","args":{%3}})").arg(id).arg(command, arguments);
}

QString switchOn(int id)
{
    return request(id, QStringLiteral("OUTP:STAT"), QStringLiteral(R"("enabled":true)"));
}

QString tune(int id, const QString& hz)
{
    return request(id, QStringLiteral("SOUR:FREQ:CENT"), QStringLiteral("\"hz\":") + hz);
}

QJsonValue tx(const QJsonObject& snapshot, const char* key)
{
    return snapshot.value(QStringLiteral("tx")).toObject().value(QLatin1String(key));
}

} // namespace

class TestSimulatorRules final : public QObject
{
    Q_OBJECT

private slots:
    void readyGetsASnapshot();
    void requestIsAnsweredWithTheNewState();
    void refusalChangesNothing();
    void changeAtTheInstrumentIsPushed();
    void overlayLiesOverEverySnapshot();
    void ruleDelay();
    void ruleError();
    void ruleSilence();
    void ruleStale();
    void rulePayload();
    void ruleClose();
    void ruleRaw();
    void occurrencesAreCounted();
    void firstFittingRuleCounts();
    void timelineInOrder();
    void timelineAfterVisible();
    void newRunBeginsAgain();
};

void TestSimulatorRules::readyGetsASnapshot()
{
    Bench bench(R"({"initial":{"rf":true,"centerHz":2.4e9}})");
    QCOMPARE(seq(bench.first), 1);
    QCOMPARE(tx(bench.first, "rf"), QJsonValue(true));
    QCOMPARE(tx(bench.first, "centerText"), QJsonValue(QStringLiteral("2.4 GHz")));
}

void TestSimulatorRules::requestIsAnsweredWithTheNewState()
{
    Bench bench("{}");
    QSignalSpy handled(&bench.desk, &RequestDesk::handled);
    bench.f.helper.say(switchOn(5));
    const QJsonObject response = bench.hear(QStringLiteral("RSP"));
    QCOMPARE(response.value(QStringLiteral("id")), QJsonValue(5));
    QCOMPARE(response.value(QStringLiteral("ok")), QJsonValue(true));
    const QJsonObject snapshot = response.value(QStringLiteral("payload")).toObject();
    QCOMPARE(tx(snapshot, "rf"), QJsonValue(true));
    QCOMPARE(seq(snapshot), 2);
    QCOMPARE(handled.count(), 1);
    QCOMPARE(handled.at(0).at(0).toString(), QStringLiteral("OUTP:STAT enabled true"));
    // Nothing was pushed beside the answer: the next line answers the next request.
    bench.f.helper.say(request(6, QStringLiteral("STAT:SNAP?"), QString()));
    QCOMPARE(seq(bench.payload(QStringLiteral("RSP"))), 3);
}

void TestSimulatorRules::refusalChangesNothing()
{
    Bench bench("{}");
    bench.f.helper.say(tune(1, QStringLiteral("1")));
    const QJsonObject response = bench.hear(QStringLiteral("RSP"));
    QCOMPARE(response.value(QStringLiteral("ok")), QJsonValue(false));
    QCOMPARE(response.value(QStringLiteral("error")).toObject().value(QStringLiteral("message")).toString(),
             QStringLiteral("The frequency must lie between 9 kHz and 6 GHz."));
    QVERIFY(!response.contains(QStringLiteral("payload")));
    QCOMPARE(bench.instrument.centerHz(), 1e9);
}

void TestSimulatorRules::changeAtTheInstrumentIsPushed()
{
    Bench bench("{}");
    bench.instrument.setRfOn(true);
    const QJsonObject snapshot = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(tx(snapshot, "rf"), QJsonValue(true));
    QCOMPARE(seq(snapshot), 2);
}

void TestSimulatorRules::overlayLiesOverEverySnapshot()
{
    Bench bench(R"({"overlay":{"tx":{"centerText":null,"levelText":"low"},"extra":1}})");
    bench.f.helper.say(switchOn(1));
    for (const QJsonObject& snapshot : {bench.first, bench.payload(QStringLiteral("RSP"))}) {
        QVERIFY(tx(snapshot, "centerText").isUndefined());
        QCOMPARE(tx(snapshot, "levelText"), QJsonValue(QStringLiteral("low")));
        QCOMPARE(tx(snapshot, "centerHz"), QJsonValue(1e9));
        QCOMPARE(snapshot.value(QStringLiteral("extra")), QJsonValue(1));
    }
}

void TestSimulatorRules::ruleDelay()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","delayMs":150}]})");
    QElapsedTimer watch;
    watch.start();
    bench.f.helper.say(switchOn(1));
    bench.f.helper.say(tune(2, QStringLiteral("2e9"))); // overtakes
    QCOMPARE(bench.hear(QStringLiteral("RSP")).value(QStringLiteral("id")), QJsonValue(2));
    QVERIFY(!bench.instrument.isRfOn());
    QCOMPARE(bench.hear(QStringLiteral("RSP")).value(QStringLiteral("id")), QJsonValue(1));
    QVERIFY(watch.elapsed() >= 140);
    QVERIFY(bench.instrument.isRfOn());
}

void TestSimulatorRules::ruleError()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","error":{"code":"CONFLICT"}},
                             {"cmd":"SOUR:FREQ:CENT","error":{"code":"INTERNAL_ERROR","message":"On fire."}}]})");
    bench.f.helper.say(switchOn(1));
    bench.f.helper.say(tune(2, QStringLiteral("2e9")));
    const QJsonObject usual = bench.hear(QStringLiteral("RSP")).value(QStringLiteral("error")).toObject();
    QCOMPARE(usual.value(QStringLiteral("code")), QJsonValue(QStringLiteral("CONFLICT")));
    QCOMPARE(usual.value(QStringLiteral("message")),
             QJsonValue(QStringLiteral("The settings have changed in the meantime.")));
    const QJsonObject own = bench.hear(QStringLiteral("RSP")).value(QStringLiteral("error")).toObject();
    QCOMPARE(own.value(QStringLiteral("message")), QJsonValue(QStringLiteral("On fire.")));
    QVERIFY(!bench.instrument.isRfOn());
    QCOMPARE(bench.instrument.centerHz(), 1e9);
}

void TestSimulatorRules::ruleSilence()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","silence":true}]})");
    bench.f.helper.say(switchOn(1));
    bench.f.helper.say(tune(2, QStringLiteral("2e9")));
    QCOMPARE(bench.hear(QStringLiteral("RSP")).value(QStringLiteral("id")), QJsonValue(2));
    QVERIFY(!bench.instrument.isRfOn());
}

void TestSimulatorRules::ruleStale()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","stale":true}]})");
    bench.f.helper.say(switchOn(1));
    const QJsonObject event = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(seq(event), 2);
    QCOMPARE(tx(event, "rf"), QJsonValue(true));
    const QJsonObject answer = bench.payload(QStringLiteral("RSP"));
    QCOMPARE(answer, bench.first);
}

void TestSimulatorRules::rulePayload()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","payload":{"seq":77,"tx":{"rf":null}}}]})");
    bench.f.helper.say(switchOn(1));
    const QJsonObject snapshot = bench.payload(QStringLiteral("RSP"));
    QCOMPARE(seq(snapshot), 77);
    QVERIFY(tx(snapshot, "rf").isUndefined());
    QCOMPARE(tx(snapshot, "centerHz"), QJsonValue(1e9));
    QVERIFY(bench.instrument.isRfOn());
}

void TestSimulatorRules::ruleClose()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","close":true}]})");
    bench.f.helper.say(switchOn(1));
    QTRY_VERIFY(!bench.f.helper.isConnected());
    QVERIFY(!bench.instrument.isRfOn());
}

void TestSimulatorRules::ruleRaw()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","raw":"RSP {\"id\":{id},\"ok\":3"}]})");
    bench.f.helper.say(switchOn(41));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral(R"(RSP {"id":41,"ok":3)"));
}

void TestSimulatorRules::occurrencesAreCounted()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","nth":2,"error":{"code":"CONFLICT"}},
                             {"cmd":"*","nth":4,"error":{"code":"INTERNAL_ERROR"}}]})");
    bench.f.helper.say(switchOn(1));
    bench.f.helper.say(tune(2, QStringLiteral("2e9")));
    bench.f.helper.say(switchOn(3));
    bench.f.helper.say(switchOn(4));
    bench.f.helper.say(switchOn(5));
    QCOMPARE(bench.errorCode(), QString());
    QCOMPARE(bench.errorCode(), QString());
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
    QCOMPARE(bench.errorCode(), QStringLiteral("INTERNAL_ERROR"));
    QCOMPARE(bench.errorCode(), QString());
}

void TestSimulatorRules::firstFittingRuleCounts()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT"},{"cmd":"*","error":{"code":"CONFLICT"}}]})");
    bench.f.helper.say(switchOn(1));
    bench.f.helper.say(tune(2, QStringLiteral("2e9")));
    QCOMPARE(bench.errorCode(), QString());
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
}

void TestSimulatorRules::timelineInOrder()
{
    Bench bench(R"({"timeline":[{"afterReady":120,"shutdown":true},
                                {"afterReady":0,"push":{"seq":9,"tx":{"rf":true}}},
                                {"afterReady":20,"raw":"EVT what"},
                                {"afterReady":40,"set":{"rf":true,"levelDbm":3}},
                                {"afterReady":60,"show":[12,-34]},
                                {"afterReady":80,"show":true},
                                {"afterReady":100,"hide":true}]})");
    const QJsonObject pushed = bench.payload(QStringLiteral("EVT"));
    QCOMPARE(seq(pushed), 9);
    QCOMPARE(tx(pushed, "rf"), QJsonValue(true));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("EVT what"));
    QCOMPARE(tx(bench.payload(QStringLiteral("EVT")), "levelDbm"), QJsonValue(3));
    QCOMPARE(tx(bench.payload(QStringLiteral("EVT")), "rf"), QJsonValue(true));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHOW_MINIBAR 12,-34"));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("HIDE_MINIBAR"));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHUTDOWN"));
}

void TestSimulatorRules::timelineAfterVisible()
{
    Bench bench(R"({"timeline":[{"afterVisible":0,"raw":"EVT seen"},{"afterReady":0,"raw":"EVT ready"}]})");
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("EVT ready"));
    QVERIFY(bench.f.host.sendShow());
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    bench.f.helper.say(QStringLiteral("VISIBLE"));
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("EVT seen"));
    // Only the first time.
    QVERIFY(bench.f.host.sendShow());
    QCOMPARE(bench.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    bench.f.helper.say(QStringLiteral("VISIBLE"));
    QTRY_COMPARE(bench.f.host.bar(), HelperHost::Bar::Visible);
    bench.instrument.setRfOn(true);
    QCOMPARE(tx(bench.payload(QStringLiteral("EVT")), "rf"), QJsonValue(true));
}

void TestSimulatorRules::newRunBeginsAgain()
{
    Bench bench(R"({"rules":[{"cmd":"OUTP:STAT","nth":1,"error":{"code":"CONFLICT"}},
                             {"cmd":"SOUR:FREQ:CENT","delayMs":300}]})");
    bench.f.helper.say(switchOn(1));
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
    bench.f.helper.say(tune(2, QStringLiteral("2e9")));
    bench.f.host.sendShutdown();
    bench.f.runner->end(0);
    bench.f.helper.leave();
    bench.f.reachReady();
    QCOMPARE(seq(bench.payload(QStringLiteral("EVT"))), 2);
    bench.f.helper.say(switchOn(1));
    QCOMPARE(bench.errorCode(), QStringLiteral("CONFLICT"));
    // The answer that the old run owed never comes, neither does its change.
    bench.f.helper.say(tune(2, QStringLiteral("3e9")));
    QCOMPARE(tx(bench.payload(QStringLiteral("RSP")), "centerHz"), QJsonValue(3e9));
}

QTEST_GUILESS_MAIN(TestSimulatorRules)
#include "tst_simulator_rules.moc"
