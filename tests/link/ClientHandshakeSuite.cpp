#include "link/ClientFixture.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QMetaObject>
#include <QSignalSpy>
#include <QTest>

using TestSupport::waitUntil;

namespace {

QStringList messages;

void collectMessage(QtMsgType, const QMessageLogContext& context, const QString& message)
{
    messages.append(QString::fromLatin1(context.category) + QLatin1String(": ") + message);
}

} // namespace

// Connecting, sending, and the commands that show, hide and end the bar.
class ClientHandshakeSuite final : public QObject
{
    Q_OBJECT

private slots:
    void theSignalsAreDeclaredInOrder();
    void connectingToNobodyFailsAtOnce();
    void connectingNeedsNoAnswer();
    void nothingIsSentWithoutAConnection();
    void theHandshakeIsTwoLines();
    void anInvalidLineIsNotSent();
    void everyShowIsAnswered_data();
    void everyShowIsAnswered();
    void hideIsRecognised_data();
    void hideIsRecognised();
    void theAcknowledgementFollowsTheSignal();
    void whatTheMainProcessNeverSaysIsIgnored_data();
    void whatTheMainProcessNeverSaysIsIgnored();
    void theWireIsLoggedWithoutTheToken();
    void theWireIsQuietByDefault();
};

void ClientHandshakeSuite::theSignalsAreDeclaredInOrder()
{
    const QMetaObject& meta = MinibarClient::staticMetaObject;
    QStringList declared;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Signal)
            continue;
        QStringList parameters;
        for (int p = 0; p < method.parameterCount(); ++p)
            parameters.append(
                QString::fromLatin1(method.parameterTypes()[p] + " " + method.parameterNames()[p]));
        declared.append(QStringLiteral("%1(%2)").arg(QString::fromLatin1(method.name()),
                                                     parameters.join(QLatin1String(", "))));
    }
    QCOMPARE(
        declared,
        QStringList({QStringLiteral("showMiniBarRequested(QPoint topRight)"),
                     QStringLiteral("hideMiniBarRequested()"), QStringLiteral("shutdownRequested()"),
                     QStringLiteral("snapshotReceived(QJsonObject snapshot)"),
                     QStringLiteral("requestStarted(int requestId)"),
                     QStringLiteral("requestFinished(int requestId)"),
                     QStringLiteral("requestError(int requestId, QString code, QString message)"),
                     QStringLiteral("protocolError(QString message)"), QStringLiteral("disconnected()")}));
}

void ClientHandshakeSuite::connectingToNobodyFailsAtOnce()
{
    MinibarClient client;
    QElapsedTimer time;
    time.start();
    QVERIFY(!client.connectToHost(QStringLiteral("tarvinel-test-nobody-listens-here"), 3000));
    QVERIFY2(time.elapsed() < 3000, "waited for nothing");
    QVERIFY(!client.connectToHost(QString(), 3000));
}

void ClientHandshakeSuite::connectingNeedsNoAnswer()
{
    const TestSupport::FakeMain main; // its event loop does not run meanwhile
    MinibarClient client;
    QVERIFY(client.connectToHost(main.serverName(), 3000));
}

void ClientHandshakeSuite::nothingIsSentWithoutAConnection()
{
    MinibarClient client;
    QSignalSpy error(&client, &MinibarClient::requestError);
    QSignalSpy started(&client, &MinibarClient::requestStarted);
    QSignalSpy finished(&client, &MinibarClient::requestFinished);
    QVERIFY(!client.sendAuth(QStringLiteral("token")));
    QVERIFY(!client.sendReady());
    QVERIFY(!client.sendRestoreRequest());
    QVERIFY(!client.send(MinibarMessageType::Visible));
    for (const int id : {1, 2}) {
        QVERIFY(!client.sendRequest(QStringLiteral("OUTP:STAT"), {}));
        QCOMPARE(error.takeFirst(), QVariantList({id, QStringLiteral("TRANSPORT_ERROR"),
                                                  QStringLiteral("Failed to send minibar request.")}));
    }
    QCOMPARE(started.count() + finished.count(), 0);
}

void ClientHandshakeSuite::theHandshakeIsTwoLines()
{
    ClientFixture f;
    QVERIFY(f.connected);
    QVERIFY(f.client.sendAuth(f.main.token()));
    QVERIFY(f.client.sendReady());
    QVERIFY(f.client.sendRestoreRequest());
    QVERIFY(f.main.waitForHandshake());
    QVERIFY(f.main.waitForCount("RESTORE_REQUEST", 1));
    QCOMPARE(f.main.received(), "AUTH " + f.main.token().toUtf8() + "\nREADY\nRESTORE_REQUEST\n");
}

void ClientHandshakeSuite::anInvalidLineIsNotSent()
{
    ClientFixture f;
    QVERIFY(!f.client.send(MinibarMessageType::Invalid, QStringLiteral("x")));
    QVERIFY(f.main.hide());
    QCOMPARE(f.main.received(), QByteArray("HIDDEN\n"));
}

