// The helper from its command line to its end: launch options, exit codes, handshake, and the ways it ends.

#include "support/Accessibility.h"
#include "support/Desktop.h"
#include "support/FakeMain.h"
#include "support/HelperProcess.h"
#include "support/PrivateDisplay.h"
#include "system/FullBacklog.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QTest>

using namespace TestSupport;

namespace {

const QString marker = QStringLiteral("--tarvinel-minibar-helper");
const QString server = QStringLiteral("--server");
const QString token = QStringLiteral("--token");
const QString hostPid = QStringLiteral("--host-pid");
// Stands in the rows for the name that the fake main process listens on.
const QString here = QStringLiteral("@here");

QStringList atServer(QStringList arguments, const FakeMain& main)
{
    arguments.replaceInStrings(here, main.serverName());
    return arguments;
}

} // namespace

class TestHelperStart final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void invalidOptions_data();
    void invalidOptions();
    void validOptions_data();
    void validOptions();
    void noServer_data();
    void noServer();
    void busyServer();
    void serverHangsUpAtOnce();
    void endsWithLink_data();
    void endsWithLink();
    void endsWhenMainProcessIsKilled();
    void tokenStaysOutOfLog();

private:
    PrivateDisplay m_display;
    Accessibility m_accessibility{m_display};
};

void TestHelperStart::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestHelperStart::invalidOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QStringList good = {
        marker, server, here, token, QStringLiteral("secret"), hostPid, QStringLiteral("4711")};
    const auto withPid = [&](const char* value) {
        return QStringList{
            marker, server, here, token, QStringLiteral("secret"), hostPid, QString::fromLatin1(value)};
    };
    QTest::newRow("no arguments") << QStringList();
    QTest::newRow("host pid 0") << withPid("0");
    QTest::newRow("host pid -5") << withPid("-5");
    QTest::newRow("host pid abc") << withPid("abc");
    QTest::newRow("host pid in hexadecimal") << withPid("0x10");
    QTest::newRow("host pid beyond 64 bits") << withPid("9223372036854775808");
    QTest::newRow("host pid missing") << QStringList(good.mid(0, 5));
    QTest::newRow("host pid stands last") << QStringList(good.mid(0, 6));
    QTest::newRow("server stands last")
        << QStringList{marker, token, QStringLiteral("secret"), hostPid, QStringLiteral("4711"), server};
    QTest::newRow("marker missing") << QStringList(good.mid(1));
    QTest::newRow("marker in capitals") << QStringList{marker.toUpper()} + good.mid(1);
    QTest::newRow("server empty") << QStringList{
        marker, server, QString(), token, QStringLiteral("secret"), hostPid, QStringLiteral("4711")};
    QTest::newRow("token blank") << QStringList{
        marker, server, here, token, QStringLiteral("  "), hostPid, QStringLiteral("4711")};
    QTest::newRow("server swallows the next option")
        << QStringList{marker, server, token, here, hostPid, QStringLiteral("4711")};
    QTest::newRow("value joined with =")
        << QStringList{marker, server + QLatin1Char('=') + here} + good.mid(3);
    QTest::newRow("last of two host pids counts") << good + QStringList{hostPid, QStringLiteral("0")};
}

void TestHelperStart::invalidOptions()
{
    QFETCH(QStringList, arguments);
    FakeMain main;
    HelperProcess helper(m_accessibility.environment());
    QVERIFY(helper.start(atServer(arguments, main)));

    const Desktop desktop(m_display);
    const auto windows = desktop.waitForWindows(helper.processId(), 1);
    QCOMPARE(windows.size(), 1);
    QCOMPARE(windows.first().title, QStringLiteral("TarvinelMiniBar"));
    const auto text =
        m_accessibility.waitForNode(helper.processId(), QStringLiteral("label"),
                                    QStringLiteral("TarvinelMiniBar is started automatically by Tarvinel."));
    QVERIFY(text);
    const auto tree = m_accessibility.application(helper.processId());
    QVERIFY(tree);
    int buttons = 0;
    QVERIFY(!findNode(*tree, [&buttons](const AccessibleNode& node) {
        buttons += node.role == QLatin1String("push button") ? 1 : 0;
        return false;
    }));
    QCOMPARE(buttons, 1);
    const auto ok =
        m_accessibility.waitForNode(helper.processId(), QStringLiteral("push button"), QStringLiteral("OK"));
    QVERIFY(ok);
    QVERIFY(desktop.click(windows.first().geometry.topLeft() + ok->extents.center()));
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(1));
    QVERIFY2(!main.isConnected() && main.received().isEmpty(), "no connection may be attempted");
}

