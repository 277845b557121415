#include "controls/LabelButton.h"
#include "controls/SwitchButton.h"
#include "minibar/BarPopupsTest.h"
#include "minibar/StyleSheets.h"
#include "support/TouchCounter.h"
#include "sweep/RemoteSweepPanel.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using Mode = RemoteMiniBarWindow::MiniBarMode;

// The sweep popup and the keypad over it.
class TestSweepPopup : public BarPopupsTest
{
    Q_OBJECT

private slots:
    void sweepPopupIsBuilt();
    void sweepPopupPlace();
    void popupStandsAtAMovedBar();
    void popupFollowsItsButton();
    void sweepButtonTogglesThePopup();
    void sweepButtonWithoutSweepOpensNothing();
    void sweepEditBecomesOneRequest();
    void sweepFieldKeyboard_data();
    void sweepFieldKeyboard();
    void rejectedFieldKeyboardSendsNothing();
    void fieldThatIsNoneOpensNoKeyboard();
    void equalSnapshotTouchesNoWidget();
};

void TestSweepPopup::sweepPopupIsBuilt()
{
    openSweep();
    QDialog* dialog = popup(sweepName);
    QVERIFY(!dialog->isModal());
    QVERIFY(!dialog->testAttribute(Qt::WA_QuitOnClose));
    QVERIFY(dialog->testAttribute(Qt::WA_StyledBackground));
    QCOMPARE(dialog->styleSheet(), sweepPopupStyleSheet(true));
    QCOMPARE(dialog->layout()->contentsMargins(), QMargins(0, 0, 0, 5));
    QCOMPARE(dialog->layout()->spacing(), 0);
    auto* title = qobject_cast<QLabel*>(dialog->layout()->itemAt(0)->widget());
    QVERIFY(title);
    QCOMPARE(title->objectName(), QStringLiteral("titleLabel"));
    QCOMPARE(title->text(), QStringLiteral("Sweep"));
    QVERIFY(title->wordWrap());
    QVERIFY(qobject_cast<RemoteSweepPanel*>(dialog->layout()->itemAt(1)->widget()));
    QWidget* host = window().findChild<QWidget*>(QStringLiteral("miniBarHelperSweepOverlayHost"));
    QVERIFY(host);
    for (Qt::WidgetAttribute attribute :
         {Qt::WA_AcceptTouchEvents, Qt::WA_TranslucentBackground, Qt::WA_NoSystemBackground})
        QVERIFY(host->testAttribute(attribute));
    QVERIFY(!host->testAttribute(Qt::WA_QuitOnClose));
    QCOMPARE(host->styleSheet(),
             QStringLiteral("QWidget#miniBarHelperSweepOverlayHost { background: transparent; }"));
    QCOMPARE(host->geometry(), QGuiApplication::primaryScreen()->geometry());
    // Kept for the life of the window.
    window().hideMiniBar();
    window().showMiniBar();
    openSweep();
    QCOMPARE(popup(sweepName), dialog);
}

void TestSweepPopup::sweepPopupPlace()
{
    openSweep();
    const QDialog* dialog = popup(sweepName);
    const QRect rect(dialog->mapToGlobal(QPoint(0, 0)), dialog->size());
    QCOMPARE(rect.width(), 560);
    QCOMPARE(rect.right(), 900);
    const LabelButton* sweep = button("Sweep");
    QCOMPARE(rect.top(), 40 + sweep->mapTo(&window(), QPoint(0, 0)).y() + sweep->height() + 6);
}

// As a window manager moves it, and as a program does.
void TestSweepPopup::popupStandsAtAMovedBar()
{
    const auto rightEdges = [this] {
        const QDialog* const dialog = popup(sweepName);
        return qMakePair(dialog->mapToGlobal(dialog->rect().topRight()).x(), window().geometry().right());
    };
    const QPoint place = window().pos();
    window().windowHandle()->setPosition(place - QPoint(60, 0));
    QTRY_COMPARE(window().pos(), place - QPoint(60, 0));
    openSweep();
    QTRY_COMPARE(rightEdges().first, rightEdges().second);
    button("Sweep")->click();
    QTRY_VERIFY(!isShown(sweepName));
    window().move(place - QPoint(90, 0));
    openSweep();
    QTRY_COMPARE(rightEdges().first, rightEdges().second);
}

// The bar may have been pressed before it had its size.
void TestSweepPopup::popupFollowsItsButton()
{
    const LabelButton* const sweep = button("Sweep");
    const auto gap = [&] {
        return popup(sweepName)->mapToGlobal(QPoint(0, 0)).y() -
               sweep->mapToGlobal(QPoint(0, sweep->height())).y();
    };
    constexpr int usualGap = 6;
    openSweep();
    QTRY_COMPARE(gap(), usualGap);
    const QSize size = window().size();
    const int place = sweep->y();
    window().setFixedSize(size.width(), size.height() / 2);
    QTRY_VERIFY(sweep->y() < place);
    QTRY_COMPARE(gap(), usualGap);
    window().setFixedSize(size);
    QTRY_COMPARE(sweep->y(), place);
    QTRY_COMPARE(gap(), usualGap);
}

void TestSweepPopup::sweepButtonTogglesThePopup()
{
    openSweep();
    QVERIFY(button("Sweep")->isChecked()); // shows the confirmed state, not the click
    button("Sweep")->click();
    QVERIFY(!isShown(sweepName));
    QCOMPARE(window().mode(), Mode::Expanded);
    openSweep();
}

