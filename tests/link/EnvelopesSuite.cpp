#include "link/Envelopes.h"
#include "link/LinkSuites.h"
#include "link/ModSnapshot.h"
#include "link/SweepSnapshot.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>

using namespace MinibarHelperProtocol;

class EnvelopesSuite final : public QObject
{
    Q_OBJECT

private slots:
    void aRequestIsOneCompactLine();
    void anObjectIsRead_data();
    void anObjectIsRead();
    void aResponseIsRead_data();
    void aResponseIsRead();
    void aSnapshotEventIsRead_data();
    void aSnapshotEventIsRead();
    void anyTextIsSurvived();
};

void EnvelopesSuite::aRequestIsOneCompactLine()
{
    const QString text =
        writeRequest(2147483647, QStringLiteral("SOUR:FREQ:CENT"),
                     {{QStringLiteral("hz"), 1e9}, {QStringLiteral("t"), QStringLiteral("a\nb")}});
    QCOMPARE(text,
             QStringLiteral(
                 R"({"args":{"hz":1000000000,"t":"a\nb"},"cmd":"SOUR:FREQ:CENT","id":2147483647,"v":1})"));
    QCOMPARE(writeRequest(1, QStringLiteral("X"), {}),
             QStringLiteral(R"({"args":{},"cmd":"X","id":1,"v":1})"));
}

void EnvelopesSuite::anObjectIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error"); // empty: read
    const auto parserError = [](const char* text) {
        QJsonParseError error;
        QJsonDocument::fromJson(text, &error);
        return error.errorString();
    };
    QTest::newRow("object") << QStringLiteral(R"({"a": 1})") << QString();
    QTest::newRow("empty object") << QStringLiteral("{}") << QString();
    QTest::newRow("array") << QStringLiteral("[1]") << QStringLiteral("Expected a JSON object.");
    QTest::newRow("nothing") << QString() << parserError("");
    QTest::newRow("cut") << QStringLiteral("{\"a\":") << parserError("{\"a\":");
    QTest::newRow("rubbish after") << QStringLiteral("{} x") << parserError("{} x");
}

void EnvelopesSuite::anObjectIsRead()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    const QJsonObject old{{QStringLiteral("old"), 1}};
    QJsonObject object = old;
    QString message;
    QCOMPARE(readObject(text, &object, &message), error.isEmpty());
    QCOMPARE(message, error);
    QCOMPARE(object == old, !error.isEmpty());
}

void EnvelopesSuite::aResponseIsRead_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("id");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("hasPayload");
    const QString none;
    QTest::newRow("ok") << QByteArray(R"({"id": 3, "ok": true, "payload": {"seq": 1}})") << 3 << true << none
                        << none << true;
    QTest::newRow("error") << QByteArray(
                                  R"({"id": 3, "ok": false, "error": {"code": "CONFLICT", "message": "m"}})")
                           << 3 << false << QStringLiteral("CONFLICT") << QStringLiteral("m") << false;
    QTest::newRow("error is not read when ok")
        << QByteArray(R"({"id": 3, "ok": true, "error": {"code": "X"}})") << 3 << true << none << none
        << false;
    QTest::newRow("empty") << QByteArray("{}") << 0 << false << none << none << false;
    QTest::newRow("wrong types") << QByteArray(R"({"id": "7", "ok": 1, "error": [1], "payload": [1]})") << 0
                                 << false << none << none << false;
    QTest::newRow("wrong types inside")
        << QByteArray(R"({"id": true, "error": {"code": 1, "message": {}}, "payload": {}})") << 0 << false
        << none << none << false;
    QTest::newRow("id 1e300") << QByteArray(R"({"id": 1e300})") << 0 << false << none << none << false;
    QTest::newRow("id 2.5") << QByteArray(R"({"id": 2.5})") << 0 << false << none << none << false;
    QTest::newRow("id 7.0") << QByteArray(R"({"id": 7.0})") << 7 << false << none << none << false;
    QTest::newRow("id negative") << QByteArray(R"({"id": -7})") << -7 << false << none << none << false;
}

