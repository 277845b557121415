// What opens from the expanded bar, on a real screen: where it stands, and that no click does two things. The
// window manager comes in TARVINEL_WINDOW_MANAGER; with TARVINEL_COMPOSITED set, windows can be seen through.

#include "system/OtherProgram.h"
#include "system/PopupSession.h"

#include <QTest>

using namespace TestSupport;
using Thing = PopupSession::Thing;

Q_DECLARE_METATYPE(PopupSession::Thing)

namespace {

const QStringList nothing;
const QPoint desktopPlace(30, 700); // of the bare desktop
const QPoint screenCorner(1279, 799);

QString windowManager()
{
    return qEnvironmentVariable("TARVINEL_WINDOW_MANAGER", QStringLiteral("icewm"));
}

ScreenSetup setup(const QSize& size = ScreenSetup().size)
{
    ScreenSetup result;
    result.size = size;
    result.composited = qEnvironmentVariableIsSet("TARVINEL_COMPOSITED");
    return result;
}

// Everything has closed, the bar stands expanded, and nobody has been asked for anything.
bool isLeftAlone(PopupSession& session)
{
    return session.waitForShown(nothing) && session.settle() && session.shown().isEmpty() &&
           session.bar().isExpanded() && session.main().count("REQ") == 0;
}

} // namespace

class TestPopups final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void placeAtCorners_data();
    void placeAtCorners();
    void widthOnScreen_data();
    void widthOnScreen();
    void pressBesideClosesOnly_data();
    void pressBesideClosesOnly();
    void pressOnBarClosesOnly_data();
    void pressOnBarClosesOnly();
    void dropDownClosesFirst_data();
    void dropDownClosesFirst();
    void buttonToggles_data();
    void buttonToggles();
    void doubleClickOnButton_data();
    void doubleClickOnButton();
    void doubleClickBeside();
    void fasterThanTheHelper_data();
    void fasterThanTheHelper();
    void releaseOverMenuPicksNothing();
    void otherProgramGetsItsClicksBack();

private:
    PrivateDisplay m_display{windowManager(), setup()};
    Accessibility m_accessibility{m_display};
};

void TestPopups::initTestCase()
{
    QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    QVERIFY2(m_accessibility.start(), qPrintable(m_accessibility.errorString()));
}

void TestPopups::placeAtCorners_data()
{
    QTest::addColumn<QPoint>("anchor");
    QTest::addColumn<int>("popupLeft");
    QTest::addColumn<bool>("belowButton");
    QTest::newRow("top left") << QPoint(133, 0) << 0 << true;
    QTest::newRow("top right") << QPoint(1279, 0) << 720 << true;
    QTest::newRow("bottom left") << QPoint(133, 799) << 0 << false;
    QTest::newRow("bottom right") << screenCorner << 720 << false;
    QTest::newRow("in the middle") << QPoint(700, 100) << 141 << true;
}

void TestPopups::placeAtCorners()
{
    QFETCH(QPoint, anchor);
    QFETCH(int, popupLeft);
    QFETCH(bool, belowButton);
    constexpr int popupWidth = 560;
    constexpr int buttonFoot = 8 + 60; // of the first one; the others follow without a gap
    constexpr int gap = 6;
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin(QPoint(700, 100)));
    QVERIFY(session.main().show(anchor));
    QTRY_COMPARE(session.bar().geometry().right(), anchor.x());
    const QRect bar = session.bar().geometry();
    const int belowSweep = bar.top() + buttonFoot + 3 * 60 + gap;
    const int belowMod = belowSweep + 60;

    QVERIFY(session.open(Thing::SweepPopup));
    const QRect sweep = session.dialog(PopupSession::sweepTitle);
    QCOMPARE(sweep.width(), popupWidth);
    QCOMPARE(sweep.left(), popupLeft);
    QCOMPARE(sweep.top(), belowButton ? belowSweep : 800 - sweep.height());
    QVERIFY(session.bar().click(session.bar().corner(BarSession::Rf)));
    QVERIFY(session.waitForShown(nothing));

    QVERIFY(session.open(Thing::ModMenu));
    const QRect menu = session.menu();
    QCOMPARE(menu.right(), qMax(bar.right(), menu.width() - 1));
    QCOMPARE(menu.top(), belowButton ? belowMod : 800 - menu.height());
    QVERIFY(session.chooseInMenu(0));
    QVERIFY(session.waitForShown(PopupSession::shownWith(Thing::ModPopup)));
    const QRect mod = session.dialog(PopupSession::modTitle);
    QCOMPARE(mod.width(), popupWidth);
    QCOMPARE(mod.left(), popupLeft);
    QCOMPARE(mod.top(), qMin(belowMod, 800 - mod.height()));
}