void TestSweepPopup::sweepButtonWithoutSweepOpensNothing()
{
    window().applySnapshot(QJsonObject());
    button("Sweep")->click(); // disabled
    QVERIFY(!popup(sweepName));
}

void TestSweepPopup::sweepEditBecomesOneRequest()
{
    openSweep();
    auto* enabled = popup(sweepName)->findChild<SwitchButton*>(QStringLiteral("enabled"));
    QVERIFY(enabled && enabled->status());
    QTest::mouseClick(enabled->findChild<QPushButton*>(QStringLiteral("btnOff")), Qt::LeftButton);
    QCOMPARE(sweepRequests().count(), 1);
    const auto request =
        sweepRequests().constFirst().constFirst().value<MinibarHelperProtocol::SweepChangeRequest>();
    QCOMPARE(request.expectedRevision, 3);
    QCOMPARE(request.settings.enabled, false);
    QVERIFY(enabled->status()); // back at the confirmed state
}

void TestSweepPopup::sweepFieldKeyboard_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QByteArray>("object"); // of the request, empty for the request itself
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<double>("value");

    QTest::newRow("start") << "btnStartFreq"
                           << "Start Frequency" << QByteArray("1.25g") << QByteArray("frequencyPlan")
                           << QByteArray("startHz") << 1.25e9;
    QTest::newRow("stop") << "btnStopFreq"
                          << "Stop Frequency" << QByteArray("2500m") << QByteArray("frequencyPlan")
                          << QByteArray("stopHz") << 2.5e9;
    QTest::newRow("step") << "btnStepFreq"
                          << "Frequency Step" << QByteArray("5\r") << QByteArray("frequencyPlan")
                          << QByteArray("stepHz") << 5e6;
    QTest::newRow("dwell") << "btnDwellTime_Analog"
                           << "Dwell Time" << QByteArray("3.5\r") << QByteArray()
                           << QByteArray("dwellSeconds") << 0.0035;
}

void TestSweepPopup::sweepFieldKeyboard()
{
    QFETCH(QString, button);
    QFETCH(QString, title);
    QFETCH(QByteArray, keys);
    QFETCH(QByteArray, object);
    QFETCH(QByteArray, key);
    QFETCH(double, value);
    openSweep();
    auto* field = popup(sweepName)->findChild<LabelButton*>(button);
    QVERIFY(field);
    QTest::mouseClick(field, Qt::LeftButton);
    QVERIFY(keyboard());
    QCOMPARE(keyboard()->windowTitle(), title);
    QVERIFY(field->isChecked());
    QVERIFY(QTest::qWaitForWindowActive(keyboard()));
    for (char character : keys) {
        if (character == '\r')
            QTest::keyClick(keyboard(), Qt::Key_Return);
        else
            QTest::keyClick(keyboard(), character);
    }
    QTRY_VERIFY(!keyboard());
    QVERIFY(!field->isChecked());
    QVERIFY(isShown(sweepName));
    QCOMPARE(sweepRequests().count(), 1);
    const QJsonObject json =
        sweepRequests().constFirst().constFirst().value<MinibarHelperProtocol::SweepChangeRequest>().toJson();
    const QJsonObject holder = object.isEmpty() ? json : json.value(QLatin1String(object)).toObject();
    QVERIFY(holder.value(QLatin1String(key)).toDouble() == value);
    QCOMPARE(json.value(QLatin1String("expectedRevision")).toInt(), 3);
}

void TestSweepPopup::rejectedFieldKeyboardSendsNothing()
{
    openSweep();
    auto* field = popup(sweepName)->findChild<LabelButton*>(QStringLiteral("btnStartFreq"));
    QTest::mouseClick(field, Qt::LeftButton);
    QVERIFY(keyboard());
    QTest::keyClick(keyboard(), '5');
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    QTRY_VERIFY(!keyboard());
    QVERIFY(!field->isChecked());
    QVERIFY(isShown(sweepName));
    QCOMPARE(sweepRequests().count(), 0);
}

void TestSweepPopup::fieldThatIsNoneOpensNoKeyboard()
{
    openSweep();
    auto* const panel = popup(sweepName)->findChild<RemoteSweepPanel*>();
    QVERIFY(panel);
    emit panel->numericEditRequested(RemoteSweepPanel::NumericField::Invalid, panel);
    QVERIFY(!keyboard());
    emit panel->numericEditRequested(RemoteSweepPanel::NumericField::Dwell, panel);
    QVERIFY(keyboard());
    QVERIFY(QTest::qWaitForWindowExposed(keyboard())); // a window manager is still framing it
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    QTRY_VERIFY(!keyboard());
}

void TestSweepPopup::equalSnapshotTouchesNoWidget()
{
    openSweep();
    QVERIFY(QTest::qWaitForWindowExposed(popup(sweepName)->window()));
    TestSupport::TouchCounter counter;
    const auto isQuiet = [&counter] {
        counter.touches = 0;
        QCoreApplication::processEvents();
        return counter.touches == 0;
    };
    QTRY_VERIFY(isQuiet()); // what opening the popup has left to do
    for (int i = 0; i < 5; ++i)
        window().applySnapshot(snapshot());
    QCoreApplication::processEvents();
    QCOMPARE(counter.touches, 0);
}

QTEST_MAIN(TestSweepPopup)
#include "tst_sweep_popup.moc"
