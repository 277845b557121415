#include "minibar/BarStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

QJsonObject object(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonObject result = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON: %s", json.constData());
    return result;
}

const QByteArray validSweep =
    R"("sweep":{"available":true,"revision":3,"enabled":true,"selectedPlanId":"fscan",
    "frequencyPlan":{"startHz":1,"stopHz":2,"stepHz":3},"levelPlan":{"startDbm":4,"stopDbm":5,"stepDb":6},
    "dwellSeconds":0.5,"supportedPlanIds":["fscan"]})";

} // namespace

class TestBarStatus : public QObject
{
    Q_OBJECT

private slots:
    void startValues();
    void sequence_data();
    void sequence();
    void texts_data();
    void texts();
    void numbersStayWithoutNewOnes();
    void units();
    void sweep();
    void malformedSweepIsLoggedAndDropped();
    void modulation();
    void wrongTypesReadAsEmpty_data();
    void wrongTypesReadAsEmpty();
};

void TestBarStatus::startValues()
{
    const BarStatus status;
    QCOMPARE(status.lastSequence, 0);
    QCOMPARE(status.rfOn, false);
    QCOMPARE(status.centerHz, 1000000000.0);
    QCOMPARE(status.levelDbm, -20.0);
    QVERIFY(status.rfText.isEmpty() && status.frequencyText.isEmpty() && status.levelText.isEmpty());
    QVERIFY(status.centerUnit.isEmpty() && status.levelUnit.isEmpty());
    QVERIFY(!status.sweepPresent && !status.modulationOn && status.businesses.isEmpty());
}

void TestBarStatus::sequence_data()
{
    QTest::addColumn<QStringList>("sequences"); // the texts of "seq"; "" leaves the key out
    QTest::addColumn<QString>("taken");         // one letter a snapshot: y or n
    QTest::addColumn<int>("last");

    const auto row = [](const char* name, const char* sequences, const char* taken, int last) {
        QTest::newRow(name) << QString::fromLatin1(sequences).split(QLatin1Char(' '))
                            << QString::fromLatin1(taken) << last;
    };
    row("older is dropped", "5 4", "yn", 5);
    row("equal is taken", "5 5", "yy", 5);
    row("rising", "1 2 9", "yyy", 9);
    row("zero is always taken and changes nothing", "5 0 4 5", "yyny", 5);
    row("negative is always taken", "5 -1 4", "yyn", 5);
    row("missing is always taken", "5 - 4", "yyn", 5);
    row("first one may be any", "2147483647 2147483646", "yn", 2147483647);
    row("no integer counts as none", "5 4.5 1e300 4", "yyyn", 5);
    row("text counts as none", "5 \"1\" true null 4", "yyyyn", 5);
}

void TestBarStatus::sequence()
{
    QFETCH(QStringList, sequences);
    QFETCH(QString, taken);
    BarStatus status;
    int number = 0;
    for (const QString& sequence : qAsConst(sequences)) {
        const QString json =
            sequence == QLatin1String("-")
                ? QStringLiteral(R"({"tx":{"centerText":"%1"}})").arg(++number)
                : QStringLiteral(R"({"seq":%2,"tx":{"centerText":"%1"}})").arg(++number).arg(sequence);
        const QString before = status.frequencyText;
        const bool expected = taken.at(number - 1) == QLatin1Char('y');
        QCOMPARE(status.apply(object(json.toUtf8())), expected);
        QCOMPARE(status.frequencyText, expected ? QString::number(number) : before);
    }
    QTEST(status.lastSequence, "last");
}

void TestBarStatus::texts_data()
{
    QTest::addColumn<QByteArray>("tx");
    QTest::addColumn<QString>("rf");
    QTest::addColumn<QString>("frequency");
    QTest::addColumn<QString>("level");

    const auto row = [](const char* name, const char* tx, const char* rf, const char* frequency,
                        const char* level) {
        QTest::newRow(name) << QByteArray(tx) << QString::fromUtf8(rf) << QString::fromUtf8(frequency)
                            << QString::fromUtf8(level);
    };
    row("nothing", "{}", "OFF", "--", "--");
    row("on", R"({"rf":true})", "ON", "--", "--");
    row("rf of another type", R"({"rf":1})", "OFF", "--", "--");
    row("ready-made texts", R"({"centerText":"2.4 GHz","levelText":"-7 dBm"})", "OFF", "2.4 GHz", "-7 dBm");
    row("texts are trimmed", R"({"centerText":"  2.4 GHz\t","levelText":"\n-7 dBm "})", "OFF", "2.4 GHz",
        "-7 dBm");
    row("blank texts count as none", R"({"centerText":"  ","levelText":" "})", "OFF", "--", "--");
    row("blank texts and numbers",
        R"({"centerText":"  ","centerHz":2400000000,"levelText":" ","levelDbm":-7.25})", "OFF", "2.4GHz",
        "-7.25 dBm");
    row("texts win over numbers", R"({"centerText":"x","centerHz":1,"levelText":"y","levelDbm":1})", "OFF",
        "x", "y");
    row("numbers", R"({"centerHz":999999999.9996,"levelDbm":-0.0001})", "OFF", "1GHz", "0 dBm");
    row("level to three decimals", R"({"levelDbm":-10.12345})", "OFF", "--", "-10.123 dBm");
    row("numbers as texts are none", R"({"centerHz":"1","levelDbm":"1"})", "OFF", "--", "--");
    row("text of another type", R"({"centerText":5,"levelText":[]})", "OFF", "--", "--");
}

