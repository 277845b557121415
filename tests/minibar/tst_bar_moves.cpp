#include "controls/LabelButton.h"
#include "minibar/BarParts.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using BarParts::click;
using BarParts::collapsed;
using BarParts::expanded;
using BarParts::infoButtons;
using BarParts::pushButton;
using Mode = RemoteMiniBarWindow::MiniBarMode;

// Showing, hiding, expanding, dragging: where the bar is and how much of it.
class TestBarMoves : public QObject
{
    Q_OBJECT

private slots:
    void startsHidden();
    void firstShowWithoutAnchor();
    void anchor();
    void anchorUnsetIsIgnored();
    void anchorMovesAVisibleBar();
    void expandAndCollapse();
    void expandingTakesTheKeyboard();
    void expansionIsPushedOnScreenAndCollapseReturns();
    void hideAndShowKeepModeAndPlace();
    void showKeepsTheModeOfAVisibleBar();
    void hoverOpacity();
    void drag();
    void dragBelowStartDistanceClicks();
    void deactivationCollapses();
    void pressOutsideCollapses();
    void pressWhereAMovedBarWasCollapses();
    void madeUpPressTellsNoPlace();
};

void TestBarMoves::startsHidden()
{
    RemoteMiniBarWindow window;
    QCOMPARE(window.mode(), Mode::Hidden);
    QVERIFY(!window.isVisible());
    window.hideMiniBar();
    QVERIFY(!window.isVisible());
}

void TestBarMoves::firstShowWithoutAnchor()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(-1, -1));
    window.showMiniBar();
    QVERIFY(window.isVisible());
    QCOMPARE(window.mode(), Mode::Collapsed);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(window.pos(), QPoint(screen.right() - 24 - window.width(), screen.top() + 96));
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(0.65 * 100));
}

void TestBarMoves::anchor()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
}

void TestBarMoves::anchorUnsetIsIgnored()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.setAnchorTopRight(QPoint(-1, -1));
    window.showMiniBar();
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
}

void TestBarMoves::anchorMovesAVisibleBar()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    window.setAnchorTopRight(QPoint(400, 60));
    QCOMPARE(window.geometry().topRight(), QPoint(400, 60));
    window.setAnchorTopRight(QPoint(5, 99999)); // comes wholly into view
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(window.geometry().bottomLeft(), screen.bottomLeft());
}

void TestBarMoves::expandAndCollapse()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QCOMPARE(window.mode(), Mode::Expanded);
    QVERIFY(expanded(window)->isVisible());
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(1.0 * 100));
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
    click(pushButton(expanded(window), "^"));
    QCOMPARE(window.mode(), Mode::Collapsed);
    QVERIFY(collapsed(window)->isVisible());
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(0.65 * 100));
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
}

void TestBarMoves::expandingTakesTheKeyboard()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QWidget other;
    other.setGeometry(10, 300, 50, 50);
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    pushButton(collapsed(window), "v")->click();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

void TestBarMoves::expansionIsPushedOnScreenAndCollapseReturns()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(99999, 99999));
    window.showMiniBar();
    const QRect before = window.geometry();
    QCOMPARE(before.bottomRight(), screen.bottomRight());
    click(pushButton(collapsed(window), "v"));
    QCOMPARE(window.geometry().bottomRight(), screen.bottomRight());
    QVERIFY(window.y() < before.y());
    click(pushButton(expanded(window), "^"));
    QCOMPARE(window.geometry(), before);
}

void TestBarMoves::hideAndShowKeepModeAndPlace()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    const QRect before = window.geometry();
    window.hideMiniBar();
    QCOMPARE(window.mode(), Mode::Hidden);
    QVERIFY(!window.isVisible());
    window.showMiniBar();
    QCOMPARE(window.mode(), Mode::Expanded);
    QVERIFY(window.isVisible());
    QCOMPARE(window.geometry(), before);
    click(pushButton(expanded(window), "^"));
    window.hideMiniBar();
    window.showMiniBar();
    QCOMPARE(window.mode(), Mode::Collapsed);
}

void TestBarMoves::showKeepsTheModeOfAVisibleBar()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    window.setAnchorTopRight(QPoint(300, 50));
    window.showMiniBar();
    QCOMPARE(window.mode(), Mode::Expanded);
    QCOMPARE(window.geometry().topRight(), QPoint(300, 50));
}

void TestBarMoves::hoverOpacity()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&window, &enter);
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(1.0 * 100));
    QCoreApplication::sendEvent(&window, &leave);
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(0.65 * 100));
    click(pushButton(collapsed(window), "v"));
    QCoreApplication::sendEvent(&window, &leave);
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(1.0 * 100));
}