void ClientHandshakeSuite::everyShowIsAnswered_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("signal");
    QTest::newRow("1200,40") << QByteArray("SHOW_MINIBAR 1200,40") << QStringLiteral("show 1200,40");
    QTest::newRow("none") << QByteArray("SHOW_MINIBAR") << QStringLiteral("show -1,-1");
    QTest::newRow("1,2,3") << QByteArray("SHOW_MINIBAR 1,2,3") << QStringLiteral("show -1,-1");
    QTest::newRow("a,5") << QByteArray("SHOW_MINIBAR a,5") << QStringLiteral("show -1,-1");
    QTest::newRow("blanks") << QByteArray("  SHOW_MINIBAR   7 , 8  \r") << QStringLiteral("show 7,8");
}

void ClientHandshakeSuite::everyShowIsAnswered()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, signal);
    ClientFixture f;
    QCOMPARE(f.signalsFor(line + '\n'), QStringList(signal));
    QCOMPARE(f.main.received(), QByteArray("VISIBLE\nHIDDEN\n"));
}

void ClientHandshakeSuite::hideIsRecognised_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("recognised");
    QTest::newRow("plain") << QByteArray("HIDE_MINIBAR") << true;
    QTest::newRow("blanks around it") << QByteArray("  HIDE_MINIBAR\t ") << true;
    QTest::newRow("with a payload") << QByteArray("HIDE_MINIBAR now") << true;
    QTest::newRow("lower case") << QByteArray("hide_minibar") << false;
}

void ClientHandshakeSuite::hideIsRecognised()
{
    QFETCH(QByteArray, line);
    QFETCH(bool, recognised);
    ClientFixture f;
    f.main.sendBytes(line + "\nSHUTDOWN\n");
    QVERIFY(f.waitFor(QStringLiteral("shutdown")));
    QCOMPARE(f.log.contains(QStringLiteral("hide")), recognised);
    QVERIFY(f.main.waitForCount("HIDDEN", recognised ? 1 : 0));
}

void ClientHandshakeSuite::theAcknowledgementFollowsTheSignal()
{
    ClientFixture f;
    connect(&f.client, &MinibarClient::showMiniBarRequested, &f.client,
            [&] { f.client.sendRestoreRequest(); });
    connect(&f.client, &MinibarClient::hideMiniBarRequested, &f.client, [&] { f.client.sendReady(); });
    QVERIFY(f.main.show());
    QVERIFY(f.main.hide());
    QCOMPARE(f.main.received(), QByteArray("RESTORE_REQUEST\nVISIBLE\nREADY\nHIDDEN\n"));
}

void ClientHandshakeSuite::whatTheMainProcessNeverSaysIsIgnored_data()
{
    QTest::addColumn<QByteArray>("lines");
    for (const char* word :
         {"AUTH t", "READY", "VISIBLE", "RESTORE_REQUEST", "HIDDEN", "REQ {}", "NOISE", "evt {}"})
        QTest::newRow(word) << QByteArray(word) + '\n';
    QTest::newRow("empty lines") << QByteArray("\n \n\t\r\n\n");
    QTest::newRow("bad UTF-8") << QByteArray("\xFF\xFE\x80\n\xC3\n");
    QTest::newRow("zero bytes") << QByteArray("\0\0\nSHUTDOWN\0\n", 13);
}

void ClientHandshakeSuite::whatTheMainProcessNeverSaysIsIgnored()
{
    QFETCH(QByteArray, lines);
    ClientFixture f;
    QCOMPARE(f.signalsFor(lines), QStringList());
    QCOMPARE(f.main.received(), QByteArray("HIDDEN\n"));
}

void ClientHandshakeSuite::theWireIsLoggedWithoutTheToken()
{
    ClientFixture f;
    messages.clear();
    QLoggingCategory::setFilterRules(QStringLiteral("tarvinel.*=true"));
    const QtMessageHandler before = qInstallMessageHandler(collectMessage);
    f.client.sendAuth(f.main.token());
    f.client.sendReady();
    f.main.sendBytes("AUTH " + f.main.token().toUtf8() + "\nNOISE x\n");
    const bool shown = f.main.show({12, 40});
    qInstallMessageHandler(before);
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(shown);
    QCOMPARE(messages, QStringList({QStringLiteral("tarvinel.wire: helper> AUTH <token>"),
                                    QStringLiteral("tarvinel.wire: helper> READY"),
                                    QStringLiteral("tarvinel.wire: main> AUTH <token>"),
                                    QStringLiteral("tarvinel.wire: main> (no known word)"),
                                    QStringLiteral("tarvinel.wire: main> SHOW_MINIBAR 12,40"),
                                    QStringLiteral("tarvinel.wire: helper> VISIBLE")}));
}

void ClientHandshakeSuite::theWireIsQuietByDefault()
{
    messages.clear();
    const QtMessageHandler before = qInstallMessageHandler(collectMessage);
    {
        ClientFixture f;
        f.client.sendAuth(f.main.token());
        QVERIFY(f.main.show());
        MinibarClient lonely;
        QVERIFY(!lonely.connectToHost(QStringLiteral("tarvinel-test-nobody-listens-here"), 3000));
    }
    qInstallMessageHandler(before);
    QCOMPARE(messages, QStringList());
}

std::unique_ptr<QObject> makeClientHandshakeSuite()
{
    return std::make_unique<ClientHandshakeSuite>();
}

#include "ClientHandshakeSuite.moc"
