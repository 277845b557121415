#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/PopupWidget.h"
#include "minibar/BarPopupsTest.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using Mode = RemoteMiniBarWindow::MiniBarMode;

// What closes when, and in which order.
class TestPopupsClose : public BarPopupsTest
{
    Q_OBJECT

private slots:
    void everythingCloses_data();
    void everythingCloses();
    void dropDownClosesFirst_data();
    void dropDownClosesFirst();
    void deactivationClosesOneThingAtATime();
    void pressOnTheBarClosesThePopupAndNothingElse();
};

void TestPopupsClose::everythingCloses_data()
{
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("event");
    for (const char* opened : {"sweep", "sweep keyboard", "sweep drop-down", "menu", "mod"}) {
        for (const char* event : {"hide", "exit", "collapse"})
            QTest::addRow("%s, %s", opened, event)
                << QString::fromLatin1(opened) << QString::fromLatin1(event);
    }
}

void TestPopupsClose::everythingCloses()
{
    QFETCH(QString, opened);
    QFETCH(QString, event);
    if (opened.startsWith(QLatin1String("sweep")))
        openSweep();
    if (opened == QLatin1String("sweep keyboard"))
        QTest::mouseClick(popup(sweepName)->findChild<LabelButton*>(QStringLiteral("btnStopFreq")),
                          Qt::LeftButton);
    if (opened == QLatin1String("sweep drop-down"))
        QTest::mouseClick(popup(sweepName)->findChild<EnumTextButton*>(QStringLiteral("btnMode")),
                          Qt::LeftButton);
    if (opened == QLatin1String("menu"))
        QTest::mouseClick(button("MOD"), Qt::LeftButton);
    if (opened == QLatin1String("mod"))
        openMod(0);

    if (event == QLatin1String("hide"))
        window().hideMiniBar();
    else if (event == QLatin1String("exit"))
        window().prepareForExit();
    else {
        const auto toggles = window().findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
        for (QPushButton* toggle : toggles) {
            if (toggle->text() == QLatin1String("^"))
                toggle->click();
        }
        if (menu()->isVisible())
            menu()->close(); // only a press beside it can come to the toggle, and that closes the menu
    }
    QTRY_VERIFY(!keyboard());
    QVERIFY(!isShown(sweepName) && !isShown(modName) && !menu()->isVisible());
    const auto dropDowns = window().findChildren<PopupWidget*>();
    for (const PopupWidget* dropDown : dropDowns)
        QVERIFY(!dropDown->isVisible());
    const auto hosts = {"miniBarHelperSweepOverlayHost", "miniBarHelperModOverlayHost"};
    for (const char* host : hosts) {
        const auto* widget = window().findChild<QWidget*>(QLatin1String(host));
        QVERIFY(!widget || !widget->isVisible());
    }
    QCOMPARE(sweepRequests().count(), 0);
}

void TestPopupsClose::dropDownClosesFirst_data()
{
    QTest::addColumn<bool>("sweep");
    QTest::addColumn<QString>("selector");
    QTest::newRow("sweep") << true << "btnMode";
    QTest::newRow("mod") << false << "btnShape";
}

void TestPopupsClose::dropDownClosesFirst()
{
    QFETCH(bool, sweep);
    QFETCH(QString, selector);
    const char* const name = sweep ? sweepName : modName;
    if (sweep) {
        openSweep();
    } else {
        window().applySnapshot(
            snapshot(R"({"businesses":[{"id":"am","name":"AM","text":"AM","editorKind":"am"}]})"));
        openMod(0);
    }
    QTest::mouseClick(popup(name)->findChild<EnumTextButton*>(selector), Qt::LeftButton);
    const QPointer<PopupWidget> dropDown = window().findChild<PopupWidget*>();
    QVERIFY(dropDown && dropDown->isVisible());
    const auto pressBar = [this] {
        QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, QPoint(3, 3));
    };
    pressBar();
    QTRY_VERIFY(!dropDown || !dropDown->isVisible());
    QVERIFY(isShown(name));
    QCoreApplication::processEvents();
    pressBar();
    QVERIFY(!isShown(name));
    QCOMPARE(window().mode(), Mode::Expanded);
}

void TestPopupsClose::deactivationClosesOneThingAtATime()
{
    const auto deactivate = [] {
        QEvent event(QEvent::ApplicationDeactivate);
        QCoreApplication::sendEvent(qApp, &event);
    };
    openSweep();
    QTest::mouseClick(popup(sweepName)->findChild<EnumTextButton*>(QStringLiteral("btnMode")),
                      Qt::LeftButton);
    QPointer<PopupWidget> dropDown = window().findChild<PopupWidget*>();
    QVERIFY(dropDown && dropDown->isVisible());
    deactivate();
    QTRY_VERIFY(!dropDown || !dropDown->isVisible());
    QVERIFY(isShown(sweepName));
    QCoreApplication::processEvents();
    deactivate();
    QVERIFY(!isShown(sweepName));
    QCOMPARE(window().mode(), Mode::Expanded);
    deactivate();
    QCOMPARE(window().mode(), Mode::Collapsed);
}

void TestPopupsClose::pressOnTheBarClosesThePopupAndNothingElse()
{
    QSignalSpy rf(&window(), &RemoteMiniBarWindow::rfChangeRequested);
    openMod(0);
    QTest::mouseClick(button("RF"), Qt::LeftButton);
    QVERIFY(!isShown(modName));
    QCOMPARE(rf.count(), 0);
    QTest::mouseClick(button("RF"), Qt::LeftButton);
    QCOMPARE(rf.count(), 1);
}

QTEST_MAIN(TestPopupsClose)
#include "tst_popups_close.moc"
