#include "link/ClientFixture.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QTest>
#include <QTimer>

#include <functional>
#include <limits>

// Requests, their responses and time-outs, and events.
class ClientRequestsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void idsWrapAfterTheLargest();
    void aSlotSendsItsCommand_data();
    void aSlotSendsItsCommand();
    void idsCountUp();
    void eachPendingRequestHasItsTimer();
    void aResponseEndsItsRequest_data();
    void aResponseEndsItsRequest();
    void aResponseToAnotherIdEndsNothing_data();
    void aResponseToAnotherIdEndsNothing();
    void aMalformedPayloadIsTold_data();
    void aMalformedPayloadIsTold();
    void onlyTheNewestRequestsPayloadIsTrusted();
    void aSecondResponseEndsNothing();
    void aRequestMadeWhenOneFinishesIsTheNewest();
    void anEventGivesItsSnapshot_data();
    void anEventGivesItsSnapshot();
    void aRequestTimesOut();
};

void ClientRequestsSuite::idsWrapAfterTheLargest()
{
    RequestIds fresh;
    QCOMPARE(fresh.take(), 1);
    QCOMPARE(fresh.take(), 2);
    RequestIds ids(std::numeric_limits<int>::max() - 1);
    QCOMPARE(ids.take(), 2147483646);
    QCOMPARE(ids.take(), 2147483647);
    QCOMPARE(ids.take(), 1);
    QCOMPARE(ids.take(), 2);
}

using Act = std::function<void(MinibarClient&)>;
Q_DECLARE_METATYPE(Act)

void ClientRequestsSuite::aSlotSendsItsCommand_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("arguments");
    QTest::newRow("RF on") << Act([](MinibarClient& client) { client.setRfEnabled(true); })
                           << QByteArray("OUTP:STAT") << QByteArray(R"({"enabled":true})");
    QTest::newRow("RF off") << Act([](MinibarClient& client) { client.setRfEnabled(false); })
                            << QByteArray("OUTP:STAT") << QByteArray(R"({"enabled":false})");
    QTest::newRow("centre") << Act([](MinibarClient& client) { client.setCenterFrequency(2.4e9); })
                            << QByteArray("SOUR:FREQ:CENT") << QByteArray(R"({"hz":2400000000})");
    QTest::newRow("level") << Act([](MinibarClient& client) { client.setLevel(-12.5); })
                           << QByteArray("SOUR:POW:LEV") << QByteArray(R"({"dbm":-12.5})");
    QTest::newRow("sweep")
        << Act([](MinibarClient& client) {
               MinibarHelperProtocol::SweepChangeRequest request;
               request.expectedRevision = 9;
               client.changeSweep(request);
           })
        << QByteArray("SOUR:SWEEP:CONF")
        << QByteArray(R"({"dwellSeconds":0.001,"enabled":false,"expectedRevision":9,"frequencyPlan":)"
                      R"({"startHz":1000000000,"stepHz":10000000,"stopHz":2000000000},"levelPlan":)"
                      R"({"startDbm":-20,"stepDb":1,"stopDbm":-19},"selectedPlanId":"fscan"})");
    QTest::newRow("modulation") << Act([](MinibarClient& client) {
        MinibarHelperProtocol::ModChangeRequest request;
        request.businessId = QStringLiteral("am");
        request.action = QStringLiteral("clear-file");
        client.changeModulation(request);
    }) << QByteArray("SOUR:MOD:CONF")
                                << QByteArray(R"({"action":"clear-file","args":{},"businessId":"am"})");
    QTest::newRow("any") << Act([](MinibarClient& client) {
        client.sendRequest(QStringLiteral("X:Y"), {{QStringLiteral("text"), QStringLiteral("a\nb")}});
    }) << QByteArray("X:Y")
                         << QByteArray(R"({"text":"a\nb"})");
}

void ClientRequestsSuite::aSlotSendsItsCommand()
{
    QFETCH(Act, act);
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, arguments);
    ClientFixture f;
    act(f.client);
    QCOMPARE(f.log, QStringList(QStringLiteral("started 1")));
    QVERIFY(f.main.waitForRequests(1));
    QCOMPARE(f.main.received(),
             "REQ {\"args\":" + arguments + ",\"cmd\":\"" + command + "\",\"id\":1,\"v\":1}\n");
}

void ClientRequestsSuite::idsCountUp()
{
    ClientFixture f;
    for (int i = 1; i <= 3; ++i)
        QVERIFY(f.client.sendRequest(QStringLiteral("X"), {}));
    QVERIFY(f.main.waitForRequests(3));
    for (int i = 1; i <= 3; ++i)
        QCOMPARE(f.main.requests()[i - 1].value(QStringLiteral("id")).toInt(), i);
}