void TestBarMoves::drag()
{
    RemoteMiniBarWindow window;
    QSignalSpy rf(&window, &RemoteMiniBarWindow::rfChangeRequested);
    window.setAnchorTopRight(QPoint(400, 40));
    window.showMiniBar();
    const QPoint before = window.pos();
    LabelButton* button = infoButtons(collapsed(window)).constFirst();
    const QPoint start = button->mapToGlobal(button->rect().center());
    const auto send = [button](QEvent::Type type, QPoint global, Qt::MouseButtons buttons) {
        const QPoint inWindow = button->window()->mapFromGlobal(global);
        QMouseEvent event(type, button->mapFromGlobal(global), inWindow, global,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &event);
    };
    send(QEvent::MouseButtonPress, start, Qt::LeftButton);
    QVERIFY(button->isDown());
    send(QEvent::MouseMove, start + QPoint(20, 30), Qt::LeftButton);
    QCOMPARE(window.pos(), before + QPoint(20, 30));
    QVERIFY(!button->isDown());
    send(QEvent::MouseMove, start + QPoint(5, 6), Qt::LeftButton);
    send(QEvent::MouseButtonRelease, start + QPoint(5, 6), Qt::NoButton);
    QCOMPARE(window.pos(), before + QPoint(5, 6));
    QCOMPARE(rf.count(), 0); // a drag clicks nothing
    // The new place is the one that it comes back to.
    window.hideMiniBar();
    window.showMiniBar();
    QCOMPARE(window.pos(), before + QPoint(5, 6));
    // The button is as good as new.
    click(button);
    QCOMPARE(rf.count(), 1);
}

void TestBarMoves::dragBelowStartDistanceClicks()
{
    RemoteMiniBarWindow window;
    QSignalSpy rf(&window, &RemoteMiniBarWindow::rfChangeRequested);
    window.showMiniBar();
    const QPoint before = window.pos();
    LabelButton* button = infoButtons(collapsed(window)).constFirst();
    const QPoint centre = button->rect().center();
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, centre);
    const QPoint near = centre + QPoint(QApplication::startDragDistance() - 1, 0);
    QMouseEvent move(QEvent::MouseMove, near, button->mapTo(&window, near), button->mapToGlobal(near),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(button, &move);
    QCOMPARE(window.pos(), before);
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, near);
    QCOMPARE(window.pos(), before);
    QCOMPARE(rf.count(), 1);
}

void TestBarMoves::deactivationCollapses()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QEvent deactivate(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(&window, &deactivate); // only the application's own counts
    QCOMPARE(window.mode(), Mode::Expanded);
    QCoreApplication::sendEvent(qApp, &deactivate);
    QCOMPARE(window.mode(), Mode::Collapsed);
    window.hideMiniBar();
    QCoreApplication::sendEvent(qApp, &deactivate);
    QCOMPARE(window.mode(), Mode::Hidden);
}

void TestBarMoves::pressOutsideCollapses()
{
    QWidget other;
    other.setGeometry(10, 400, 50, 50);
    other.show();
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(400, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2)); // the bar's own edge
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QCOMPARE(window.mode(), Mode::Expanded);
    const QPoint overTheBar = window.geometry().center();
    QMouseEvent press(QEvent::MouseButtonPress, QPoint(1, 1), QPoint(1, 1), overTheBar, Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&other, &press);
    QCOMPARE(window.mode(), Mode::Expanded);
    QTest::mousePress(&other, Qt::RightButton);
    QCOMPARE(window.mode(), Mode::Collapsed);
    QTest::mouseRelease(&other, Qt::RightButton);
}

void TestBarMoves::pressWhereAMovedBarWasCollapses()
{
    QWidget other;
    other.show();
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(400, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QPoint place = window.pos();
    const QPoint left = window.geometry().center() - QPoint(window.width() / 2 - 5, 0);
    window.windowHandle()->setPosition(place + QPoint(60, 0)); // as a window manager does
    QTRY_COMPARE(window.pos(), place + QPoint(60, 0));
    const auto pressAt = [&other](QPoint global) {
        QMouseEvent press(QEvent::MouseButtonPress, QPoint(1, 1), QPoint(1, 1), global, Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&other, &press);
    };
    pressAt(window.geometry().center() + QPoint(window.width() / 2 - 5, 0));
    QCOMPARE(window.mode(), Mode::Expanded);
    pressAt(left);
    QCOMPARE(window.mode(), Mode::Collapsed);
}

void TestBarMoves::madeUpPressTellsNoPlace()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(400, 40));
    window.showMiniBar();
    const QPoint place = window.pos();
    QMouseEvent press(QEvent::MouseButtonPress, QPoint(2, 2), QPoint(2, 2), QPoint(200, 300), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &press);
    window.hideMiniBar();
    window.showMiniBar();
    QCOMPARE(window.pos(), place);
}

QTEST_MAIN(TestBarMoves)
#include "tst_bar_moves.moc"
