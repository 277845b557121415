#include "support/Accessibility.h"
#include "support/Desktop.h"
#include "support/FakeMain.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"
#include "support/WindowManagers.h"

#include <QGuiApplication>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QTest>
#include <csignal>

using namespace TestSupport;

namespace {

const QString witnessProgram = QStringLiteral(TYPING_WITNESS);
constexpr char holdOption[] = "--hold"; // makes this program start a child of its own and wait

bool processExists(qint64 processId)
{
    return kill(pid_t(processId), 0) == 0;
}

} // namespace

class TestTestSupport final : public QObject
{
    Q_OBJECT

private slots:
    void windowManager_data();
    void windowManager();
    void pointerAndKeyboard();
    void screenResized();
    void pictures();
    void accessibility();
    void fakeMain();
    void childEndsWithCrashedParent();
};

void TestTestSupport::windowManager_data()
{
    QTest::addColumn<bool>("manages");
    for (const WindowManager& manager : windowManagers())
        QTest::addRow("%s", qPrintable(manager.name)) << !manager.arguments.isEmpty();
}

void TestTestSupport::windowManager()
{
    QFETCH(bool, manages);
    PrivateDisplay display(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    const Desktop desktop(display);
    QCOMPARE(desktop.x().hasWindowManager(), manages);
    ChildProcess witness;
    witness.setProcessEnvironment(display.environment());
    witness.start(witnessProgram, QStringList());
    const auto windows = desktop.waitForWindows(witness.processId(), 1);
    QCOMPARE(windows.size(), 1);
    QCOMPARE(windows.first().title, QStringLiteral("Typing witness"));
    QCOMPARE(windows.first().opacity, 1.0);
    if (manages)
        QTRY_COMPARE(desktop.x().activeWindow(), windows.first().id);
}

void TestTestSupport::pointerAndKeyboard()
{
    PrivateDisplay display;
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    const Desktop desktop(display);
    ChildProcess witness;
    witness.setProcessEnvironment(display.environment());
    witness.start(witnessProgram, QStringList());
    const auto windows = desktop.waitForWindows(witness.processId(), 1);
    QCOMPARE(windows.size(), 1);
    const WindowFacts window = windows.first();
    QTRY_COMPARE(desktop.x().activeWindow(), window.id);
    QVERIFY(desktop.click(window.geometry.center()));
    QVERIFY(desktop.type(QStringLiteral("2.4g -20")));
    QByteArray said;
    QTRY_VERIFY((said += witness.readAllStandardOutput()).contains("text 2.4g -20\n"));
    QVERIFY(desktop.key(QStringLiteral("BackSpace")));
    QTRY_VERIFY((said += witness.readAllStandardOutput()).endsWith("text 2.4g -2\n"));
}

void TestTestSupport::screenResized()
{
    PrivateDisplay display;
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    const Desktop desktop(display);
    QCOMPARE(desktop.x().screenSize(), QSize(1280, 800));
    QVERIFY(display.resizeScreen(QSize(1000, 700)));
    QCOMPARE(desktop.x().screenSize(), QSize(1000, 700));
    QVERIFY(display.resizeScreen(QSize(1280, 800)));
    QCOMPARE(desktop.x().screenSize(), QSize(1280, 800));
    QVERIFY2(!display.resizeScreen(QSize(4000, 3000)), "larger than the screen can get");
}

void TestTestSupport::pictures()
{
    PrivateDisplay display(QStringLiteral("none"), {QSize(640, 480)});
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    const Desktop desktop(display);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("screen.png"));
    QVERIFY(desktop.saveScreen(path));
    QCOMPARE(QImage(path).size(), QSize(640, 480));
    QCOMPARE(desktop.x().pixel(QPoint(10, 10)), QColor(Qt::black)); // the root window of a bare server
    QVERIFY(!desktop.x().pixel(QPoint(640, 10)).isValid());
}

void TestTestSupport::accessibility()
{
    PrivateDisplay display;
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    Accessibility bus(display);
    QVERIFY2(bus.start(), qPrintable(bus.errorString()));
    const Desktop desktop(display);
    ChildProcess witness;
    witness.setProcessEnvironment(bus.environment());
    witness.start(witnessProgram, QStringList());
    const auto isField = [](const AccessibleNode& node) { return node.role == QLatin1String("text"); };
    const auto field = bus.waitForNode(witness.processId(), isField);
    QVERIFY(field);
    const auto windows = desktop.waitForWindows(witness.processId(), 1);
    QCOMPARE(windows.size(), 1);
    QCOMPARE(field->extents, QRect(QPoint(0, 0), windows.first().geometry.size()));
    QVERIFY(desktop.type(QStringLiteral("hello")));
    QTRY_COMPARE(bus.waitForNode(witness.processId(), isField)->text, QStringLiteral("hello"));
    QVERIFY(QJsonDocument(toJson(*bus.application(witness.processId()))).toJson().contains("\"hello\""));
    QVERIFY(!bus.application(QCoreApplication::applicationPid()));
}

void TestTestSupport::fakeMain()
{
    FakeMain main;
    QVERIFY(!main.isConnected());
    QLocalSocket helper;
    helper.connectToServer(main.serverName());
    QVERIFY(helper.waitForConnected());
    helper.write("AUTH " + main.token().toUtf8() + "\nREADY\nREQ {\"id\":1}\nVISI");
    QVERIFY(main.waitForHandshake());
    QVERIFY(main.waitForRequests(1));
    QCOMPARE(main.requests().first().value(QStringLiteral("id")).toInt(), 1);
    QCOMPARE(main.lines().size(), 3); // an unfinished line is no line
    helper.write("BLE\n");
    QVERIFY(main.waitForCount("VISIBLE", 1));
    main.answer(1, true);
    QByteArray answered;
    QTRY_COMPARE(answered += helper.readAll(), QByteArray("RSP {\"id\":1,\"ok\":true}\n"));
    helper.disconnectFromServer();
    QVERIFY(main.waitForDisconnect());
}

void TestTestSupport::childEndsWithCrashedParent()
{
    ChildProcess parent;
    parent.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(holdOption)});
    QByteArray said;
    QTRY_VERIFY((said += parent.readAllStandardOutput()).endsWith('\n'));
    const qint64 grandchild = said.trimmed().toLongLong();
    QVERIFY(grandchild > 0 && processExists(grandchild));
    parent.killNow();
    // Whoever adopts the ended process may leave it as a zombie; it must not be running any more.
    QTRY_VERIFY([grandchild] {
        QFile status(QStringLiteral("/proc/%1/status").arg(grandchild));
        return !status.open(QIODevice::ReadOnly) || status.readAll().contains("\nState:\tZ");
    }());
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(QString::fromLatin1(holdOption))) {
        ChildProcess child;
        child.start(QStringLiteral("sleep"), {QStringLiteral("600")});
        child.waitForStarted();
        QTextStream(stdout) << child.processId() << Qt::endl;
        return QCoreApplication::exec();
    }
    TestTestSupport test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_support.moc"
