#include "host/FakeHelper.h"
#include "simulator/MainWindow.h"
#include "simulator/MiniBarSession.h"
#include "simulator/QuantitySpinBox.h"
#include "simulator/SignalGenerator.h"
#include "simulator/SimulatorOptions.h"

#include <QAbstractButton>
#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Simulator;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(Simulator::OptionsResult)

namespace {

// What the offscreen platform complains about whenever a window does this.
void expectPlatformWarning(const char* operation)
{
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        return;
    const QString text = QStringLiteral("This plugin does not support %1()").arg(QLatin1String(operation));
    QTest::ignoreMessage(QtWarningMsg, qPrintable(text));
}

void expectSilence()
{
    QTest::ignoreMessage(QtWarningMsg, "The mini bar does not answer");
}

void expectRestart()
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^The mini bar starts again in \\d+ ms\\.$")));
}

// The window in front of a new instrument.
struct Panel
{
    Panel()
        : window(instrument)
    {
        expectPlatformWarning("propagateSizeHints");
        window.show();
    }

    template <typename Widget>
    Widget* find(const char* name)
    {
        auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            qFatal("No %s", name);
        return widget;
    }

    // The half of a switch, by the name that assistive programs read.
    QAbstractButton* half(const char* accessibleName)
    {
        const auto buttons = window.findChildren<QAbstractButton*>();
        for (QAbstractButton* button : buttons) {
            if (button->accessibleName() == QLatin1String(accessibleName))
                return button;
        }
        qFatal("No half %s", accessibleName);
    }

    void press(const char* accessibleName) { QTest::mouseClick(half(accessibleName), Qt::LeftButton); }
    void type(const char* field, const char* keys)
    {
        auto* box = find<QuantitySpinBox>(field);
        box->selectAll();
        QTest::keyClicks(box, QString::fromLatin1(keys));
        QTest::keyClick(box, Qt::Key_Return);
    }

    SignalGenerator instrument;
    MainWindow window;
};

// Main window and mini bar taking turns; `mainVisible` is what the session asked for last.
struct Turns
{
    explicit Turns(const HelperTimeouts& timeouts = {}, const RestartSchedule& schedule = {})
        : f(timeouts)
        , session(f.host, schedule)
    {
        QObject::connect(&session, &MiniBarSession::mainWindowWanted, &session,
                         [this](bool visible) { mainVisible = visible; });
    }

    HostFixture f;
    MiniBarSession session;
    bool mainVisible = true;
};

} // namespace

class TestSimulatorWindow final : public QObject
{
    Q_OBJECT

private slots:
    void typedValues_data();
    void typedValues();
    void arrowsStep();
    void switchesAskTheInstrument();
    void windowFollowsTheInstrument();
    void closedInstrumentLocksItsControls();
    void sweepAndModulationAreShown();
    void everyControlHasAName();
    void lastRequests();
    void longStatusTakesNoRoomFromOthers();
    void minimiseButtonAndClose();
    void turns();
    void barThatDoesNotAnswer();
    void barThatDoesNotHide();
    void barThatHangsWhileShown();
    void barThatDies();
    void barThatDiesComesAgain();
    void minimiseStartsTheHelper();
    void minimiseWhileStarting();
    void options_data();
    void options();
};

void TestSimulatorWindow::typedValues_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<double>("hz");
    QTest::addColumn<double>("dbm");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const char* field, const char* keys, double hz, double dbm,
                        const char* shown) {
        QTest::newRow(name) << QByteArray(field) << QByteArray(keys) << hz << dbm
                            << QString::fromLatin1(shown);
    };
    row("with unit", "frequencyField", "2.4 GHz", 2.4e9, -20, "2.4 GHz");
    row("unit letter", "frequencyField", "900k", 900e3, -20, "900 kHz");
    row("shown unit", "frequencyField", "5", 5e9, -20, "5 GHz");
    row("too high", "frequencyField", "7g", 1e9, -20, "1 GHz");
    row("nonsense", "frequencyField", "abc", 1e9, -20, "1 GHz");
    row("level", "levelField", "-10.5", 1e9, -10.5, "-10.5 dBm");
    row("level with unit", "levelField", "3 dBm", 1e9, 3, "3 dBm");
    row("level too low", "levelField", "-121", 1e9, -20, "-20 dBm");
}

void TestSimulatorWindow::typedValues()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, keys);
    Panel panel;
    panel.type(field.constData(), keys.constData());
    QTEST(panel.instrument.centerHz(), "hz");
    QTEST(panel.instrument.levelDbm(), "dbm");
    QTEST(panel.find<QuantitySpinBox>(field.constData())->text(), "shown");
}

