#include "host/FakeHelper.h"
#include "link/LineDecoder.h"

#include <QJsonObject>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using Bar = HelperHost::Bar;
using Host::Response;
using State = HelperHost::State;

namespace {

constexpr HelperTimeouts impatient{5000ms, 50ms, 50ms, 50ms, 50ms};

QString request(int id)
{
    return QStringLiteral(R"(REQ {"v":1,"id":%1,"cmd":"OUTP:STAT","args":{"enabled":true}})").arg(id);
}

QStringList calls(std::initializer_list<const char*> names)
{
    QStringList result;
    for (const char* name : names)
        result.append(QString::fromLatin1(name));
    return result;
}

// Collects what the program logs, with every category switched on.
class LogCollector final
{
public:
    LogCollector()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("tarvinel.*=true"));
        s_lines.clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { s_lines += text; });
    }
    ~LogCollector()
    {
        qInstallMessageHandler(m_previous);
        QLoggingCategory::setFilterRules(QString());
    }
    Q_DISABLE_COPY(LogCollector)

    [[nodiscard]] QString text() const { return s_lines.join(QLatin1Char('\n')); }

private:
    inline static QStringList s_lines;
    QtMessageHandler m_previous;
};

} // namespace

class TestHelperLife final : public QObject
{
    Q_OBJECT

private slots:
    void showAndHide();
    void newestCommandDecides();
    void overdueAcknowledgement();
    void restoreRequest();
    void requestsAndAnswers();
    void sequenceRises();
    void oversizedSnapshotIsNotSent();
    void helperEnds_data();
    void helperEnds();
    void helperClosesTheLink();
    void shutdownEscalates_data();
    void shutdownEscalates();
    void shutdownBeforeReady();
    void startAgain();
    void nothingIsSentUnlessReady();
    void droppedLink();
    void tokenIsInNoTrafficAndNoLog();
};

void TestHelperLife::showAndHide()
{
    HostFixture f;
    QSignalSpy visible(&f.host, &HelperHost::visible);
    QSignalSpy hidden(&f.host, &HelperHost::hidden);
    f.reachReady();
    QVERIFY(f.host.sendShow(QPoint(1200, -40)));
    QCOMPARE(f.helper.hear(), QStringLiteral("SHOW_MINIBAR 1200,-40"));
    QCOMPARE(f.host.bar(), Bar::Showing);
    QVERIFY(visible.isEmpty());
    f.helper.say(QStringLiteral("VISIBLE"));
    QTRY_COMPARE(visible.count(), 1);
    QCOMPARE(f.host.bar(), Bar::Visible);

    QVERIFY(f.host.sendHide());
    QCOMPARE(f.helper.hear(), QStringLiteral("HIDE_MINIBAR"));
    QCOMPARE(f.host.bar(), Bar::Hiding);
    f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_COMPARE(hidden.count(), 1);
    QCOMPARE(f.host.bar(), Bar::Hidden);

    QVERIFY(f.host.sendShow());
    QCOMPARE(f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
}

void TestHelperLife::newestCommandDecides()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy visible(&f.host, &HelperHost::visible);
    QSignalSpy hidden(&f.host, &HelperHost::hidden);
    QVERIFY(f.host.sendShow());
    QVERIFY(f.host.sendHide());
    f.helper.say(QStringLiteral("VISIBLE"));
    f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_COMPARE(hidden.count(), 1);
    QCOMPARE(visible.count(), 0);
    QCOMPARE(f.host.bar(), Bar::Hidden);
}

void TestHelperLife::overdueAcknowledgement()
{
    HostFixture f(impatient);
    f.reachReady();
    QSignalSpy overdue(&f.host, &HelperHost::acknowledgementOverdue);
    QSignalSpy visible(&f.host, &HelperHost::visible);
    QTest::ignoreMessage(QtWarningMsg, "The mini bar does not answer");
    QVERIFY(f.host.sendShow());
    QTRY_COMPARE(overdue.count(), 1);
    QCOMPARE(f.host.bar(), Bar::Showing);
    f.helper.say(QStringLiteral("VISIBLE"));
    QTRY_COMPARE(visible.count(), 1);
    QCOMPARE(overdue.count(), 1);
}

void TestHelperLife::restoreRequest()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy restore(&f.host, &HelperHost::restoreRequested);
    f.helper.say(QStringLiteral("RESTORE_REQUEST"));
    QTRY_COMPARE(restore.count(), 1);
}

