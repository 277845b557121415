#include "link/ClientFixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>
#include <QTimer>

using TestSupport::waitUntil;

namespace {

constexpr int limit = 16777216;

QByteArray snapshotLine(int sequence)
{
    return "EVT {\"event\":\"STAT:SNAP\",\"payload\":{\"seq\":" + QByteArray::number(sequence) + "}}\n";
}

int sequenceOf(const QJsonObject& snapshot)
{
    return snapshot.value(QStringLiteral("seq")).toInt();
}

} // namespace

// How what arrives is cut into lines and handed out.
class ClientReadingSuite final : public QObject
{
    Q_OBJECT

private slots:
    void linesOfOneReadComeInOrder();
    void aLineSplitAtAnyByteComesOnce();
    void aLineArrivingByteByByteComesOnce();
    void theLongestLineIsAccepted();
    void anOversizedLineEndsTheLink_data();
    void anOversizedLineEndsTheLink();
    void nothingIsReadAfterTheOversizedError();
    void aBurstComesInOrder();
    void slowReceiversLeaveTheEventLoopItsTurn();
    void moreThanTheBufferHoldsComesInOrder();
    void aReceiverMayRunAnEventLoop();
    void aNestedEventLoopTakesUpTheRest_data();
    void aNestedEventLoopTakesUpTheRest();
    void aDeafMainProcessDoesNotHoldTheBar();
    void slowReceiverReadsNotAhead();
    void whatWaitsForADeafMainProcessIsBounded();
    void anyBytesAreSurvived();
};

void ClientReadingSuite::linesOfOneReadComeInOrder()
{
    ClientFixture f;
    QCOMPARE(f.signalsFor("SHOW_MINIBAR 1,2\n" + snapshotLine(1) + "SHUTDOWN\n" + snapshotLine(2)),
             QStringList({QStringLiteral("show 1,2"), QStringLiteral("snapshot {\"seq\":1}"),
                          QStringLiteral("shutdown"), QStringLiteral("snapshot {\"seq\":2}")}));
}

void ClientReadingSuite::aLineSplitAtAnyByteComesOnce()
{
    ClientFixture f;
    const QByteArray lines = "SHOW_MINIBAR 10,20\n" + snapshotLine(7);
    const QStringList expected({QStringLiteral("show 10,20"), QStringLiteral("snapshot {\"seq\":7}")});
    for (int split = 1; split < lines.size(); ++split) {
        f.log.clear();
        f.main.sendBytes(lines.left(split));
        QVERIFY(f.main.waitUntilRead());
        QCOMPARE(f.signalsFor(lines.mid(split)).last(), expected.last());
    }
    QCOMPARE(f.main.count("VISIBLE"), lines.size() - 1);
}

void ClientReadingSuite::aLineArrivingByteByByteComesOnce()
{
    ClientFixture f;
    const QByteArray line = snapshotLine(12);
    for (const char byte : line) {
        QCOMPARE(f.log, QStringList());
        f.main.sendBytes(QByteArray(1, byte));
        QVERIFY(f.main.waitUntilRead());
    }
    QVERIFY(f.waitFor(QStringLiteral("snapshot {\"seq\":12}")));
    QVERIFY(f.main.hide());
    QCOMPARE(f.log, QStringList({QStringLiteral("snapshot {\"seq\":12}"), QStringLiteral("hide")}));
}

void ClientReadingSuite::theLongestLineIsAccepted()
{
    ClientFixture f;
    QByteArray line = snapshotLine(1).chopped(1);
    line.append(QByteArray(limit - line.size(), ' '));
    f.main.sendBytes("NOISE\n" + line);
    QVERIFY(f.main.waitUntilRead()); // 16,777,216 bytes and no line feed yet
    QCOMPARE(f.signalsFor("\n" + snapshotLine(2)),
             QStringList({QStringLiteral("snapshot {\"seq\":1}"), QStringLiteral("snapshot {\"seq\":2}")}));
}

void ClientReadingSuite::anOversizedLineEndsTheLink_data()
{
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("no line feed") << QByteArray();
    QTest::newRow("line feed and more lines") << QByteArray("\nSHUTDOWN\nSHOW_MINIBAR\n");
    QTest::newRow("much more") << QByteArray(QByteArray(5'000'000, 'x') + "\nSHUTDOWN\n");
}

void ClientReadingSuite::anOversizedLineEndsTheLink()
{
    QFETCH(QByteArray, after);
    ClientFixture f;
    f.client.setRfEnabled(true);
    f.log.clear();
    f.main.sendBytes(snapshotLine(1) + QByteArray(limit + 1, 'x') + after);
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QVERIFY(f.main.waitForDisconnect());
    QCOMPARE(f.log,
             QStringList({QStringLiteral("snapshot {\"seq\":1}"),
                          QStringLiteral("protocol Main process sent an oversized minibar protocol message."),
                          QStringLiteral("finished 1"),
                          QStringLiteral("error 1 TRANSPORT_ERROR Minibar IPC disconnected."),
                          QStringLiteral("disconnected")}));
}