void TestPopups::widthOnScreen_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<int>("width");
    QTest::newRow("500 pixels") << QSize(500, 800) << 500;
    QTest::newRow("1920 pixels") << QSize(1920, 1080) << 560;
}

void TestPopups::widthOnScreen()
{
    QFETCH(QSize, screen);
    QFETCH(int, width);
    PrivateDisplay display(windowManager(), setup(screen));
    QVERIFY2(display.start(), qPrintable(display.errorString()));
    Accessibility accessibility(display);
    QVERIFY2(accessibility.start(), qPrintable(accessibility.errorString()));
    PopupSession session(display, accessibility);
    QVERIFY(session.begin(QPoint(screen.width() - 1, 40)));
    QVERIFY(session.open(Thing::SweepPopup));
    const QRect popup = session.dialog(PopupSession::sweepTitle);
    QCOMPARE(popup.width(), width);
    QCOMPARE(popup.right(), screen.width() - 1);
    // A control at its far end can be used, so the popup is drawn as wide as it says.
    QVERIFY(session.clickField(QStringLiteral("Start Frequency")));
    QVERIFY(session.waitForShown({QStringLiteral("Start Frequency"), PopupSession::sweepTitle}));
}

void TestPopups::pressBesideClosesOnly_data()
{
    QTest::addColumn<Thing>("thing");
    QTest::addColumn<bool>("onProgram");
    for (const bool onProgram : {false, true}) {
        const char* const where = onProgram ? "another program" : "the desktop";
        QTest::addRow("sweep, %s", where) << Thing::SweepPopup << onProgram;
        QTest::addRow("mod, %s", where) << Thing::ModPopup << onProgram;
        QTest::addRow("menu, %s", where) << Thing::ModMenu << onProgram;
    }
}

void TestPopups::pressBesideClosesOnly()
{
    QFETCH(Thing, thing);
    QFETCH(bool, onProgram);
    OtherProgram other(m_display);
    if (onProgram)
        QVERIFY(other.begin());
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    const QPoint place = onProgram ? other.geometry().bottomLeft() + QPoint(5, -5) : desktopPlace;
    QVERIFY(session.open(thing));
    QVERIFY(session.bar().click(place));
    QVERIFY(isLeftAlone(session));
    QVERIFY(session.open(thing)); // and nothing is left of the last time
}

void TestPopups::pressOnBarClosesOnly_data()
{
    QTest::addColumn<Thing>("thing");
    QTest::addColumn<int>("button");
    QTest::newRow("sweep, RF") << Thing::SweepPopup << int(BarSession::Rf);
    QTest::newRow("sweep, Frequency") << Thing::SweepPopup << int(BarSession::Frequency);
    QTest::newRow("mod, Level") << Thing::ModPopup << int(BarSession::Level);
    QTest::newRow("menu, RF") << Thing::ModMenu << int(BarSession::Rf);
    QTest::newRow("menu, Sweep") << Thing::ModMenu << int(BarSession::Sweep);
}

void TestPopups::pressOnBarClosesOnly()
{
    QFETCH(Thing, thing);
    QFETCH(int, button);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(thing));
    QVERIFY(session.bar().click(session.bar().corner(BarSession::Button(button))));
    QVERIFY(isLeftAlone(session));
}