void TestHelperLife::requestsAndAnswers()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy requests(&f.host, &HelperHost::requestReceived);
    f.helper.say(request(4));
    f.helper.say(request(2147483647));
    QTRY_COMPARE(requests.count(), 2);
    QCOMPARE(requests.at(0).at(0).toInt(), 4);
    QCOMPARE(requests.at(0).at(1).toString(), QStringLiteral("OUTP:STAT"));
    QCOMPARE(requests.at(0).at(2).toJsonObject(), QJsonObject({{QStringLiteral("enabled"), true}}));

    QVERIFY(f.host.respond(2147483647,
                           Response::failure(QStringLiteral("CONFLICT"), QStringLiteral("Too late."))));
    QCOMPARE(f.helper.hear(),
             QStringLiteral(
                 R"(RSP {"error":{"code":"CONFLICT","message":"Too late."},"id":2147483647,"ok":false})"));
    QVERIFY(f.host.respond(4, Response::success()));
    QCOMPARE(f.helper.hear(), QStringLiteral(R"(RSP {"id":4,"ok":true})"));

    QTest::ignoreMessage(QtWarningMsg, "No request is open under the id 4");
    QVERIFY(!f.host.respond(4, Response::success()));
    // An answered id may be used again.
    f.helper.say(request(4));
    QTRY_COMPARE(requests.count(), 3);
    QVERIFY(f.host.isReady());
}

void TestHelperLife::sequenceRises()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy requests(&f.host, &HelperHost::requestReceived);
    const QJsonObject state{{QStringLiteral("tx"), QJsonObject()}};
    QVERIFY(f.host.pushSnapshot(state));
    QCOMPARE(f.helper.hear(), QStringLiteral(R"(EVT {"event":"STAT:SNAP","payload":{"seq":1,"tx":{}}})"));
    f.helper.say(request(1));
    QTRY_COMPARE(requests.count(), 1);
    QVERIFY(f.host.respond(1, Response::success(state)));
    QCOMPARE(f.helper.hear(), QStringLiteral(R"(RSP {"id":1,"ok":true,"payload":{"seq":2,"tx":{}}})"));
    QVERIFY(f.host.pushSnapshot({{QStringLiteral("seq"), 1}}));
    QCOMPARE(f.helper.hear(), QStringLiteral(R"(EVT {"event":"STAT:SNAP","payload":{"seq":1}})"));
    QVERIFY(f.host.pushSnapshot(state));
    QCOMPARE(f.helper.hear(), QStringLiteral(R"(EVT {"event":"STAT:SNAP","payload":{"seq":3,"tx":{}}})"));
    QCOMPARE(f.host.lastSequence(), 3);
}

void TestHelperLife::oversizedSnapshotIsNotSent()
{
    HostFixture f;
    f.reachReady();
    QTest::ignoreMessage(QtWarningMsg, "Not sent, longer than a line may be: \"EVT\"");
    const QString longText(LineDecoder::maximumLineLength, QLatin1Char('x'));
    QVERIFY(!f.host.pushSnapshot({{QStringLiteral("tx"), longText}}));
    QVERIFY(f.host.isReady());
}

void TestHelperLife::helperEnds_data()
{
    QTest::addColumn<bool>("ready");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("crashed");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, bool ready, int exitCode, bool crashed, const char* reason) {
        QTest::newRow(name) << ready << exitCode << crashed << QString::fromLatin1(reason);
    };
    row("by itself", true, 0, false, "The helper ended.");
    row("with code 7", true, 7, false, "The helper ended. Its exit code was 7.");
    row("crash", true, 11, true, "The helper ended. It crashed.");
    row("options refused", false, 1, false, "The helper ended. It refused its launch options (exit code 1).");
    row("no server", false, 2, false, "The helper ended. It found no server to connect to (exit code 2).");
    row("AUTH not written", false, 3, false, "The helper ended. It could not send its token (exit code 3).");
    row("READY not written", false, 4, false, "The helper ended. It could not report ready (exit code 4).");
}

void TestHelperLife::helperEnds()
{
    QFETCH(bool, ready);
    QFETCH(int, exitCode);
    QFETCH(bool, crashed);
    QFETCH(QString, reason);
    HostFixture f;
    QSignalSpy ended(&f.host, ready ? &HelperHost::closed : &HelperHost::failed);
    if (ready)
        f.reachReady();
    else
        f.host.start();
    expectEnd(QRegularExpression::escape(reason));
    f.runner->end(exitCode, crashed);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(ended.at(0).at(0).toString(), reason);
    QCOMPARE(f.host.exitCode(), crashed ? std::nullopt : std::optional<int>(exitCode));
    QCOMPARE(f.host.state(), State::Idle);
}

void TestHelperLife::helperClosesTheLink()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy closed(&f.host, &HelperHost::closed);
    f.helper.leave();
    QTRY_COMPARE(f.host.state(), State::Leaving);
    QVERIFY(closed.isEmpty());
    expectEnd(QStringLiteral("The helper closed the link. Its exit code was 5."));
    f.runner->end(5);
    QCOMPARE(closed.count(), 1);
}

void TestHelperLife::shutdownEscalates_data()
{
    QTest::addColumn<bool>("leaves");
    QTest::addColumn<bool>("obeysTerminate");
    QTest::addColumn<bool>("obeysKill");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("leaves when asked") << true << true << true << calls({"start"});
    QTest::newRow("has to be told") << false << true << true << calls({"start", "terminate"});
    QTest::newRow("has to be killed") << false << false << true << calls({"start", "terminate", "kill"});
    QTest::newRow("cannot be killed") << false << false << false << calls({"start", "terminate", "kill"});
}