void ClientRequestsSuite::eachPendingRequestHasItsTimer()
{
    ClientFixture f;
    f.client.setRfEnabled(true);
    f.client.setRfEnabled(false);
    const QList<QTimer*> timers = f.client.findChildren<QTimer*>();
    QCOMPARE(timers.size(), 2);
    for (const QTimer* timer : timers)
        QVERIFY(timer->isSingleShot() && timer->isActive() && timer->interval() == 3000);
    QCOMPARE(f.signalsFor("RSP {\"id\":1,\"ok\":true}\nRSP {\"id\":2,\"ok\":true}\n").size(), 2);
    QVERIFY(TestSupport::waitUntil([&] { return f.client.findChildren<QTimer*>().isEmpty(); }));
}

void ClientRequestsSuite::aResponseEndsItsRequest_data()
{
    QTest::addColumn<QByteArray>("response");
    QTest::addColumn<QStringList>("expected"); // after "finished 1"
    QTest::newRow("ok") << QByteArray(R"({"id":1,"ok":true})") << QStringList();
    QTest::newRow("ok, empty payload") << QByteArray(R"({"id":1,"ok":true,"payload":{}})") << QStringList();
    QTest::newRow("ok, payload is no object")
        << QByteArray(R"({"id":1,"ok":true,"payload":[1]})") << QStringList();
    QTest::newRow("ok, payload") << QByteArray(R"({"id":1,"ok":true,"payload":{"seq":4}})")
                                 << QStringList(QStringLiteral("snapshot {\"seq\":4}"));
    QTest::newRow("ok, error is not read")
        << QByteArray(R"({"id":1,"ok":true,"error":{"code":"X"}})") << QStringList();
    QTest::newRow("refused") << QByteArray(
                                    R"({"id":1,"ok":false,"error":{"code":"CONFLICT","message":"stale"}})")
                             << QStringList(QStringLiteral("error 1 CONFLICT stale"));
    QTest::newRow("refused with a payload")
        << QByteArray(R"({"id":1,"ok":false,"error":{"code":"CONFLICT","message":"m"},"payload":{"seq":4}})")
        << QStringList({QStringLiteral("error 1 CONFLICT m"), QStringLiteral("snapshot {\"seq\":4}")});
    QTest::newRow("ok missing") << QByteArray(R"({"id":1})") << QStringList(QStringLiteral("error 1  "));
    QTest::newRow("ok is 1") << QByteArray(R"({"id":1.0,"ok":1})")
                             << QStringList(QStringLiteral("error 1  "));
}

void ClientRequestsSuite::aResponseEndsItsRequest()
{
    QFETCH(QByteArray, response);
    QFETCH(QStringList, expected);
    ClientFixture f;
    f.client.setRfEnabled(true);
    expected.prepend(QStringLiteral("finished 1"));
    QCOMPARE(f.signalsFor("RSP " + response + '\n'), expected);
}

void ClientRequestsSuite::aResponseToAnotherIdEndsNothing_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<int>("read");
    QTest::newRow("2") << QByteArray("2") << 2;
    QTest::newRow("0") << QByteArray("0") << 0;
    QTest::newRow("-1") << QByteArray("-1") << -1;
    QTest::newRow("1.5") << QByteArray("1.5") << 0;
    QTest::newRow("1e300") << QByteArray("1e300") << 0;
    QTest::newRow("true") << QByteArray("true") << 0;
    QTest::newRow("text 1") << QByteArray("\"1\"") << 0;
}

void ClientRequestsSuite::aResponseToAnotherIdEndsNothing()
{
    QFETCH(QByteArray, id);
    QFETCH(int, read);
    ClientFixture f;
    f.client.setRfEnabled(true);
    QCOMPARE(f.signalsFor("RSP {\"id\":" + id + R"(,"ok":true,"payload":{"seq":1}})" + "\n"), QStringList());
    QCOMPARE(f.signalsFor("RSP {\"id\":" + id +
                          R"(,"error":{"code":"C","message":"m"},"payload":{"seq":1}})" + "\n"),
             QStringList(QStringLiteral("error %1 C m").arg(read)));
    QCOMPARE(f.signalsFor("RSP {\"id\":1,\"ok\":true}\n"), QStringList(QStringLiteral("finished 1")));
}

void ClientRequestsSuite::aMalformedPayloadIsTold_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("error");
    const auto parserError = [](const char* text) {
        QJsonParseError error;
        QJsonDocument::fromJson(text, &error);
        return error.errorString();
    };
    QTest::newRow("none") << QByteArray() << parserError("");
    QTest::newRow("cut") << QByteArray("{\"id\":") << parserError("{\"id\":");
    QTest::newRow("array") << QByteArray("[{\"id\":1}]") << QStringLiteral("Expected a JSON object.");
}

void ClientRequestsSuite::aMalformedPayloadIsTold()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, error);
    ClientFixture f;
    f.client.setRfEnabled(true);
    QCOMPARE(f.signalsFor("RSP " + payload + '\n'),
             QStringList(QStringLiteral("protocol Malformed minibar response: ") + error));
    QCOMPARE(f.signalsFor("EVT " + payload + '\n'),
             QStringList(QStringLiteral("protocol Malformed minibar event: ") + error));
}

