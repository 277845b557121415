// The bar on a real screen under a real window manager, driven by pointer and keyboard: where it stands, how
// it changes between its modes, who has the keyboard. The window manager comes in TARVINEL_WINDOW_MANAGER.

#include "support/WindowManagers.h"
#include "system/BarSession.h"
#include "system/OtherProgram.h"

#include <QTest>
#include <algorithm>

using namespace TestSupport;

namespace {

constexpr double quiet = 0.65; // opacity of the collapsed bar

// The first one that leaves the keyboard where it is when a new window asks for that.
QString heedingWindowManager()
{
    const auto& table = windowManagers();
    const auto found = std::find_if(table.cbegin(), table.cend(),
                                    [](const WindowManager& manager) { return manager.heedsUserTime; });
    return found == table.cend() ? QString() : found->name;
}

} // namespace

class TestBar final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void standsAtAnchor();
    void standsAtDefaultPlace();
    void windowAttributes();
    void staysAboveOtherPrograms();
    void leavesKeyboardToProgramInUse();
    void expandsAndCollapses();
    void expandsWithinScreen();
    void opacityFollowsPointer();
    void draggedByPointer_data();
    void draggedByPointer();
    void shownAgainWhileDragged();
    void shortMoveIsClick();
    void hideAndShowKeepExpanded();
    void comesBackFromTheWindowManager();
    void hideAndShowAtOnce();
    void showMovesVisibleBar();
    void collapsesWhenOtherProgramIsUsed();
    void closeAsksForMainWindow();
    void restoreButton();
    void screenShrinks();

private:
    QString m_windowManager = qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"));
    PrivateDisplay m_display{m_windowManager};
    Accessibility m_accessibility{m_display};
};

void TestBar::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestBar::standsAtAnchor()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.connect());
    QVERIFY(session.main().exchange("HIDE_MINIBAR", {}, "HIDDEN"));
    QCOMPARE(session.desktop().mappedWindows(session.helper().processId()).size(), 0);
    QVERIFY(session.main().show(QPoint(900, 100)));
    const auto windows = session.desktop().waitForWindows(session.helper().processId(), 1);
    QCOMPARE(windows.size(), 1);
    QTRY_COMPARE(session.desktop().x().facts(windows.first().id)->geometry.topRight(), QPoint(900, 100));
    QCOMPARE(windows.first().geometry.width(), BarSession::width);
}

void TestBar::standsAtDefaultPlace()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin(QPoint(-1, -1)));
    const QRect screen = session.desktop().x().workArea();
    QTRY_COMPARE(session.geometry().topLeft(),
                 QPoint(screen.right() - 24 - BarSession::width, screen.top() + 96));
}

void TestBar::windowAttributes()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QTRY_VERIFY(session.bar().states.contains(QStringLiteral("_NET_WM_STATE_ABOVE")));
    const WindowFacts bar = session.bar();
    QVERIFY(!bar.overrideRedirect);
    QVERIFY(bar.acceptsFocus); // it is clicked and typed into like any other window
    QVERIFY(bar.types.contains(QStringLiteral("_NET_WM_WINDOW_TYPE_UTILITY")));
    QCOMPARE(bar.userTime, std::optional<quint32>(0)); // asks not to be focused when it appears
}

void TestBar::staysAboveOtherPrograms()
{
    BarSession session(m_display, m_accessibility);
    OtherProgram other(m_display);
    QVERIFY(other.begin());
    const QRect theirs = other.geometry();
    QVERIFY(session.begin(theirs.topRight() + QPoint(-40, 0))); // over the other window
    QVERIFY(session.click(theirs.topLeft() + QPoint(10, 10)));
    QTRY_COMPARE(session.desktop().x().activeWindow(), other.window());
    QVERIFY(session.desktop().x().isAbove(session.bar().id, other.window()));
    QCOMPARE(session.desktop().x().pixel(session.geometry().topLeft() + QPoint(4, 4)), QColor(0xe2ddd7));
}

void TestBar::leavesKeyboardToProgramInUse()
{
    // Others give the keyboard to every new window; that the bar asks them not to is tested in
    // windowAttributes.
    PrivateDisplay display(heedingWindowManager());
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    const Accessibility nobody(display);
    BarSession session(display, nobody);
    OtherProgram other(display);
    QVERIFY(other.begin());
    QVERIFY(session.desktop().type(QStringLiteral("a")));
    QVERIFY(other.waitForText("a"));
    QVERIFY(session.begin());
    QVERIFY(session.desktop().type(QStringLiteral("b")));
    QVERIFY(other.waitForText("ab"));
    QVERIFY(session.main().hide());
    QVERIFY(session.main().show());
    QTRY_VERIFY(session.bar().mapped);
    QVERIFY(session.desktop().type(QStringLiteral("c")));
    QVERIFY(other.waitForText("abc"));
    QVERIFY(!other.hasLostKeyboard());
}

