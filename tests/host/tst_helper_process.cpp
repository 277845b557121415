#include "host/FakeHelper.h"
#include "host/HelperChild.h"
#include "host/HelperProcess.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

class TestHelperProcess final : public QObject
{
    Q_OBJECT

private slots:
    void programIsMissing();
    void realProcess_data();
    void realProcess();
    void destroyedHostEndsItsProcess();
    void longOutputComesInPieces();
};

void TestHelperProcess::programIsMissing()
{
    HelperHost host(std::make_unique<HelperProcess>(QStringLiteral("/nonexistent/helper")));
    QSignalSpy failed(&host, &HelperHost::failed);
    expectEnd(QStringLiteral("The helper did not start: "));
    host.start();
    QTRY_COMPARE(failed.count(), 1);
}

void TestHelperProcess::realProcess_data()
{
    QTest::addColumn<QString>("behaviour");
    QTest::addColumn<QString>("reason");
    QTest::newRow("good") << HelperChild::good << QString();
    QTest::newRow("exits") << HelperChild::exits << QStringLiteral("Its exit code was 42.");
    QTest::newRow("crashes") << HelperChild::crashes << QStringLiteral("It crashed.");
    QTest::newRow("deaf") << HelperChild::deaf << QString();
}

void TestHelperProcess::realProcess()
{
    QFETCH(QString, behaviour);
    QFETCH(QString, reason);
    HelperTimeouts timeouts;
    timeouts.leave = behaviour == HelperChild::deaf ? 50ms : 5000ms;
    timeouts.terminate = 50ms;
    auto* process = new HelperProcess(QCoreApplication::applicationFilePath(), {behaviour});
    HelperHost host{std::unique_ptr<HelperRunner>(process), timeouts};
    QSignalSpy ready(&host, &HelperHost::ready);
    QSignalSpy visible(&host, &HelperHost::visible);
    QSignalSpy closed(&host, &HelperHost::closed);
    QTest::ignoreMessage(QtWarningMsg, "Helper: started");
    host.start();
    QTRY_COMPARE(ready.count(), 1);
    if (!reason.isEmpty())
        expectEnd(QRegularExpression::escape(reason));
    QVERIFY(host.sendShow());
    if (reason.isEmpty()) {
        QTRY_COMPARE(visible.count(), 1);
        host.sendShutdown();
    }
    QTRY_COMPARE(closed.count(), 1);
    QVERIFY(!process->isRunning());
}

void TestHelperProcess::destroyedHostEndsItsProcess()
{
    auto* process = new HelperProcess(QCoreApplication::applicationFilePath(), {HelperChild::deaf});
    auto host = std::make_unique<HelperHost>(std::unique_ptr<HelperRunner>(process));
    QTest::ignoreMessage(QtWarningMsg, "Helper: started");
    host->start();
    QTRY_VERIFY(host->isReady());
    const auto id = static_cast<pid_t>(process->processId());
    QVERIFY(HelperChild::isAlive(id));
    host.reset();
    QVERIFY(!HelperChild::isAlive(id));
}

void TestHelperProcess::longOutputComesInPieces()
{
    HelperProcess process(QCoreApplication::applicationFilePath(), {HelperChild::chatters});
    QStringList lines;
    connect(&process, &HelperRunner::outputLine, this, [&lines](const QString& line) { lines += line; });
    QSignalSpy finished(&process, &HelperRunner::finished);
    process.start({QStringLiteral("--tarvinel-minibar-helper")});
    QTRY_COMPARE(finished.count(), 1);
    const QString all = lines.join(QString());
    QCOMPARE(all.size(), QStringLiteral("started").size() + HelperChild::chatterLength);
    QVERIFY(lines.size() > 2);
    QCOMPARE(lines.first(), QStringLiteral("started"));
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    if (HelperChild::isWanted(application.arguments()))
        return HelperChild::run(application.arguments());
    TestHelperProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_helper_process.moc"