void TestHelperStart::validOptions_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("handshake");
    const QString pid = QStringLiteral("4711");
    const QString secret = QStringLiteral("secret");
    QTest::newRow("in order") << QStringList{marker, server, here, token, secret, hostPid, pid}
                              << QByteArray("AUTH secret\nREADY\n");
    QTest::newRow("marker last") << QStringList{hostPid, pid, token, secret, server, here, marker}
                                 << QByteArray("AUTH secret\nREADY\n");
    QTest::newRow("blanks around options and values") << QStringList{QStringLiteral(" ") + marker,
                                                                     server + QStringLiteral(" "),
                                                                     QStringLiteral(" @here "),
                                                                     QStringLiteral(" --token "),
                                                                     QStringLiteral("\tsecret "),
                                                                     hostPid,
                                                                     pid}
                                                      << QByteArray("AUTH secret\nREADY\n");
    QTest::newRow("last of two values counts") << QStringList{marker,
                                                              server,
                                                              QStringLiteral("nowhere"),
                                                              token,
                                                              QStringLiteral("old"),
                                                              hostPid,
                                                              QStringLiteral("0"),
                                                              server,
                                                              here,
                                                              token,
                                                              secret,
                                                              hostPid,
                                                              pid}
                                               << QByteArray("AUTH secret\nREADY\n");
    QTest::newRow("unknown arguments are ignored") << QStringList{QStringLiteral("--verbose"),
                                                                  marker,
                                                                  QStringLiteral("x"),
                                                                  server,
                                                                  here,
                                                                  token,
                                                                  secret,
                                                                  hostPid,
                                                                  pid,
                                                                  QStringLiteral("--token")}
                                                   << QByteArray("AUTH secret\nREADY\n");
    QTest::newRow("a token that looks like an option")
        << QStringList{marker, token, server, server, here, hostPid, pid}
        << QByteArray("AUTH --server\nREADY\n");
    QTest::newRow("a token with blanks and letters beyond ASCII")
        << QStringList{marker, server, here, token, QStringLiteral("ä 1"), hostPid, pid}
        << QByteArray("AUTH \xc3\xa4 1\nREADY\n");
    QTest::newRow("the largest host pid")
        << QStringList{marker, server, here, token, secret, hostPid, QStringLiteral("9223372036854775807")}
        << QByteArray("AUTH secret\nREADY\n");
}

void TestHelperStart::validOptions()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, handshake);
    FakeMain main;
    HelperProcess helper;
    QVERIFY(helper.start(atServer(arguments, main)));
    QVERIFY(main.waitForCount("READY", 1));
    QCOMPARE(main.received(), handshake);
    main.sendLine("SHUTDOWN");
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(0));
    QCOMPARE(main.received(), handshake);
    QCOMPARE(helper.errorOutput(), QByteArray());
}

void TestHelperStart::noServer_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("nobody listens") << QStringLiteral("tarvinel-test-nobody");
    QTest::newRow("a path without a folder") << QStringLiteral("/nonexistent/folder/socket");
    QTest::newRow("a name beyond the system's limit") << QString(300, QLatin1Char('x'));
}