void TestBar::expandsAndCollapses()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const QRect collapsed = session.geometry();
    QVERIFY(session.expand());
    QTRY_COMPARE(session.geometry().topLeft(), collapsed.topLeft());
    QVERIFY(session.waitForOpacity(1.0));
    QTRY_COMPARE(session.desktop().x().activeWindow(), session.bar().id);
    QVERIFY(session.leave());
    QVERIFY(session.main().show()); // a visible bar keeps its mode
    QVERIFY(session.isExpanded());
    QVERIFY(session.waitForOpacity(1.0));
    QVERIFY(session.collapse());
    QTRY_COMPARE(session.geometry(), collapsed);
    QVERIFY(session.waitForOpacity(quiet));
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestBar::expandsWithinScreen()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin(QPoint(1270, 800 - 240)));
    const QRect collapsed = session.geometry();
    QVERIFY(session.expand());
    const QRect screen(QPoint(0, 0), session.desktop().x().screenSize());
    QTRY_VERIFY(screen.contains(session.geometry()));
    QCOMPARE(session.geometry().bottom(), screen.bottom());
    QCOMPARE(session.geometry().right(), collapsed.right());
    QVERIFY(session.collapse());
    QTRY_COMPARE(session.geometry(), collapsed);
}

void TestBar::opacityFollowsPointer()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.desktop().moveTo(QPoint(5, 5)));
    QVERIFY(session.begin());
    QVERIFY(session.waitForOpacity(quiet));
    QVERIFY(session.desktop().moveTo(session.centre(BarSession::Level)));
    QVERIFY(session.waitForOpacity(1.0));
    QVERIFY(session.leave());
    QVERIFY(session.waitForOpacity(quiet));
}

void TestBar::draggedByPointer_data()
{
    QTest::addColumn<bool>("expanded");
    QTest::addColumn<QPoint>("distance");
    QTest::addColumn<QPoint>("landing"); // where it comes to stand, seen from its start
    QTest::newRow("collapsed") << false << QPoint(-300, 200) << QPoint(-300, 200);
    QTest::newRow("expanded") << true << QPoint(-250, 60) << QPoint(-250, 60);
    QTest::newRow("collapsed, beyond the left edge") << false << QPoint(-800, 30) << QPoint(-767, 30);
    QTest::newRow("collapsed, beyond the top edge") << false << QPoint(50, -130) << QPoint(50, -100);
}

void TestBar::draggedByPointer()
{
    QFETCH(bool, expanded);
    QFETCH(QPoint, distance);
    QFETCH(QPoint, landing);
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const QRect start = session.geometry();
    if (expanded)
        QVERIFY(session.expand());
    const QRect before = session.geometry();
    const QPoint grip = session.centre(BarSession::Level);
    QVERIFY(session.desktop().drag(grip, grip + distance));
    QVERIFY(session.desktop().waitForGeometry(session.bar().id, before.translated(landing)));
    QVERIFY(session.main().show()); // placed again, it stays; and no click has come of the drag
    QCOMPARE(session.geometry(), before.translated(landing));
    QCOMPARE(session.main().count("REQ"), 0);
    QVERIFY(!session.isKeypadOpen());
    if (expanded) {
        QVERIFY(session.collapse());
        QTRY_COMPARE(session.geometry(), start.translated(landing));
    }
}

void TestBar::shownAgainWhileDragged()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const QRect before = session.geometry();
    const QPoint grip = session.centre(BarSession::Level);
    const QPoint distance(-200, 120);
    QVERIFY(session.desktop().press(grip));
    QVERIFY(session.desktop().moveTo(grip + distance / 2));
    QVERIFY(session.desktop().moveTo(grip + distance));
    QVERIFY(session.desktop().waitForGeometry(session.bar().id, before.translated(distance)));
    for (int i = 0; i < 3; ++i) {
        QVERIFY(session.main().show()); // as a main process asks whether the bar is alive
        QCOMPARE(session.geometry(), before.translated(distance));
    }
    QVERIFY(session.desktop().release());
    QVERIFY(session.main().show());
    QCOMPARE(session.geometry(), before.translated(distance));
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestBar::shortMoveIsClick()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const QRect before = session.geometry();
    const QPoint grip = session.centre(BarSession::Rf);
    QVERIFY(session.desktop().drag(grip, grip + QPoint(3, 3), 3));
    QVERIFY(session.main().waitForRequests(1));
    QCOMPARE(session.geometry(), before);
}