void TestPopups::dropDownClosesFirst_data()
{
    QTest::addColumn<QString>("place");
    for (const char* place : {"desktop", "other program", "RF button", "Sweep button", "field"})
        QTest::newRow(place) << QString::fromLatin1(place);
}

void TestPopups::dropDownClosesFirst()
{
    QFETCH(QString, place);
    OtherProgram other(m_display);
    QVERIFY(other.begin());
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(Thing::DropDown));
    const QMap<QString, QPoint> places = {
        {QStringLiteral("desktop"), desktopPlace},
        {QStringLiteral("other program"), other.geometry().bottomLeft() + QPoint(5, -5)},
        {QStringLiteral("RF button"), session.bar().corner(BarSession::Rf)},
        {QStringLiteral("Sweep button"), session.bar().corner(BarSession::Sweep)},
        {QStringLiteral("field"), session.bar()
                                      .control(PopupSession::sweepTitle, QStringLiteral("push button"),
                                               QStringLiteral("Frequency Step"))
                                      .center()},
    };
    QVERIFY(session.bar().click(places.value(place)));
    QVERIFY(session.waitForShown(PopupSession::shownWith(Thing::SweepPopup)));
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), PopupSession::shownWith(Thing::SweepPopup));
    QVERIFY(session.bar().click(places.value(place)));
    QVERIFY(session.waitForShown(place == QLatin1String("field")
                                     ? QStringList{QStringLiteral("Frequency Step"), PopupSession::sweepTitle}
                                     : nothing));
    QVERIFY(session.settle());
    QVERIFY(session.bar().isExpanded());
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestPopups::buttonToggles_data()
{
    QTest::addColumn<Thing>("thing");
    QTest::addColumn<int>("button");
    QTest::newRow("Sweep") << Thing::SweepPopup << int(BarSession::Sweep);
    QTest::newRow("MOD") << Thing::ModMenu << int(BarSession::Mod);
}

void TestPopups::buttonToggles()
{
    QFETCH(Thing, thing);
    QFETCH(int, button);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    for (int round = 0; round < 2; ++round) {
        QVERIFY(session.open(thing));
        QVERIFY(session.bar().click(session.bar().corner(BarSession::Button(button))));
        QVERIFY(isLeftAlone(session));
    }
}

void TestPopups::doubleClickOnButton_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QPoint>("anchor");
    QTest::addColumn<Thing>("opened");
    QTest::newRow("Sweep") << int(BarSession::Sweep) << BarSession::usualAnchor << Thing::SweepPopup;
    QTest::newRow("MOD") << int(BarSession::Mod) << BarSession::usualAnchor << Thing::ModMenu;
    // There the popup and the menu lie over their buttons.
    QTest::newRow("Sweep, in the corner") << int(BarSession::Sweep) << screenCorner << Thing::SweepPopup;
    QTest::newRow("MOD, in the corner") << int(BarSession::Mod) << screenCorner << Thing::ModMenu;
}

void TestPopups::doubleClickOnButton()
{
    QFETCH(int, button);
    QFETCH(QPoint, anchor);
    QFETCH(Thing, opened);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin(QPoint(700, 100)));
    QVERIFY(session.main().show(anchor));
    QTRY_COMPARE(session.bar().geometry().right(), anchor.x());
    QVERIFY(session.doubleClick(session.bar().centre(BarSession::Button(button))));
    QVERIFY(session.waitForShown(PopupSession::shownWith(opened)));
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), PopupSession::shownWith(opened));
    QCOMPARE(session.main().count("REQ"), 0);
}

void TestPopups::doubleClickBeside()
{
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    for (const Thing thing : {Thing::SweepPopup, Thing::ModPopup, Thing::ModMenu}) {
        QVERIFY(session.open(thing));
        QVERIFY(session.doubleClick(desktopPlace));
        QCOMPARE(session.shown(), nothing);
        QVERIFY(session.bar().isExpanded());
    }
}