void TestSimulatorWindow::arrowsStep()
{
    Panel panel;
    QTest::keyClick(panel.find<QuantitySpinBox>("frequencyField"), Qt::Key_Up);
    QCOMPARE(panel.instrument.centerHz(), 1.001e9);
    QTest::keyClick(panel.find<QuantitySpinBox>("levelField"), Qt::Key_Down);
    QCOMPARE(panel.instrument.levelDbm(), -21.0);
}

void TestSimulatorWindow::switchesAskTheInstrument()
{
    Panel panel;
    QSignalSpy changed(&panel.instrument, &SignalGenerator::changed);
    panel.press("RF output ON");
    QVERIFY(panel.instrument.isRfOn());
    QVERIFY(panel.half("RF output ON")->isChecked());
    QVERIFY(!panel.half("RF output OFF")->isChecked());
    panel.press("RF output ON");
    QCOMPARE(changed.count(), 1);
    QVERIFY(panel.half("RF output ON")->isChecked());
    QTest::keyClick(panel.half("Instrument Closed"), Qt::Key_Space);
    QVERIFY(!panel.instrument.isOpen());
    QVERIFY(panel.half("RF output OFF")->isChecked());
}

void TestSimulatorWindow::windowFollowsTheInstrument()
{
    Panel panel;
    QSignalSpy changed(&panel.instrument, &SignalGenerator::changed);
    panel.instrument.setCenterHz(123456789.012);
    panel.instrument.setLevelDbm(-10.1234);
    QCOMPARE(panel.find<QuantitySpinBox>("frequencyField")->text(), QStringLiteral("123.456789012 MHz"));
    QCOMPARE(panel.find<QuantitySpinBox>("levelField")->text(), QStringLiteral("-10.123 dBm"));
    QTest::keyClick(panel.find<QuantitySpinBox>("levelField"), Qt::Key_Return);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(panel.instrument.levelDbm(), -10.1234); // showing it did not round it
}

void TestSimulatorWindow::closedInstrumentLocksItsControls()
{
    Panel panel;
    panel.press("Instrument Closed");
    QVERIFY(!panel.find<QuantitySpinBox>("frequencyField")->isEnabled());
    QVERIFY(!panel.find<QuantitySpinBox>("levelField")->isEnabled());
    QVERIFY(!panel.half("RF output ON")->isEnabled());
    panel.press("Instrument Open");
    QVERIFY(panel.find<QuantitySpinBox>("frequencyField")->isEnabled());
    QVERIFY(panel.half("RF output ON")->isEnabled());
}

void TestSimulatorWindow::sweepAndModulationAreShown()
{
    Panel panel;
    const auto shows = [&panel](const char* name, const char* text) {
        QCOMPARE(panel.find<QLabel>(name)->text(), QString::fromUtf8(text));
    };
    shows("sweepDetail", "1 GHz to 2 GHz\nstep 10 MHz, dwell 1 ms");
    shows("sweepState", "OFF");
    shows("modulationDetail", "None");
    shows("modulationState", "OFF");
    SweepTurn turn;
    turn.enabled = true;
    turn.selectedPlanId = SweepPlanId::LevelScan;
    panel.instrument.turnSweep(turn);
    panel.instrument.turnModulation(QStringLiteral("pm"));
    shows("sweepDetail", "-20 dBm to -19 dBm\nstep 1 dB, dwell 1 ms");
    shows("sweepState", "ON");
    shows("modulationDetail", "Phase Modulation");
    shows("modulationState", "ON");
    turn.available = false;
    turn.selectedPlanId = SweepPlanId::Unsupported;
    panel.instrument.turnSweep(turn);
    shows("sweepDetail", "A plan that the mini bar cannot show");
    panel.instrument.turnModulation(QString());
    shows("modulationState", "OFF");
    panel.press("Instrument Closed");
    QVERIFY(!panel.find<QLabel>("sweepDetail")->isEnabled());
    QVERIFY(!panel.find<QLabel>("modulationState")->isEnabled());
}

void TestSimulatorWindow::everyControlHasAName()
{
    Panel panel;
    int controls = 0;
    const auto widgets = panel.window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const bool isControl = widget->focusPolicy() != Qt::NoFocus && !widget->focusProxy() &&
                               !qobject_cast<const QAbstractSpinBox*>(widget->parentWidget());
        if (!isControl)
            continue;
        ++controls;
        QVERIFY2(!widget->accessibleName().isEmpty(), widget->metaObject()->className());
    }
    QCOMPARE(controls, 7);
}

void TestSimulatorWindow::lastRequests()
{
    Panel panel;
    auto* label = panel.find<QLabel>("lastRequests");
    QCOMPARE(label->text(), QStringLiteral("No requests yet."));
    for (int i = 1; i <= 6; ++i)
        panel.window.addRequest(QStringLiteral("CMD%1 <b>").arg(i), QStringLiteral("ok"));
    const QStringList lines = label->accessibleDescription().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.first().endsWith(QLatin1String("CMD6 <b> ok")));
    QVERIFY(lines.last().endsWith(QLatin1String("CMD3 <b> ok")));
    QVERIFY(label->text().contains(QLatin1String("CMD6 &lt;b&gt;")));
    QVERIFY(!label->text().contains(QLatin1String("CMD2")));
}