void TestBar::hideAndShowKeepExpanded()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.expand());
    const QRect expanded = session.geometry();
    QVERIFY(session.main().hide());
    QTRY_VERIFY(!session.bar().mapped);
    QVERIFY(session.main().show());
    QTRY_COMPARE(session.geometry(), expanded);
}

// A window manager that has heard of the hiding after the showing takes the bar away.
void TestBar::comesBackFromTheWindowManager()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const QRect place = session.bar().geometry;
    QVERIFY(session.main().exchange("HIDE_MINIBAR", {}, "HIDDEN"));
    QTRY_VERIFY(!session.bar().mapped);
    QVERIFY(session.main().show(BarSession::usualAnchor));
    QTRY_VERIFY(session.bar().mapped);
    session.desktop().x().unmap(session.bar().id);
    QTRY_VERIFY(!session.bar().mapped);
    QTRY_VERIFY(session.bar().mapped);
    QTRY_COMPARE(session.bar().geometry, place);
}

void TestBar::hideAndShowAtOnce()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    for (int i = 0; i < 40; ++i) {
        QVERIFY(session.main().exchange("HIDE_MINIBAR", {}, "HIDDEN"));
        QVERIFY(session.main().show(BarSession::usualAnchor));
        const WindowId later = session.desktop().x().createWindow();
        session.desktop().x().map(later);
        QTRY_VERIFY(session.desktop().x().isManaged(later)); // and so the bar is, if it ever will be
        session.desktop().x().destroy(later);
        QTRY_VERIFY(session.bar().mapped);
    }
}

void TestBar::showMovesVisibleBar()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.main().show(QPoint(500, 300)));
    QTRY_COMPARE(session.geometry().topRight(), QPoint(500, 300));
    QVERIFY(session.expand());
    QVERIFY(session.main().show(QPoint(640, 250)));
    QTRY_COMPARE(session.geometry().topRight(), QPoint(640, 250));
    QVERIFY(session.isExpanded());
}

void TestBar::collapsesWhenOtherProgramIsUsed()
{
    BarSession session(m_display, m_accessibility);
    OtherProgram other(m_display);
    QVERIFY(other.begin());
    QVERIFY(session.begin());
    const QRect collapsed = session.geometry();
    QVERIFY(session.expand());
    QTRY_COMPARE(session.desktop().x().activeWindow(), session.bar().id);
    QVERIFY(session.click(other.geometry().center()));
    QTRY_COMPARE(session.geometry(), collapsed);
    QVERIFY(session.waitForOpacity(quiet));
}

void TestBar::closeAsksForMainWindow()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    session.desktop().x().requestClose(session.bar().id);
    QVERIFY(session.main().waitForCount("RESTORE_REQUEST", 1));
    QVERIFY(session.bar().mapped);
    QVERIFY(session.expand());
    QTRY_COMPARE(session.desktop().x().activeWindow(), session.bar().id);
    QVERIFY(session.desktop().key(QStringLiteral("alt+F4")));
    QVERIFY(session.main().waitForCount("RESTORE_REQUEST", 2));
    QVERIFY(session.main().show());
    QVERIFY(session.isExpanded());
}

void TestBar::restoreButton()
{
    BarSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.expand());
    QVERIFY(session.click(session.restore()));
    QVERIFY(session.main().waitForCount("RESTORE_REQUEST", 1));
    QVERIFY(session.main().hide());
    QTRY_VERIFY(!session.bar().mapped);
    QCOMPARE(session.main().count("RESTORE_REQUEST"), 1);
}

void TestBar::screenShrinks()
{
    PrivateDisplay display(m_windowManager);
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    const Accessibility nobody(display);
    BarSession session(display, nobody);
    QVERIFY(session.begin(QPoint(1279, 560)));
    const QSize collapsed = session.geometry().size();
    QVERIFY(display.resizeScreen(QSize(1000, 700)));
    const QPoint nearestInView(1000 - collapsed.width(), 700 - collapsed.height());
    QTRY_COMPARE(session.geometry(), QRect(nearestInView, collapsed));
    QVERIFY(session.expand());
    QTRY_VERIFY(QRect(0, 0, 1000, 700).contains(session.geometry()));
}

QTEST_GUILESS_MAIN(TestBar)

#include "tst_bar.moc"