void TestPopups::fasterThanTheHelper_data()
{
    QTest::addColumn<int>("opened"); // a Thing; -1 for none
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const QString sweep = QStringLiteral("Sweep button");
    const QString mod = QStringLiteral("MOD button");
    const QString rf = QStringLiteral("RF button");
    const QString desktop = QStringLiteral("desktop");
    QTest::newRow("Sweep twice") << -1 << sweep << sweep;
    QTest::newRow("Sweep, RF") << -1 << sweep << rf;
    QTest::newRow("MOD twice") << -1 << mod << mod;
    QTest::newRow("MOD, RF") << -1 << mod << rf;
    QTest::newRow("beside the popup twice") << int(Thing::SweepPopup) << desktop << desktop;
    QTest::newRow("beside the menu twice") << int(Thing::ModMenu) << desktop << desktop;
    QTest::newRow("popup open, Sweep button") << int(Thing::SweepPopup) << sweep << desktop;
    QTest::newRow("menu open, MOD button") << int(Thing::ModMenu) << mod << desktop;
}

// The second click is far enough from the first for the two to be no double click.
void TestPopups::fasterThanTheHelper()
{
    QFETCH(int, opened);
    QFETCH(QString, first);
    QFETCH(QString, second);
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    if (opened >= 0)
        QVERIFY(session.open(Thing(opened)));
    const QMap<QString, QPoint> places = {
        {QStringLiteral("Sweep button"), session.bar().corner(BarSession::Sweep)},
        {QStringLiteral("MOD button"), session.bar().corner(BarSession::Mod)},
        {QStringLiteral("RF button"), session.bar().corner(BarSession::Rf)},
        {QStringLiteral("desktop"), desktopPlace},
    };
    QVERIFY(session.clickAtOnce({places.value(first), places.value(second) + QPoint(40, 20)}));
    QVERIFY(isLeftAlone(session));
}

void TestPopups::releaseOverMenuPicksNothing()
{
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin(QPoint(700, 100)));
    QVERIFY(session.main().show(screenCorner)); // the menu will lie over the button
    QTRY_COMPARE(session.bar().geometry().right(), screenCorner.x());
    QVERIFY(session.desktop().press(session.bar().centre(BarSession::Mod)));
    QVERIFY(session.settle());
    QVERIFY(session.desktop().release());
    QVERIFY(session.waitForShown(PopupSession::shownWith(Thing::ModMenu)));
    QVERIFY(session.settle());
    QCOMPARE(session.shown(), PopupSession::shownWith(Thing::ModMenu));
    QVERIFY(session.chooseInMenu(1)); // and the next click picks
    QVERIFY(session.waitForShown({QStringLiteral("Beta in full")}));
}

// What takes the presses beside a popup goes with it.
void TestPopups::otherProgramGetsItsClicksBack()
{
    OtherProgram other(m_display);
    QVERIFY(other.begin());
    PopupSession session(m_display, m_accessibility);
    QVERIFY(session.begin());
    QVERIFY(session.open(Thing::SweepPopup));
    QVERIFY(session.bar().click(other.geometry().center()));
    QVERIFY(session.waitForShown(nothing));
    QVERIFY(session.settle());
    QVERIFY(session.bar().isExpanded());
    constexpr QPoint frame(3, 3);
    QVERIFY(session.bar().click(session.bar().geometry().topLeft() + frame)); // goes on with the bar
    QTRY_COMPARE(session.desktop().x().activeWindow(), session.bar().barWindow());
    QVERIFY(session.bar().click(other.geometry().center()));
    QTRY_VERIFY(!session.bar().isExpanded());
    QVERIFY(session.desktop().type(QStringLiteral("a")));
    QVERIFY(other.waitForText("a"));
}

QTEST_GUILESS_MAIN(TestPopups)

#include "tst_popups.moc"