void TestSimulatorWindow::longStatusTakesNoRoomFromOthers()
{
    Panel panel;
    const auto heights = [&panel] {
        QVector<int> all;
        for (const char* name :
             {"frequencyField", "levelField", "minimiseButton", "sweepDetail", "lastRequests"})
            all += panel.find<QWidget>(name)->height();
        return all;
    };
    panel.window.showStatus(QStringLiteral("The mini bar is ready."));
    QCoreApplication::processEvents();
    const QVector<int> before = heights();
    auto* status = panel.find<QLabel>("statusLine");
    QString text;
    for (int lines = 1; lines <= 5; ++lines) {
        text += QStringLiteral("The helper ended. It crashed. The mini bar starts ");
        panel.window.showStatus(text.trimmed());
        QTRY_VERIFY(status->height() >= status->heightForWidth(status->width()));
        QCOMPARE(heights(), before);
    }
}

void TestSimulatorWindow::minimiseButtonAndClose()
{
    Panel panel;
    QSignalSpy minimise(&panel.window, &MainWindow::minimiseWanted);
    QSignalSpy close(&panel.window, &MainWindow::closeRequested);
    panel.press("Minimise to mini bar");
    QCOMPARE(minimise.count(), 1);
    QVERIFY(!panel.window.close());
    QCOMPARE(close.count(), 1);
    QVERIFY(panel.window.isVisible());
    panel.window.showMinimized();
    QTRY_COMPARE(minimise.count(), 2);
    expectPlatformWarning("raise");
    panel.window.bringBack();
    QVERIFY(!panel.window.isMinimized());
}

void TestSimulatorWindow::turns()
{
    Turns t;
    t.session.start();
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar is starting."));
    t.f.reachReady();
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar is ready."));
    QVERIFY(t.mainVisible);

    t.session.minimise(QPoint(800, 20));
    QVERIFY(!t.mainVisible);
    QCOMPARE(t.f.helper.hear(), QStringLiteral("SHOW_MINIBAR 800,20"));
    t.f.helper.say(QStringLiteral("VISIBLE"));
    QTRY_COMPARE(t.session.status(), QStringLiteral("The mini bar is shown."));

    t.f.helper.say(QStringLiteral("RESTORE_REQUEST"));
    QCOMPARE(t.f.helper.hear(), QStringLiteral("HIDE_MINIBAR"));
    QVERIFY(!t.mainVisible); // not before the bar is gone
    t.f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_VERIFY(t.mainVisible);
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar is ready."));
}

