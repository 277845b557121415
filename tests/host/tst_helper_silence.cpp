// Helpers that hang: they neither answer nor read, or do so slowly.

#include "host/FakeHelper.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Bar = HelperHost::Bar;
using State = HelperHost::State;

namespace {

const QString show = QStringLiteral("SHOW_MINIBAR");
constexpr char noAnswer[] = "The mini bar does not answer";

HelperTimeouts patience(std::chrono::milliseconds acknowledge, std::chrono::milliseconds question,
                        std::chrono::milliseconds silence)
{
    HelperTimeouts timeouts;
    timeouts.acknowledge = acknowledge;
    timeouts.question = question;
    timeouts.silence = silence;
    return timeouts;
}

QJsonObject bigState(int number)
{
    return {{QStringLiteral("number"), number}, {QStringLiteral("text"), QString(100'000, QLatin1Char('x'))}};
}

} // namespace

class TestHelperSilence final : public QObject
{
    Q_OBJECT

private slots:
    void visibleBarIsAsked();
    void hiddenBarIsLeftInPeace();
    void silentHelperIsEnded_data();
    void silentHelperIsEnded();
    void slowHelperIsKept();
    void newestStateWaitsForASlowReader();
    void helperThatReadsNothingIsEnded();
    void unreadBytesAreBounded();
    void unansweredRequestsAreForgotten();
};

void TestHelperSilence::visibleBarIsAsked()
{
    HostFixture f(patience(5s, 10ms, 10s));
    QSignalSpy visible(&f.host, &HelperHost::visible);
    f.reachReady();
    QVERIFY(f.host.sendShow(QPoint(1, 2)));
    QCOMPARE(f.helper.hear(), show + QStringLiteral(" 1,2"));
    f.helper.say(QStringLiteral("VISIBLE"));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(f.helper.hear(), show); // without an anchor: the bar stays where it is
        f.helper.say(QStringLiteral("VISIBLE"));
    }
    QCOMPARE(visible.count(), 1);
    QCOMPARE(f.host.bar(), Bar::Visible);
    QVERIFY(f.host.sendHide()); // perhaps while a question is open
    QString heard;
    while ((heard = f.helper.hear()) == show)
        f.helper.say(QStringLiteral("VISIBLE"));
    QCOMPARE(heard, QStringLiteral("HIDE_MINIBAR"));
    f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_COMPARE(f.host.bar(), Bar::Hidden);
}

void TestHelperSilence::hiddenBarIsLeftInPeace()
{
    HostFixture f(patience(5s, 1ms, 10s));
    f.reachReady();
    QVERIFY(f.host.sendHide());
    QCOMPARE(f.helper.hear(), QStringLiteral("HIDE_MINIBAR"));
    f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_COMPARE(f.host.bar(), Bar::Hidden);
    QElapsedTimer peace;
    peace.start();
    while (!peace.hasExpired(20)) {
        QVERIFY(f.host.pushSnapshot({}));
        QVERIFY(f.helper.hear().startsWith(QLatin1String("EVT"))); // and nothing before it
    }
}

void TestHelperSilence::silentHelperIsEnded_data()
{
    QTest::addColumn<bool>("answersOnce");
    QTest::newRow("never shown") << false;
    QTest::newRow("hangs while visible") << true;
}

void TestHelperSilence::silentHelperIsEnded()
{
    QFETCH(bool, answersOnce);
    HostFixture f(patience(20ms, 10ms, 60ms));
    QSignalSpy overdue(&f.host, &HelperHost::acknowledgementOverdue);
    QSignalSpy closed(&f.host, &HelperHost::closed);
    f.reachReady();
    QTest::ignoreMessage(QtWarningMsg, noAnswer);
    expectEnd(QStringLiteral("The helper did not answer."));
    QVERIFY(f.host.sendShow());
    if (answersOnce)
        f.helper.say(QStringLiteral("VISIBLE"));
    QTRY_COMPARE(closed.count(), 1);
    QCOMPARE(overdue.count(), 1);
    QVERIFY(!f.host.wasEndWanted());
    QCOMPARE(f.runner->calls.last(), QStringLiteral("terminate"));
}

void TestHelperSilence::slowHelperIsKept()
{
    HostFixture f(patience(10ms, 1h, 10s));
    QSignalSpy overdue(&f.host, &HelperHost::acknowledgementOverdue);
    QSignalSpy visible(&f.host, &HelperHost::visible);
    f.reachReady();
    for (int i = 1; i <= 3; ++i) {
        QTest::ignoreMessage(QtWarningMsg, noAnswer);
        QVERIFY(f.host.sendShow());
        QTRY_COMPARE(overdue.count(), i);
        f.helper.say(QStringLiteral("VISIBLE"));
        QTRY_COMPARE(visible.count(), i);
    }
    QVERIFY(f.host.isReady());
}

void TestHelperSilence::newestStateWaitsForASlowReader()
{
    constexpr int pushed = 1000; // 100 MB if all of them waited
    HostFixture f;
    QStringList sent;
    f.reachReady();
    connect(&f.host, &HelperHost::lineTraffic, this,
            [&sent](HelperLink::Direction, const QString& text) { sent += text.left(60); });
    for (int i = 1; i <= pushed; ++i)
        QVERIFY(f.host.pushSnapshot(bigState(i)));
    QVERIFY2(sent.size() < 30, qPrintable(QString::number(sent.size())));
    int last = 0;
    int heard = 0;
    while (last < pushed) {
        const QJsonObject state =
            f.helper.hearObject(QStringLiteral("EVT")).value(QStringLiteral("payload")).toObject();
        const int number = state.value(QStringLiteral("number")).toInt();
        QVERIFY(number > last);
        QCOMPARE(state.value(QStringLiteral("seq")).toInt(), number);
        last = number;
        ++heard;
    }
    QCOMPARE(heard, sent.size());
}

void TestHelperSilence::helperThatReadsNothingIsEnded()
{
    HostFixture f(patience(1h, 1h, 50ms));
    f.reachReady();
    f.helper.setReading(false);
    QSignalSpy closed(&f.host, &HelperHost::closed);
    expectEnd(QStringLiteral("The helper does not read its link."));
    for (int i = 0; i < 100; ++i)
        QVERIFY(f.host.pushSnapshot(bigState(i)));
    QTRY_COMPARE(closed.count(), 1);
    QVERIFY(!f.host.wasEndWanted());
}

void TestHelperSilence::unreadBytesAreBounded()
{
    HostFixture f(patience(1h, 1h, 1h));
    f.reachReady();
    f.helper.setReading(false);
    QSignalSpy closed(&f.host, &HelperHost::closed);
    expectEnd(QStringLiteral("The helper does not read its link."));
    const QByteArray bytes(0x100000, 'x');
    qint64 taken = 0;
    while (f.host.sendRaw(bytes)) // what cannot wait for its successor
        taken += bytes.size();
    QVERIFY2(taken <= HelperLink::unreadLimit + 2 * bytes.size(), qPrintable(QString::number(taken)));
    QVERIFY(taken >= HelperLink::unreadLimit);
    QTRY_COMPARE(closed.count(), 1);
}

void TestHelperSilence::unansweredRequestsAreForgotten()
{
    constexpr int most = 1000;
    HostFixture f;
    f.reachReady();
    QSignalSpy requests(&f.host, &HelperHost::requestReceived);
    for (int id = 1; id <= most + 1; ++id)
        f.helper.say(QStringLiteral(R"(REQ {"v":1,"id":%1,"cmd":"A","args":{}})").arg(id));
    QTRY_COMPARE(requests.count(), most + 1);
    QTest::ignoreMessage(QtWarningMsg, "No request is open under the id 1");
    QVERIFY(!f.host.respond(1, {}));
    QVERIFY(f.host.respond(2, {}));
    QVERIFY(f.host.respond(most + 1, {}));
}

QTEST_GUILESS_MAIN(TestHelperSilence)
#include "tst_helper_silence.moc"
