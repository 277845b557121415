#include "controls/LabelButton.h"
#include "minibar/BarParts.h"
#include "minibar/RemoteMiniBarWindow.h"
#include "support/TouchCounter.h"

#include <QJsonObject>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QVector>

using BarParts::click;
using BarParts::collapsed;
using BarParts::expanded;
using BarParts::infoButtons;
using BarParts::json;

// What the buttons of the bar show and ask for.
class TestBarControls : public QObject
{
    Q_OBJECT

private slots:
    void statusTexts_data();
    void statusTexts();
    void parentCheckedFollows();
    void unchangedSnapshotTouchesNothing();
    void rfSnapsBack();
    void modButtonFollowsTheBusinesses();
    void controlsCanBeLocked();
};

void TestBarControls::statusTexts_data()
{
    QTest::addColumn<QByteArray>("snapshot");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("info");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("enabled");

    const auto row = [](const char* name, const QByteArray& snapshot, int index, const char* text,
                        const char* info, bool checked, bool enabled) {
        QTest::newRow(name) << snapshot << index << QString::fromLatin1(text) << QString::fromLatin1(info)
                            << checked << enabled;
    };
    const auto sweep = [](const char* plan, bool enabled, bool available = true, const char* list = "fscan") {
        return QStringLiteral(R"({"sweep":{"available":%1,"revision":1,"enabled":%2,"selectedPlanId":"%3",
            "frequencyPlan":{"startHz":1,"stopHz":2,"stepHz":3},"levelPlan":{"startDbm":4,"stopDbm":5,"stepDb":6},
            "dwellSeconds":1,"supportedPlanIds":["%4"]}})")
            .arg(QVariant(available).toString(), QVariant(enabled).toString(), QLatin1String(plan),
                 QLatin1String(list))
            .toUtf8();
    };
    row("RF on", R"({"tx":{"rf":true}})", 0, "RF", "ON", true, true);
    row("RF off", R"({"tx":{"rf":false}})", 0, "RF", "OFF", false, true);
    row("frequency", R"({"tx":{"centerHz":2412345678}})", 1, "Frequency", "2.412345678GHz", false, true);
    row("frequency text", R"({"tx":{"centerText":" 5 GHz "}})", 1, "Frequency", "5 GHz", false, true);
    row("level", R"({"tx":{"levelDbm":-12.5}})", 2, "Level", "-12.5 dBm", false, true);
    row("no sweep", "{}", 3, "Fre/Pwr", "Sweep", false, false);
    row("sweep off", sweep("fscan", false), 3, "Fre/Pwr", "Sweep", false, true);
    row("frequency sweep", sweep("fscan", true), 3, "Freq", "Sweep", true, true);
    row("level sweep", sweep("lscan", true, true, "lscan"), 3, "Power", "Sweep", true, true);
    row("unsupported sweep", sweep("unsupported", true, false), 3, "Unsupported", "Sweep", true, false);
    row("unavailable sweep", sweep("fscan", false, false), 3, "Fre/Pwr", "Sweep", false, false);
    row("modulation on", R"({"mod":{"enabled":true}})", 4, "MOD", "ON", true, false);
    row("modulation off", R"({"mod":{"enabled":false,"businesses":[{"id":"a","text":"A"}]}})", 4, "MOD",
        "OFF", false, true);
}

void TestBarControls::statusTexts()
{
    QFETCH(QByteArray, snapshot);
    QFETCH(int, index);
    RemoteMiniBarWindow window;
    window.applySnapshot(json(snapshot));
    for (const QWidget* onePage : {collapsed(window), expanded(window)}) {
        const QVector<LabelButton*> buttons = infoButtons(onePage);
        if (index >= buttons.size())
            continue;
        QTEST(buttons.at(index)->text(), "text");
        QTEST(buttons.at(index)->labelText(), "info");
        QTEST(buttons.at(index)->isChecked(), "checked");
        QTEST(buttons.at(index)->isEnabled(), "enabled");
    }
}

void TestBarControls::parentCheckedFollows()
{
    RemoteMiniBarWindow window;
    for (const char* rf : {"false", "true", "false"}) {
        window.applySnapshot(json(QByteArray(R"({"tx":{"rf":)") + rf + "}}"));
        for (const QWidget* onePage : {collapsed(window), expanded(window)}) {
            const LabelButton* button = infoButtons(onePage).constFirst();
            const QVariant expected(QByteArray(rf) == "true");
            QCOMPARE(button->property("parentChecked"), expected);
            for (const char* label : {"textLabel", "infoLabel"})
                QCOMPARE(button->findChild<QLabel*>(QLatin1String(label))->property("parentChecked"),
                         expected);
        }
    }
}

void TestBarControls::unchangedSnapshotTouchesNothing()
{
    const QJsonObject snapshot = json(R"({"seq":1,"tx":{"rf":true,"centerHz":1e9,"levelDbm":1},
        "mod":{"enabled":true,"businesses":[{"id":"a","text":"A"}]}})");
    RemoteMiniBarWindow window;
    window.showMiniBar();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.applySnapshot(snapshot);
    QCoreApplication::processEvents();
    TestSupport::TouchCounter counter;
    for (int i = 0; i < 10; ++i)
        window.applySnapshot(snapshot);
    QCoreApplication::processEvents();
    QCOMPARE(counter.touches, 0);
    window.applySnapshot(json(R"({"seq":2})"));
    QCoreApplication::processEvents();
    QVERIFY(counter.touches > 0);
}

void TestBarControls::rfSnapsBack()
{
    RemoteMiniBarWindow window;
    QSignalSpy rf(&window, &RemoteMiniBarWindow::rfChangeRequested);
    window.showMiniBar();
    LabelButton* button = infoButtons(collapsed(window)).constFirst();
    click(button);
    QCOMPARE(rf.takeFirst(), QVariantList{true});
    QVERIFY(!button->isChecked());
    QCOMPARE(button->labelText(), QStringLiteral("OFF"));
    window.applySnapshot(json(R"({"tx":{"rf":true}})"));
    QVERIFY(button->isChecked());
    click(button);
    QCOMPARE(rf.takeFirst(), QVariantList{false});
    QVERIFY(button->isChecked());
    QVERIFY(rf.isEmpty());
}

void TestBarControls::modButtonFollowsTheBusinesses()
{
    RemoteMiniBarWindow window;
    LabelButton* mod = infoButtons(expanded(window)).at(4);
    window.applySnapshot(json(R"({"mod":{"businesses":[{"id":"a","text":"A"}]}})"));
    QVERIFY(mod->isEnabled());
    window.applySnapshot(json("{}"));
    QVERIFY(!mod->isEnabled());
}

void TestBarControls::controlsCanBeLocked()
{
    RemoteMiniBarWindow window;
    window.setControlsEnabled(false);
    for (const QWidget* onePage : {collapsed(window), expanded(window)}) {
        for (const LabelButton* button : infoButtons(onePage).mid(0, 3))
            QVERIFY(!button->isEnabled());
    }
    window.applySnapshot(QJsonObject());
    for (const LabelButton* button : infoButtons(collapsed(window)))
        QVERIFY(button->isEnabled());
}

QTEST_MAIN(TestBarControls)
#include "tst_bar_controls.moc"
