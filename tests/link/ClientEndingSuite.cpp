#include "link/ClientFixture.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>

using TestSupport::waitUntil;

// How the link ends, and what is told before.
class ClientEndingSuite final : public QObject
{
    Q_OBJECT

private slots:
    void pendingRequestsFailBeforeTheEndIsTold();
    void shutdownComesBeforeTheEnd();
    void linesReceivedBeforeTheEndComeFirst();
    void aHalfLineIsDropped();
    void theMainProcessMayCloseAtOnce();
    void aReceiverMayEndTheLink_data();
    void aReceiverMayEndTheLink();
    void anAcknowledgementThatCannotBeSentIsTold_data();
    void anAcknowledgementThatCannotBeSentIsTold();
    void aRequestAfterTheEndFails();
    void aReceiverMayQuit();
    void destroyingAConnectedClientTellsNothing();
    void aNewLinkStartsEmpty();
};

void ClientEndingSuite::pendingRequestsFailBeforeTheEndIsTold()
{
    ClientFixture f;
    for (int i = 0; i < 3; ++i)
        f.client.setLevel(i);
    QVERIFY(f.main.waitForRequests(3));
    f.log.clear();
    f.main.hangUp();
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QCOMPARE(f.log.size(), 7);
    QCOMPARE(f.log.takeLast(), QStringLiteral("disconnected"));
    QStringList ids;
    while (!f.log.isEmpty()) { // the order of the requests is free, each one's two signals are not
        const QString id = f.log.takeFirst().section(QLatin1Char(' '), 1);
        ids.append(id);
        QCOMPARE(f.log.takeFirst(),
                 QStringLiteral("error %1 TRANSPORT_ERROR Minibar IPC disconnected.").arg(id));
    }
    ids.sort();
    QCOMPARE(ids, QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
    // Nothing more comes of them.
    QVERIFY(!waitUntil([&] { return !f.log.isEmpty(); }, 3200));
}

void ClientEndingSuite::shutdownComesBeforeTheEnd()
{
    ClientFixture f;
    f.main.sendLine("SHUTDOWN");
    f.main.hangUp();
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QCOMPARE(f.log, QStringList({QStringLiteral("shutdown"), QStringLiteral("disconnected")}));
}

void ClientEndingSuite::linesReceivedBeforeTheEndComeFirst()
{
    ClientFixture f;
    QByteArray lines = "SHOW_MINIBAR 1,1\n"; // its acknowledgement meets a closed socket
    constexpr int count = 2000;
    for (int i = 0; i < count; ++i)
        lines += "SHOW_MINIBAR 1,1\nRSP {\"id\":9,\"ok\":true}\nEVT "
                 "{\"event\":\"STAT:SNAP\",\"payload\":{\"seq\":1}}\n";
    f.main.sendBytes(lines + "SHUTDOWN\n");
    f.main.hangUp();
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QCOMPARE(f.log.count(QStringLiteral("snapshot {\"seq\":1}")), count);
    QCOMPARE(f.log.mid(f.log.size() - 2),
             QStringList({QStringLiteral("shutdown"), QStringLiteral("disconnected")}));
}

void ClientEndingSuite::aHalfLineIsDropped()
{
    ClientFixture f;
    f.main.sendBytes("SHUTDOWN");
    QVERIFY(f.main.waitUntilRead());
    f.main.hangUp();
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QCOMPARE(f.log, QStringList(QStringLiteral("disconnected")));
}

void ClientEndingSuite::theMainProcessMayCloseAtOnce()
{
    TestSupport::FakeMain main;
    main.hangUpOnAccept();
    MinibarClient client;
    QSignalSpy disconnected(&client, &MinibarClient::disconnected);
    QVERIFY(client.connectToHost(main.serverName(), 3000));
    client.sendAuth(QStringLiteral("t"));
    client.sendReady();
    QVERIFY(waitUntil([&] { return disconnected.count() > 0; }));
    QVERIFY(!client.sendReady());
    QCOMPARE(disconnected.count(), 1);
}

void ClientEndingSuite::aReceiverMayEndTheLink_data()
{
    QTest::addColumn<bool>("byOversize");
    QTest::newRow("the main process hangs up meanwhile") << false;
    QTest::newRow("from the oversized error") << true;
}

void ClientEndingSuite::aReceiverMayEndTheLink()
{
    QFETCH(bool, byOversize);
    ClientFixture f;
    const auto end = [&] {
        f.main.hangUp();
        QEventLoop dialog;
        connect(&f.client, &MinibarClient::disconnected, &dialog, &QEventLoop::quit);
        QTimer::singleShot(byOversize ? 50 : TestSupport::defaultDeadline, &dialog, &QEventLoop::quit);
        dialog.exec();
    };
    connect(&f.client, &MinibarClient::protocolError, &f.client, end);
    connect(&f.client, &MinibarClient::shutdownRequested, &f.client, end);
    f.main.sendBytes(byOversize
                         ? QByteArray(16777217, 'x') + "\nSHOW_MINIBAR\n"
                         : QByteArray("SHUTDOWN\nEVT {\"event\":\"STAT:SNAP\",\"payload\":{\"seq\":1}}\n"));
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QCOMPARE(f.log.count(QStringLiteral("disconnected")), 1);
    QVERIFY(!f.log.contains(QStringLiteral("show -1,-1")));
    QCOMPARE(f.log.count(QStringLiteral("snapshot {\"seq\":1}")), byOversize ? 0 : 1);
    QCOMPARE(f.log.last(), QStringLiteral("disconnected"));
}

void ClientEndingSuite::anAcknowledgementThatCannotBeSentIsTold_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<QString>("message");
    QTest::newRow("show") << QByteArray("SHOW_MINIBAR")
                          << QStringLiteral("Failed to acknowledge minibar visibility.");
    QTest::newRow("hide") << QByteArray("HIDE_MINIBAR")
                          << QStringLiteral("Failed to acknowledge minibar hiding.");
}