void TestHelperStart::noServer()
{
    QFETCH(QString, name);
    HelperProcess helper(m_display.environment());
    QElapsedTimer clock;
    clock.start();
    QVERIFY(
        helper.start({marker, server, name, token, QStringLiteral("secret"), hostPid, QStringLiteral("1")}));
    const Desktop desktop(m_display);
    int windows = 0;
    QVERIFY(waitUntil([&] {
        windows += desktop.mappedWindows(helper.processId()).size();
        return !helper.isRunning();
    }));
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(2));
    QCOMPARE(windows, 0);
    QCOMPARE(helper.errorOutput(), QByteArray());
    QVERIFY2(clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
}

void TestHelperStart::busyServer()
{
    FullBacklog busy;
    QVERIFY2(busy.start(), qPrintable(busy.errorString()));
    HelperProcess helper;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(helper.start(
        {marker, server, busy.name(), token, QStringLiteral("secret"), hostPid, QStringLiteral("1")}));
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(2));
    const qint64 elapsed = clock.elapsed();
    QVERIFY2(elapsed >= 2900 && elapsed < 4500, qPrintable(QString::number(elapsed)));
}

void TestHelperStart::serverHangsUpAtOnce()
{
    FakeMain main;
    main.hangUpOnAccept();
    HelperProcess helper;
    QVERIFY(helper.start(main.helperArguments()));
    const auto code = helper.waitForExitCode();
    // Which it is depends on whether the socket was closed before AUTH, before READY or after both were
    // written.
    QVERIFY2(code == 0 || code == 3 || code == 4, qPrintable(QString::number(code.value_or(-1))));
}

void TestHelperStart::endsWithLink_data()
{
    QTest::addColumn<bool>("shutDown");
    QTest::addColumn<bool>("shown");
    QTest::newRow("SHUTDOWN while hidden") << true << false;
    QTest::newRow("SHUTDOWN while shown") << true << true;
    QTest::newRow("socket closed while hidden") << false << false;
    QTest::newRow("socket closed while shown") << false << true;
}

void TestHelperStart::endsWithLink()
{
    QFETCH(bool, shutDown);
    QFETCH(bool, shown);
    FakeMain main;
    HelperProcess helper(m_display.environment());
    QVERIFY(helper.start(main.helperArguments()));
    QVERIFY(main.waitForHandshake());
    if (shown) {
        QVERIFY(main.show(QPoint(900, 100)));
        QCOMPARE(Desktop(m_display).waitForWindows(helper.processId(), 1).size(), 1);
    }
    if (shutDown)
        main.sendLine("SHUTDOWN");
    else
        main.hangUp();
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(0));
    QCOMPARE(main.count("RESTORE_REQUEST"), 0); // the close at the end is not the user's
    QCOMPARE(helper.errorOutput(), QByteArray());
}

void TestHelperStart::endsWhenMainProcessIsKilled()
{
    ChildProcess main;
    main.start(QStringLiteral(HOSTILE_PEER), {QStringLiteral("--serve")});
    QByteArray told;
    QTRY_VERIFY((told += main.readAllStandardOutput()).endsWith('\n'));
    QStringList arguments;
    const QVariantList parts = QJsonDocument::fromJson(told).toVariant().toList();
    for (const QVariant& part : parts)
        arguments += part.toString();
    HelperProcess helper(m_display.environment());
    QVERIFY(helper.start(arguments));
    QCOMPARE(Desktop(m_display).waitForWindows(helper.processId(), 1).size(), 1);
    main.killNow();
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(0));
}

void TestHelperStart::tokenStaysOutOfLog()
{
    FakeMain main;
    QProcessEnvironment environment = HelperProcess::offscreenEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tarvinel.*=true"));
    HelperProcess helper(environment);
    QVERIFY(helper.start(main.helperArguments()));
    QVERIFY(main.waitForHandshake());
    QVERIFY(main.hide());
    main.sendLine("SHUTDOWN");
    QCOMPARE(helper.waitForExitCode(), std::optional<int>(0));
    QVERIFY2(helper.errorOutput().contains("READY"), "the traffic is logged on demand");
    QVERIFY(!helper.errorOutput().contains(main.token().toUtf8()));
}

QTEST_GUILESS_MAIN(TestHelperStart)

#include "tst_helper_start.moc"
