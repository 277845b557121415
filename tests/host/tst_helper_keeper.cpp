#include "host/FakeHelper.h"
#include "host/HelperKeeper.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

const RestartSchedule fast{{1ms, 2ms, 4ms}, 60s};

void expectRestart(int milliseconds)
{
    const QString text = QStringLiteral("The mini bar starts again in %1 ms.").arg(milliseconds);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(text));
}

// A host whose helper is kept running.
struct Kept
{
    explicit Kept(const RestartSchedule& schedule = fast)
        : keeper(f.host, schedule)
    {
        keeper.start();
    }

    // The helper crashes before it is ready; the number of starts so far.
    int crash()
    {
        expectEnd(QStringLiteral("It crashed"));
        f.runner->end(11, true);
        return starts();
    }
    [[nodiscard]] int starts() const { return f.runner->calls.count(QStringLiteral("start")); }

    HostFixture f;
    HelperKeeper keeper;
};

} // namespace

class TestHelperKeeper final : public QObject
{
    Q_OBJECT

private slots:
    void usualSchedule();
    void pauseGrowsToTheCap();
    void unstableRunsDoNotReset();
    void stableRunResets();
    void wantedEndStaysEnded_data();
    void wantedEndStaysEnded();
    void startEndsThePause();
    void neverStartsAgain();
    void programThatIsMissing();
    void processThatCannotBeEnded();
};

void TestHelperKeeper::usualSchedule()
{
    const RestartSchedule usual;
    QCOMPARE(usual.pauses.front(), std::chrono::milliseconds(500ms));
    QCOMPARE(usual.pauses.back(), std::chrono::milliseconds(30s));
    for (std::size_t i = 1; i < usual.pauses.size(); ++i)
        QVERIFY(usual.pauses[i] > usual.pauses[i - 1]);
    QCOMPARE(usual.stable, std::chrono::milliseconds(60s));
}

void TestHelperKeeper::pauseGrowsToTheCap()
{
    Kept kept;
    int starts = kept.starts();
    for (const int pause : {1, 2, 4, 4, 4}) {
        expectRestart(pause);
        QCOMPARE(kept.crash(), starts); // not at once
        QVERIFY(kept.keeper.isWaiting());
        QCOMPARE(kept.keeper.pause(), std::chrono::milliseconds(pause));
        ++starts;
        QTRY_COMPARE(kept.starts(), starts);
        QVERIFY(!kept.keeper.isWaiting());
    }
}

void TestHelperKeeper::unstableRunsDoNotReset()
{
    Kept kept;
    for (const int pause : {1, 2, 4}) {
        kept.f.reachReady();
        expectRestart(pause);
        const int starts = kept.crash();
        kept.f.helper.leave();
        QTRY_COMPARE(kept.starts(), starts + 1);
    }
}

void TestHelperKeeper::stableRunResets()
{
    Kept kept({{1ms, 200ms}, 1ms});
    for (int i = 0; i < 3; ++i) {
        kept.f.reachReady();
        QElapsedTimer ready;
        ready.start();
        QTRY_VERIFY(ready.hasExpired(5));
        expectRestart(1);
        const int starts = kept.crash();
        kept.f.helper.leave();
        QTRY_COMPARE(kept.starts(), starts + 1);
    }
}

void TestHelperKeeper::wantedEndStaysEnded_data()
{
    QTest::addColumn<bool>("polite");
    QTest::newRow("shut down") << true;
    QTest::newRow("link dropped") << false;
}

void TestHelperKeeper::wantedEndStaysEnded()
{
    QFETCH(bool, polite);
    Kept kept;
    kept.f.reachReady();
    if (polite)
        kept.f.host.sendShutdown();
    else
        kept.f.host.dropLink();
    kept.f.runner->end(0);
    QVERIFY(kept.f.host.wasEndWanted());
    QVERIFY(!kept.keeper.isWaiting());
}

void TestHelperKeeper::startEndsThePause()
{
    Kept kept({{1h}, 60s});
    expectRestart(3600000);
    QCOMPARE(kept.crash(), 1);
    QVERIFY(kept.keeper.isWaiting());
    kept.keeper.start();
    QVERIFY(!kept.keeper.isWaiting());
    QCOMPARE(kept.starts(), 2);
}

void TestHelperKeeper::neverStartsAgain()
{
    Kept kept(RestartSchedule::never());
    QCOMPARE(kept.crash(), 1);
    QVERIFY(!kept.keeper.isWaiting());
}

void TestHelperKeeper::programThatIsMissing()
{
    Kept kept;
    expectEnd(QStringLiteral("The helper did not start: No such file"));
    expectRestart(1);
    kept.f.runner->fail(QStringLiteral("No such file"));
    QTRY_COMPARE(kept.starts(), 2);
}

void TestHelperKeeper::processThatCannotBeEnded()
{
    HelperTimeouts impatient;
    impatient.leave = impatient.terminate = impatient.kill = 1ms;
    HostFixture f(impatient);
    HelperKeeper keeper(f.host, {{1ms, 50ms}, 60s});
    f.runner->obeysTerminate = false;
    f.runner->obeysKill = false;
    keeper.start();
    f.reachReady();
    QSignalSpy closed(&f.host, &HelperHost::closed);
    expectEnd(QStringLiteral("could not be ended"));
    expectRestart(1);
    expectRestart(50); // it is still in the way
    f.helper.leave();
    QTRY_COMPARE(closed.count(), 1);
    QTRY_COMPARE(keeper.pause(), std::chrono::milliseconds(50ms));
    f.runner->end(9, true);
    QTRY_COMPARE(f.runner->calls.count(QStringLiteral("start")), 2);
}

QTEST_GUILESS_MAIN(TestHelperKeeper)
#include "tst_helper_keeper.moc"