void ClientReadingSuite::nothingIsReadAfterTheOversizedError()
{
    ClientFixture f;
    connect(&f.client, &MinibarClient::protocolError, &f.client, [&] {
        f.main.sendBytes("\nSHUTDOWN\n");
        QVERIFY(f.main.waitUntilRead()); // in an event loop of its own
        QCoreApplication::processEvents();
    });
    f.main.sendBytes(QByteArray(limit + 1, 'x'));
    QVERIFY(f.waitFor(QStringLiteral("disconnected")));
    QVERIFY(!f.log.contains(QStringLiteral("shutdown")));
}

void ClientReadingSuite::aBurstComesInOrder()
{
    ClientFixture f;
    constexpr int count = 60'000;
    int next = 1;
    bool inOrder = true;
    connect(&f.client, &MinibarClient::snapshotReceived, &f.client,
            [&](const QJsonObject& snapshot) { inOrder = sequenceOf(snapshot) == next++ && inOrder; });
    QByteArray burst;
    for (int i = 1; i <= count; ++i)
        burst += snapshotLine(i);
    f.main.sendBytes(burst);
    QVERIFY(waitUntil([&] { return next > count; }, 60'000));
    QVERIFY(inOrder);
}

void ClientReadingSuite::slowReceiversLeaveTheEventLoopItsTurn()
{
    ClientFixture f;
    constexpr int count = 200;
    int handled = 0;
    connect(&f.client, &MinibarClient::snapshotReceived, &f.client, [&] {
        QThread::msleep(1); // slow on purpose
        ++handled;
    });
    // Another member of the event loop, as painting is: how many lines go by between two of its turns.
    QTimer other;
    int most = 0;
    int seen = 0;
    connect(&other, &QTimer::timeout, this, [&] {
        most = qMax(most, handled - seen);
        seen = handled;
    });
    other.start(0);
    QByteArray burst;
    for (int i = 1; i <= count; ++i)
        burst += snapshotLine(i);
    f.main.sendBytes(burst);
    QVERIFY(waitUntil([&] { return handled == count; }));
    QVERIFY2(most <= 10, qPrintable(QStringLiteral("%1 lines without a turn").arg(most)));
}

// Lines pile up faster than they are handled, to more than the client takes out of the socket at a time.
void ClientReadingSuite::moreThanTheBufferHoldsComesInOrder()
{
    ClientFixture f;
    constexpr int count = 3000;
    constexpr int slow = 350; // of them; meanwhile some 80 kB arrive for each
    int next = 1;
    bool inOrder = true;
    disconnect(&f.client, &MinibarClient::snapshotReceived, nullptr, nullptr); // no texts of it
    connect(&f.client, &MinibarClient::snapshotReceived, &f.client, [&](const QJsonObject& snapshot) {
        inOrder = sequenceOf(snapshot) == next++ && inOrder;
        if (next <= slow)
            QThread::msleep(5); // slow on purpose
    });
    QByteArray burst;
    for (int i = 1; i <= count; ++i)
        burst += snapshotLine(i).insert(4, QByteArray(10'000, ' '));
    f.main.sendBytes(burst);
    QVERIFY(waitUntil([&] { return next > count; }, 60'000));
    QVERIFY(inOrder);
}

void ClientReadingSuite::aReceiverMayRunAnEventLoop()
{
    ClientFixture f;
    QStringList handled;
    connect(&f.client, &MinibarClient::snapshotReceived, &f.client, [&](const QJsonObject& snapshot) {
        const int sequence = sequenceOf(snapshot);
        handled.append(QString::number(sequence));
        if (sequence % 3 != 0)
            return;
        QEventLoop dialog;
        QTimer::singleShot(5, &dialog, &QEventLoop::quit);
        dialog.exec();
    });
    QStringList expected;
    QByteArray lines;
    for (int i = 1; i <= 30; ++i) {
        expected.append(QString::number(i));
        lines += snapshotLine(i);
    }
    f.main.sendBytes(lines);
    QVERIFY(waitUntil([&] { return handled.size() >= 30; }));
    QVERIFY(f.main.hide());
    QCOMPARE(handled, expected);
}

void ClientReadingSuite::aNestedEventLoopTakesUpTheRest_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("meanwhile");
    QTest::newRow("arrived before") << snapshotLine(1) + "SHUTDOWN\n" << QByteArray();
    QTest::newRow("arrives meanwhile") << QByteArray() << snapshotLine(1) + "SHUTDOWN\n";
    QTest::newRow("both") << snapshotLine(1) << QByteArray("SHUTDOWN\n");
}

// As when the bar opens a dialog because of a line: SHUTDOWN must still reach it.
void ClientReadingSuite::aNestedEventLoopTakesUpTheRest()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, meanwhile);
    ClientFixture f;
    QEventLoop dialog;
    bool shutdownInside = false;
    connect(&f.client, &MinibarClient::showMiniBarRequested, &f.client, [&] {
        f.main.sendBytes(meanwhile);
        QTimer::singleShot(TestSupport::defaultDeadline, &dialog, &QEventLoop::quit);
        dialog.exec();
    });
    connect(&f.client, &MinibarClient::shutdownRequested, &dialog, [&] {
        shutdownInside = dialog.isRunning();
        dialog.quit();
    });
    f.main.sendBytes("SHOW_MINIBAR\n" + before);
    QVERIFY(f.main.waitForCount("VISIBLE", 1));
    QVERIFY(shutdownInside);
    QCOMPARE(f.log, QStringList({QStringLiteral("show -1,-1"), QStringLiteral("snapshot {\"seq\":1}"),
                                 QStringLiteral("shutdown")}));
}

void ClientReadingSuite::aDeafMainProcessDoesNotHoldTheBar()
{
    ClientFixture f;
    f.main.setReading(false);
    const QJsonObject arguments{{QStringLiteral("text"), QString(100'000, QLatin1Char('x'))}};
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 40; ++i)
        QVERIFY(f.client.sendRequest(QStringLiteral("X"), arguments));
    QVERIFY2(time.elapsed() < 2000, "the sender was held");
    QVERIFY(f.main.requests().isEmpty());
    f.main.setReading(true);
    QVERIFY(f.main.waitForRequests(40));
}

void ClientReadingSuite::slowReceiverReadsNotAhead()
{
    constexpr int lines = 1000;
    constexpr qint64 mostTaken = 800'000; // of 10 MB
    ClientFixture f;
    int handled = 0;
    QObject::connect(&f.client, &MinibarClient::snapshotReceived, &f.client, [&handled] {
        ++handled;
        QThread::msleep(5); // slow on purpose
    });
    const QByteArray line =
        R"(EVT {"event":"STAT:SNAP","payload":{"x":")" + QByteArray(10'000, 'x') + "\"}}\n";
    f.main.sendBytes(line.repeated(lines));
    for (const int mark : {10, 50, 100}) {
        QVERIFY(TestSupport::waitUntil([&] { return handled >= mark; }));
        const qint64 waiting = qint64(lines - handled) * line.size() - f.main.unreadBytes();
        QVERIFY2(waiting < mostTaken, qPrintable(QString::number(waiting)));
    }
}

void ClientReadingSuite::whatWaitsForADeafMainProcessIsBounded()
{
    constexpr int length = 1'000'000;
    ClientFixture f;
    f.main.setReading(false);
    const QJsonObject arguments{{QStringLiteral("text"), QString(length, QLatin1Char('x'))}};
    int sent = 0;
    while (f.client.sendRequest(QStringLiteral("X"), arguments))
        ++sent;
    QVERIFY2(qAbs(sent - LineDecoder::maximumLineLength / length) < 3, qPrintable(QString::number(sent)));
    const QString refused =
        QStringLiteral("error %1 TRANSPORT_ERROR Failed to send minibar request.").arg(sent + 1);
    QCOMPARE(f.log.last(), refused);
    QVERIFY(f.waitFor(QStringLiteral("error %1 TIMEOUT Minibar request timed out.").arg(sent)));
    f.main.setReading(true);
    QVERIFY(f.main.waitForRequests(sent));
    QVERIFY(f.client.sendRequest(QStringLiteral("X"), {})); // as if nothing had been
    QVERIFY(f.main.waitForRequests(sent + 1));
}

void ClientReadingSuite::anyBytesAreSurvived()
{
    ClientFixture f;
    const QByteArray alphabet = "{}[]\":,\n \t\r\0\xFF\xC3"
                                "EVTRSP0123456789.-eotrufalsnvidk";
    const QList<QByteArray> heads = {"EVT ",
                                     "RSP ",
                                     "SHOW_MINIBAR ",
                                     "NOISE ",
                                     "",
                                     "RSP {\"id\":",
                                     "EVT {\"event\":\"STAT:SNAP\",\"payload\":"};
    QRandomGenerator random(5);
    f.client.setRfEnabled(true);
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes;
        for (int line = 0; line < 10; ++line) {
            bytes += heads[random.bounded(heads.size())];
            for (int length = random.bounded(60); length > 0; --length)
                bytes += alphabet[random.bounded(alphabet.size())];
            bytes += '\n';
        }
        f.main.sendBytes(bytes);
        QVERIFY(f.main.waitUntilRead());
    }
    const QStringList last = f.signalsFor(snapshotLine(99));
    QCOMPARE(last.last(), QStringLiteral("snapshot {\"seq\":99}"));
}

std::unique_ptr<QObject> makeClientReadingSuite()
{
    return std::make_unique<ClientReadingSuite>();
}

#include "ClientReadingSuite.moc"