void ClientRequestsSuite::onlyTheNewestRequestsPayloadIsTrusted()
{
    ClientFixture f;
    f.client.setRfEnabled(true);
    f.client.setLevel(1);
    QCOMPARE(f.signalsFor("RSP {\"id\":2,\"ok\":true,\"payload\":{\"seq\":2}}\n"
                          "RSP {\"id\":1,\"ok\":true,\"payload\":{\"seq\":1}}\n"),
             QStringList({QStringLiteral("finished 2"), QStringLiteral("snapshot {\"seq\":2}"),
                          QStringLiteral("finished 1")}));
    f.client.setLevel(2);
    f.client.setLevel(3);
    QCOMPARE(
        f.signalsFor("RSP {\"id\":3,\"payload\":{\"seq\":3}}\n"
                     "RSP {\"id\":4,\"payload\":{\"seq\":4}}\n"),
        QStringList({QStringLiteral("finished 3"), QStringLiteral("error 3  "), QStringLiteral("finished 4"),
                     QStringLiteral("error 4  "), QStringLiteral("snapshot {\"seq\":4}")}));
}

void ClientRequestsSuite::aSecondResponseEndsNothing()
{
    ClientFixture f;
    f.client.setRfEnabled(true);
    const QByteArray response = "RSP {\"id\":1,\"ok\":true,\"payload\":{\"seq\":1}}\n";
    QCOMPARE(f.signalsFor(response + response),
             QStringList({QStringLiteral("finished 1"), QStringLiteral("snapshot {\"seq\":1}")}));
}

void ClientRequestsSuite::aRequestMadeWhenOneFinishesIsTheNewest()
{
    ClientFixture f;
    f.client.setRfEnabled(true);
    connect(&f.client, &MinibarClient::requestFinished, &f.client, [&](int id) {
        if (id == 1)
            f.client.setRfEnabled(false);
    });
    QCOMPARE(f.signalsFor("RSP {\"id\":1,\"ok\":true,\"payload\":{\"seq\":1}}\n"),
             QStringList({QStringLiteral("finished 1"), QStringLiteral("started 2")}));
}

void ClientRequestsSuite::anEventGivesItsSnapshot_data()
{
    QTest::addColumn<QByteArray>("event");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("snapshot") << QByteArray(R"({"event":"STAT:SNAP","payload":{"seq":3,"tx":{}}})")
                              << QStringList(QStringLiteral("snapshot {\"seq\":3,\"tx\":{}}"));
    QTest::newRow("other event") << QByteArray(R"({"event":"STAT:OTHER","payload":{"seq":3}})")
                                 << QStringList();
    QTest::newRow("no event") << QByteArray(R"({"payload":{"seq":3}})") << QStringList();
    QTest::newRow("empty payload") << QByteArray(R"({"event":"STAT:SNAP","payload":{}})") << QStringList();
    QTest::newRow("payload is no object")
        << QByteArray(R"({"event":"STAT:SNAP","payload":3})") << QStringList();
}

void ClientRequestsSuite::anEventGivesItsSnapshot()
{
    QFETCH(QByteArray, event);
    QFETCH(QStringList, expected);
    ClientFixture f;
    QCOMPARE(f.signalsFor("EVT " + event + '\n'), expected);
}

void ClientRequestsSuite::aRequestTimesOut()
{
    ClientFixture f;
    QElapsedTimer time;
    time.start();
    f.client.setRfEnabled(true);
    f.client.setLevel(1);
    QCOMPARE(f.signalsFor("RSP {\"id\":1,\"ok\":true}\n"), QStringList(QStringLiteral("finished 1")));
    f.log.clear();
    QVERIFY(f.waitFor(QStringLiteral("error 2 TIMEOUT Minibar request timed out.")));
    QVERIFY2(time.elapsed() >= 3000, "too early");
    QCOMPARE(f.log, QStringList({QStringLiteral("finished 2"),
                                 QStringLiteral("error 2 TIMEOUT Minibar request timed out.")}));
    // The late response: told when it is a refusal, but it ends nothing and its payload is stale.
    QCOMPARE(f.signalsFor("RSP {\"id\":2,\"ok\":true,\"payload\":{\"seq\":1}}\n"), QStringList());
    QCOMPARE(
        f.signalsFor(
            "RSP "
            "{\"id\":2,\"ok\":false,\"error\":{\"code\":\"C\",\"message\":\"m\"},\"payload\":{\"seq\":1}}\n"),
        QStringList(QStringLiteral("error 2 C m")));
}

std::unique_ptr<QObject> makeClientRequestsSuite()
{
    return std::make_unique<ClientRequestsSuite>();
}

#include "ClientRequestsSuite.moc"