void ClientEndingSuite::anAcknowledgementThatCannotBeSentIsTold()
{
    QFETCH(QByteArray, word);
    QFETCH(QString, message);
    ClientFixture f;
    const auto loseTheLink = [&] {
        f.main.hangUp();
        QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    };
    connect(&f.client, &MinibarClient::showMiniBarRequested, &f.client, loseTheLink);
    connect(&f.client, &MinibarClient::hideMiniBarRequested, &f.client, loseTheLink);
    f.main.sendLine(word);
    QVERIFY(f.waitFor(QStringLiteral("protocol ") + message));
    QCOMPARE(f.log.size(), 3);
}

void ClientEndingSuite::aRequestAfterTheEndFails()
{
    ClientFixture f;
    f.main.hangUp();
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    f.log.clear();
    QVERIFY(!f.client.sendRequest(QStringLiteral("X"), {}));
    QCOMPARE(f.log, QStringList(QStringLiteral("error 1 TRANSPORT_ERROR Failed to send minibar request.")));
}

void ClientEndingSuite::aReceiverMayQuit()
{
    QStringList log;
    {
        ClientFixture f;
        connect(&f.client, &MinibarClient::shutdownRequested, qApp, &QCoreApplication::quit);
        f.main.sendBytes("SHOW_MINIBAR\nSHUTDOWN\n");
        QTimer::singleShot(TestSupport::defaultDeadline, qApp, [] { QCoreApplication::exit(7); });
        QCOMPARE(QCoreApplication::exec(), 0);
        log = f.log;
    }
    QCOMPARE(log, QStringList({QStringLiteral("show -1,-1"), QStringLiteral("shutdown")}));
}

void ClientEndingSuite::destroyingAConnectedClientTellsNothing()
{
    const TestSupport::FakeMain main;
    QStringList told;
    {
        MinibarClient client;
        connect(&client, &MinibarClient::disconnected, this,
                [&] { told.append(QStringLiteral("disconnected")); });
        connect(&client, &MinibarClient::requestFinished, this,
                [&] { told.append(QStringLiteral("finished")); });
        QVERIFY(client.connectToHost(main.serverName(), 3000));
        client.setRfEnabled(true);
    }
    QCoreApplication::processEvents();
    QCOMPARE(told, QStringList());
}

void ClientEndingSuite::aNewLinkStartsEmpty()
{
    ClientFixture f;
    f.main.sendBytes("SHUT");
    QVERIFY(f.main.waitUntilRead());
    f.main.hangUp();
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    f.log.clear();
    QVERIFY(f.client.connectToHost(f.main.serverName(), 3000));
    QVERIFY(waitUntil([&] { return f.main.isConnected(); }));
    QCOMPARE(f.signalsFor("DOWN\nSHOW_MINIBAR 1,2\n"), QStringList(QStringLiteral("show 1,2")));
}

std::unique_ptr<QObject> makeClientEndingSuite()
{
    return std::make_unique<ClientEndingSuite>();
}

#include "ClientEndingSuite.moc"