void EnvelopesSuite::aResponseIsRead()
{
    QFETCH(QByteArray, json);
    QFETCH(int, id);
    QFETCH(bool, ok);
    QFETCH(QString, code);
    QFETCH(QString, message);
    QFETCH(bool, hasPayload);
    const Response response = readResponse(QJsonDocument::fromJson(json).object());
    QCOMPARE(response.id, id);
    QCOMPARE(response.ok, ok);
    QCOMPARE(response.errorCode, code);
    QCOMPARE(response.errorMessage, message);
    QCOMPARE(!response.payload.isEmpty(), hasPayload);
}

void EnvelopesSuite::aSnapshotEventIsRead_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isSnapshot");
    QTest::newRow("snapshot") << QByteArray(R"({"event": "STAT:SNAP", "payload": {"seq": 1}})") << true;
    QTest::newRow("other event") << QByteArray(R"({"event": "STAT:OTHER", "payload": {"seq": 1}})") << false;
    QTest::newRow("lower case") << QByteArray(R"({"event": "stat:snap", "payload": {"seq": 1}})") << false;
    QTest::newRow("no event") << QByteArray(R"({"payload": {"seq": 1}})") << false;
    QTest::newRow("event is a number") << QByteArray(R"({"event": 1, "payload": {"seq": 1}})") << false;
    QTest::newRow("no payload") << QByteArray(R"({"event": "STAT:SNAP"})") << false;
    QTest::newRow("payload is an array") << QByteArray(R"({"event": "STAT:SNAP", "payload": [1]})") << false;
    QTest::newRow("empty payload") << QByteArray(R"({"event": "STAT:SNAP", "payload": {}})") << false;
}

void EnvelopesSuite::aSnapshotEventIsRead()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, isSnapshot);
    QCOMPARE(!readSnapshotEvent(QJsonDocument::fromJson(json).object()).isEmpty(), isSnapshot);
}

// Seeded mutations of a living snapshot: whatever is read holds what its record promises.
void EnvelopesSuite::anyTextIsSurvived()
{
    const QByteArray good =
        R"({"event":"STAT:SNAP","id":1,"ok":false,"error":{"code":"X"},"payload":{"seq":5,)"
        R"("available":true,"revision":3,"enabled":true,"selectedPlanId":"fscan",)"
        R"("frequencyPlan":{"startHz":1,"stopHz":2,"stepHz":3},)"
        R"("levelPlan":{"startDbm":1,"stopDbm":2,"stepDb":3},"dwellSeconds":1,)"
        R"("supportedPlanIds":["fscan","lscan"],"businesses":[{"id":"a","text":"A"},{}]}})";
    const QByteArray pieces = "{}[]\":,-.eE0123456789truefalsnl\\u \xC3\xFF";
    QRandomGenerator random(20240229);
    int objects = 0;
    int sweeps = 0;
    for (int round = 0; round < 20'000; ++round) {
        QByteArray text = good;
        for (int changes = random.bounded(4); changes >= 0; --changes) {
            const int position = random.bounded(text.size());
            if (random.bounded(2) == 0)
                text[position] = pieces[random.bounded(pieces.size())];
            else
                text.remove(position, 1 + random.bounded(3));
        }
        QJsonObject envelope;
        QString error;
        if (!readObject(QString::fromUtf8(text), &envelope, &error)) {
            QVERIFY(!error.isEmpty());
            continue;
        }
        ++objects;
        const Response response = readResponse(envelope);
        QVERIFY(!response.ok || response.errorCode.isEmpty());
        for (const ModBusinessEntry& entry : parseModSnapshot(response.payload).businesses)
            QVERIFY(!entry.id.isEmpty() && !entry.text.isEmpty());
        SweepSnapshot sweep;
        error.clear();
        if (!parseSweepSnapshot(readSnapshotEvent(envelope), &sweep, &error)) {
            QVERIFY(!error.isEmpty());
            QVERIFY(sweep == SweepSnapshot());
            continue;
        }
        ++sweeps;
        QVERIFY(sweep.revision >= 1 && !sweep.supportedPlanIds.isEmpty() &&
                sweep.supportedPlanIds.size() <= 2);
        QVERIFY(sweep.settings.selectedPlanId != SweepPlanId::None &&
                std::isfinite(sweep.settings.dwellSeconds));
    }
    QVERIFY2(objects > 500 && sweeps > 100, "the mutations leave too little to look at");
}

std::unique_ptr<QObject> makeEnvelopesSuite()
{
    return std::make_unique<EnvelopesSuite>();
}

#include "EnvelopesSuite.moc"