void TestBarStatus::texts()
{
    QFETCH(QByteArray, tx);
    BarStatus status;
    QVERIFY(status.apply(object("{\"tx\":" + tx + "}")));
    QTEST(status.rfText, "rf");
    QTEST(status.frequencyText, "frequency");
    QTEST(status.levelText, "level");
}

void TestBarStatus::numbersStayWithoutNewOnes()
{
    BarStatus status;
    QVERIFY(status.apply(object(R"({"tx":{"centerHz":5e9,"levelDbm":3}})")));
    QVERIFY(status.apply(object(R"({"tx":{"centerHz":"no","centerText":"text"}})")));
    QCOMPARE(status.centerHz, 5e9);
    QCOMPARE(status.levelDbm, 3.0);
    QCOMPARE(status.frequencyText, QStringLiteral("text"));
    QCOMPARE(status.levelText, QStringLiteral("--"));
}

void TestBarStatus::units()
{
    BarStatus status;
    QVERIFY(status.apply(object(R"({"tx":{"centerUnit":"MHz","levelUnit":"dBm"}})")));
    QCOMPARE(status.centerUnit, QStringLiteral("MHz"));
    QCOMPARE(status.levelUnit, QStringLiteral("dBm"));
    QVERIFY(status.apply(object("{}")));
    QVERIFY(status.centerUnit.isEmpty() && status.levelUnit.isEmpty());
}

void TestBarStatus::sweep()
{
    BarStatus status;
    QVERIFY(status.apply(object("{" + validSweep + "}")));
    QVERIFY(status.sweepPresent);
    QVERIFY(status.sweepActive());
    QCOMPARE(status.sweep.revision, 3);
    QVERIFY(status.apply(object(R"({"sweep":[]})")));
    QVERIFY(!status.sweepPresent);
    QVERIFY(status.sweep == SweepSnapshot());
}

void TestBarStatus::malformedSweepIsLoggedAndDropped()
{
    BarStatus status;
    QVERIFY(status.apply(object("{" + validSweep + "}")));
    QTest::ignoreMessage(QtWarningMsg,
                         "Ignoring malformed minibar Sweep snapshot: Expected boolean field 'available'.");
    QVERIFY(status.apply(object(R"({"sweep":{},"tx":{"rf":true}})")));
    QVERIFY(!status.sweepPresent);
    QVERIFY(status.sweep == SweepSnapshot());
    QVERIFY(status.rfOn); // the rest of the snapshot counts
}

void TestBarStatus::modulation()
{
    BarStatus status;
    QVERIFY(status.apply(object(R"({"mod":{"enabled":true,"enabledBusinessId":"b","businesses":[
        {"id":"b","text":"B","name":"n","revision":4},{"id":"","text":"x"},{"id":"c","text":""},5,{"id":"a","text":"A"}]}})")));
    QVERIFY(status.modulationOn);
    QCOMPARE(status.enabledBusinessId, QStringLiteral("b"));
    QCOMPARE(status.businesses.size(), 2);
    QCOMPARE(status.businesses.at(0).id, QStringLiteral("b"));
    QCOMPARE(status.businesses.at(0).revision, 4);
    QCOMPARE(status.businesses.at(1).id, QStringLiteral("a"));
    QVERIFY(status.apply(object("{}")));
    QVERIFY(!status.modulationOn && status.enabledBusinessId.isEmpty() && status.businesses.isEmpty());
}

void TestBarStatus::wrongTypesReadAsEmpty_data()
{
    QTest::addColumn<QByteArray>("snapshot");
    QTest::newRow("tx is a list") << QByteArray(R"({"tx":[1]})");
    QTest::newRow("mod is a text") << QByteArray(R"({"mod":"on"})");
    QTest::newRow("businesses is an object") << QByteArray(R"({"mod":{"businesses":{"id":"a","text":"A"}}})");
    QTest::newRow("enabled is a number") << QByteArray(R"({"mod":{"enabled":1,"enabledBusinessId":7}})");
}

void TestBarStatus::wrongTypesReadAsEmpty()
{
    QFETCH(QByteArray, snapshot);
    BarStatus status;
    QVERIFY(status.apply(object(snapshot)));
    QVERIFY(!status.rfOn && !status.modulationOn);
    QVERIFY(status.enabledBusinessId.isEmpty() && status.businesses.isEmpty());
    QCOMPARE(status.frequencyText, QStringLiteral("--"));
}

QTEST_GUILESS_MAIN(TestBarStatus)
#include "tst_bar_status.moc"