void TestHelperLife::shutdownEscalates()
{
    QFETCH(bool, leaves);
    QFETCH(bool, obeysTerminate);
    QFETCH(bool, obeysKill);
    HostFixture f(impatient);
    f.runner->obeysTerminate = obeysTerminate;
    f.runner->obeysKill = obeysKill;
    f.reachReady();
    QSignalSpy closed(&f.host, &HelperHost::closed);
    if (!obeysKill)
        expectEnd(QStringLiteral("The helper's process could not be ended."));
    f.host.sendShutdown();
    QCOMPARE(f.host.state(), State::Leaving);
    QCOMPARE(f.helper.hear(), QStringLiteral("SHUTDOWN"));
    f.helper.say(request(1)); // what was under way does no harm
    if (leaves)
        f.runner->end(0);
    QTRY_COMPARE(closed.count(), 1);
    QTEST(f.runner->calls, "expected");
    QCOMPARE(closed.at(0).at(0).toString(), obeysKill
                                                ? QStringLiteral("The mini bar was shut down.")
                                                : QStringLiteral("The helper's process could not be ended."));
    // A new helper starts only when the old one is gone.
    f.host.start();
    QCOMPARE(f.host.state(), obeysKill ? State::Connecting : State::Idle);
}

void TestHelperLife::shutdownBeforeReady()
{
    HostFixture f;
    QSignalSpy failed(&f.host, &HelperHost::failed);
    f.host.start();
    f.host.sendShutdown();
    QCOMPARE(failed.count(), 1);
    QCOMPARE(f.runner->calls, calls({"start", "terminate"}));
}

void TestHelperLife::startAgain()
{
    HostFixture f;
    f.reachReady();
    const QString firstToken = f.runner->token();
    QVERIFY(f.host.pushSnapshot({{QStringLiteral("tx"), 1}}));
    f.host.start(); // a living helper is left alone
    QCOMPARE(f.runner->calls, calls({"start"}));
    f.host.sendShutdown();
    f.runner->end(0);
    f.helper.leave();
    f.reachReady();
    QVERIFY(f.runner->token() != firstToken);
    QVERIFY(f.host.pushSnapshot({{QStringLiteral("tx"), 1}}));
    QCOMPARE(f.host.lastSequence(), 2);
}

void TestHelperLife::nothingIsSentUnlessReady()
{
    HostFixture f;
    QVERIFY(!f.host.sendShow());
    QVERIFY(!f.host.sendHide());
    QVERIFY(!f.host.pushSnapshot({}));
    QVERIFY(!f.host.respond(1, {}));
    QVERIFY(!f.host.sendRaw("EVT\n"));
    f.host.sendShutdown();
    f.host.dropLink();
    QCOMPARE(f.host.state(), State::Idle);
    f.host.start();
    f.helper.enter(f.runner->server());
    QTRY_COMPARE(f.host.state(), State::Authenticating);
    QVERIFY(!f.host.pushSnapshot({}));
}

void TestHelperLife::droppedLink()
{
    HostFixture f;
    f.reachReady();
    QSignalSpy closed(&f.host, &HelperHost::closed);
    f.host.dropLink();
    QTRY_VERIFY(!f.helper.isConnected());
    QVERIFY(closed.isEmpty());
    f.runner->end(0);
    QCOMPARE(closed.count(), 1);
}

void TestHelperLife::tokenIsInNoTrafficAndNoLog()
{
    QString token;
    QStringList traffic;
    QString log;
    {
        LogCollector collector;
        HostFixture f;
        connect(&f.host, &HelperHost::lineTraffic, this,
                [&traffic](HelperLink::Direction, const QString& text) { traffic += text; });
        f.reachReady();
        token = f.runner->token();
        QVERIFY(f.host.sendShow(QPoint(1, 2)));
        emit f.runner->outputLine(QLatin1String("started with ") + token);
        QVERIFY(f.helper.hear().startsWith(QLatin1String("SHOW")));
        f.helper.say(QLatin1String("BABBLE ") + token);
        QTRY_COMPARE(f.host.state(), State::Idle);
        log = collector.text();
    }
    QCOMPARE(traffic, QStringList({QStringLiteral("AUTH ***"), QStringLiteral("READY"),
                                   QStringLiteral("SHOW_MINIBAR 1,2"), QStringLiteral("BABBLE ***")}));
    QVERIFY(log.contains(QLatin1String("helper: AUTH ***")));
    QVERIFY(log.contains(QLatin1String("main: SHOW_MINIBAR 1,2")));
    QVERIFY(log.contains(QLatin1String("Helper: started with ***")));
    QVERIFY(log.contains(QLatin1String("unexpected line: BABBLE ***")));
    QVERIFY2(!log.contains(token), qPrintable(log));
}

QTEST_GUILESS_MAIN(TestHelperLife)
#include "tst_helper_life.moc"