void TestSimulatorWindow::barThatDoesNotAnswer()
{
    HelperTimeouts timeouts;
    timeouts.acknowledge = 500ms; // that passes once; the answers below come in less
    Turns t(timeouts);
    t.f.reachReady();
    expectSilence();
    t.session.minimise(std::nullopt);
    QCOMPARE(t.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    QTRY_VERIFY(t.mainVisible);
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar does not answer."));
    QCOMPARE(t.f.helper.hear(), QStringLiteral("HIDE_MINIBAR"));
    QVERIFY(t.f.host.isReady());
    t.f.helper.say(QStringLiteral("VISIBLE"));
    t.f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_COMPARE(t.session.status(), QStringLiteral("The mini bar is ready."));
}

void TestSimulatorWindow::barThatDoesNotHide()
{
    HelperTimeouts timeouts;
    timeouts.acknowledge = 50ms;
    Turns t(timeouts);
    t.f.reachReady();
    expectSilence();
    t.session.minimise(std::nullopt);
    t.f.helper.say(QStringLiteral("VISIBLE"));
    t.f.helper.say(QStringLiteral("RESTORE_REQUEST"));
    QTRY_VERIFY(t.mainVisible);
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar does not answer."));
}

void TestSimulatorWindow::barThatHangsWhileShown()
{
    HelperTimeouts timeouts;
    timeouts.acknowledge = timeouts.question = 50ms;
    Turns t(timeouts);
    t.f.reachReady();
    t.session.minimise(std::nullopt);
    QCOMPARE(t.f.helper.hear(), QStringLiteral("SHOW_MINIBAR"));
    t.f.helper.say(QStringLiteral("VISIBLE"));
    QTRY_COMPARE(t.session.status(), QStringLiteral("The mini bar is shown."));
    expectSilence();
    QCOMPARE(t.f.helper.hear(), QStringLiteral("SHOW_MINIBAR")); // is it still there?
    QTRY_COMPARE(t.session.status(), QStringLiteral("The mini bar does not answer."));
    QVERIFY(t.mainVisible);
    QCOMPARE(t.f.helper.hear(), QStringLiteral("HIDE_MINIBAR"));
    t.f.helper.say(QStringLiteral("VISIBLE"));
    t.f.helper.say(QStringLiteral("HIDDEN"));
    QTRY_COMPARE(t.session.status(), QStringLiteral("The mini bar is ready."));
}

void TestSimulatorWindow::barThatDies()
{
    Turns t;
    t.f.reachReady();
    t.session.minimise(std::nullopt);
    QVERIFY(!t.mainVisible);
    expectEnd(QStringLiteral("Its exit code was 9."));
    expectRestart();
    t.f.runner->end(9);
    QVERIFY(t.mainVisible);
    QCOMPARE(t.session.status(), QStringLiteral("The helper ended. Its exit code was 9. The mini bar starts "
                                                "again in 0.5 s."));
}

void TestSimulatorWindow::barThatDiesComesAgain()
{
    Turns t({}, {{1ms}, 60s});
    t.f.reachReady();
    t.session.minimise(std::nullopt);
    expectEnd(QStringLiteral("It crashed."));
    expectRestart();
    t.f.runner->end(11, true);
    t.f.helper.leave();
    QTRY_COMPARE(t.f.runner->calls.count(QStringLiteral("start")), 2);
    t.f.reachReady();
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar is ready."));
    QVERIFY(t.mainVisible); // it is ready, and waits to be asked for
    t.f.host.sendShutdown();
    t.f.runner->end(0);
    QCOMPARE(t.session.status(), QStringLiteral("The mini bar was shut down."));
}

void TestSimulatorWindow::minimiseStartsTheHelper()
{
    Turns t;
    t.session.minimise(QPoint(1, 2));
    QVERIFY(t.mainVisible);
    expectEnd(QStringLiteral("The helper did not start: No such file"));
    expectRestart();
    t.f.runner->fail(QStringLiteral("No such file"));
    QVERIFY(t.mainVisible);
    QVERIFY(t.session.status().startsWith(QLatin1String("The helper did not start: No such file")));
    // A failed try is forgotten: the helper that starts later does not take the window away.
    t.session.start();
    t.f.reachReady();
    QVERIFY(t.mainVisible);
}

void TestSimulatorWindow::minimiseWhileStarting()
{
    Turns t;
    t.session.start();
    t.session.minimise(QPoint(1, 2));
    QVERIFY(t.mainVisible);
    t.f.reachReady();
    QVERIFY(!t.mainVisible);
    QCOMPARE(t.f.helper.hear(), QStringLiteral("SHOW_MINIBAR 1,2"));
}

void TestSimulatorWindow::options_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<OptionsResult>("result");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QStringList& arguments, OptionsResult result,
                        const char* text) {
        QTest::newRow(name) << arguments << result << QString::fromLatin1(text);
    };
    row("none", {}, OptionsResult::Run, "");
    row("help", {QStringLiteral("--help")}, OptionsResult::Help, "--scenario <file>");
    row("unknown", {QStringLiteral("--fast")}, OptionsResult::Invalid, "Unknown option 'fast'");
    row("without value", {QStringLiteral("--helper")}, OptionsResult::Invalid, "Missing value");
    row("positional", {QStringLiteral("tour.json")}, OptionsResult::Invalid,
        "Unexpected argument 'tour.json'.");
    row("anchor", {QStringLiteral("--anchor"), QStringLiteral("1200,40")}, OptionsResult::Run, "");
    row("waveforms", {QStringLiteral("--waveforms"), QStringLiteral("/mine/data")}, OptionsResult::Run, "");
    row("bad anchor", {QStringLiteral("--anchor=1200")}, OptionsResult::Invalid, "'--anchor' needs");
}

void TestSimulatorWindow::options()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, text);
    SimulatorOptions options;
    QString said;
    QTEST(parseOptions(QStringList{QStringLiteral("program")} + arguments, options, said), "result");
    QVERIFY2(said.contains(text) && said.isEmpty() == text.isEmpty(), qPrintable(said));
    QVERIFY(options.waveforms.endsWith(QLatin1String("/data")) || !text.isEmpty());
    if (text.isEmpty()) // a folder that somebody has named is only read
        QCOMPARE(options.ownWaveforms, !arguments.contains(QStringLiteral("--waveforms")));
    QVERIFY(options.helper.endsWith(QLatin1String("/TarvinelMiniBar")) || !text.isEmpty());
    if (arguments.contains(QStringLiteral("1200,40")))
        QCOMPARE(options.anchor, std::optional<QPoint>(QPoint(1200, 40)));
}

QTEST_MAIN(TestSimulatorWindow)
#include "tst_simulator_window.moc"
