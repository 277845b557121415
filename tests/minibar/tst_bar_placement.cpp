#include "minibar/BarDrag.h"
#include "minibar/Placement.h"

#include <QRandomGenerator>
#include <QTest>
#include <QVector>

using Placement::Screens;

Q_DECLARE_METATYPE(Placement::Screens)

namespace {

constexpr QSize bar(134, 228);

// Screens whose available rectangle leaves out a 30 px panel at the top.
Screens layout(const QVector<QRect>& geometries, int own = -1, int primary = 0)
{
    Screens screens;
    for (const QRect& geometry : geometries)
        screens.all.append({geometry, geometry.adjusted(0, 30, 0, 0)});
    screens.own = own;
    screens.primary = primary;
    return screens;
}

const QRect fullHd(0, 0, 1920, 1080);

} // namespace

class TestBarPlacement : public QObject
{
    Q_OBJECT

private slots:
    void screenRect_data();
    void screenRect();
    void screenRectWithFrame();
    void clamped_data();
    void clamped();
    void fitted_data();
    void fitted();
    void defaultPlace();
    void anchor_data();
    void anchor();
    void everyPlaceComesIntoView_data();
    void everyPlaceComesIntoView();
    void dragStartsAtTheStartDistance();
};

void TestBarPlacement::screenRect_data()
{
    QTest::addColumn<Screens>("screens");
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QRect>("expected");

    const Screens pair = layout({fullHd, QRect(1920, 0, 1280, 1024)}, 1, 0);
    QTest::newRow("first of two") << pair << QPoint(1919, 500) << QRect(0, 30, 1920, 1050);
    QTest::newRow("second of two") << pair << QPoint(1920, 500) << QRect(1920, 30, 1280, 994);
    QTest::newRow("on a panel still counts for its screen")
        << pair << QPoint(10, 10) << QRect(0, 30, 1920, 1050);
    QTest::newRow("on no screen: own") << pair << QPoint(5000, 5000) << QRect(1920, 30, 1280, 994);
    QTest::newRow("on no screen, no own: primary") << layout({fullHd, QRect(1920, 0, 1280, 1024)}, -1, 1)
                                                   << QPoint(5000, 0) << QRect(1920, 30, 1280, 994);
    QTest::newRow("no screen at all") << Screens() << QPoint(0, 0) << QRect(0, 0, 1280, 800);
    QTest::newRow("negative origin") << layout({fullHd, QRect(-1280, -200, 1280, 1024)}) << QPoint(-5, -100)
                                     << QRect(-1280, -170, 1280, 994);
    QTest::newRow("gap between screens: primary")
        << layout({fullHd, QRect(3000, 0, 1280, 1024)}) << QPoint(2500, 20) << QRect(0, 30, 1920, 1050);
    QTest::newRow("stale indexes are not followed")
        << layout({}, 3, 2) << QPoint(0, 0) << QRect(0, 0, 1280, 800);
}

void TestBarPlacement::screenRect()
{
    QFETCH(Screens, screens);
    QFETCH(QPoint, point);
    QTEST(Placement::screenRect(screens, point), "expected");
}

void TestBarPlacement::screenRectWithFrame()
{
    const Screens screens = layout({fullHd, QRect(1920, 0, 1280, 1024)});
    const QRect frame(QPoint(2000, 100), bar);
    QCOMPARE(Placement::screenRect(screens, Placement::unset, frame), QRect(1920, 30, 1280, 994));
    QCOMPARE(Placement::screenRect(screens, QPoint(5, 5), frame), QRect(0, 30, 1920, 1050));
    QCOMPARE(Placement::screenRect(screens, Placement::unset), QRect(0, 30, 1920, 1050));
}

void TestBarPlacement::clamped_data()
{
    QTest::addColumn<QPoint>("topLeft");
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QPoint>("expected");

    const QRect screen(0, 30, 1920, 1050);
    QTest::newRow("inside") << QPoint(100, 100) << screen << QPoint(100, 100);
    QTest::newRow("left") << QPoint(-1, 100) << screen << QPoint(0, 100);
    QTest::newRow("top") << QPoint(100, 29) << screen << QPoint(100, 30);
    QTest::newRow("flush right") << QPoint(1920 - 134, 100) << screen << QPoint(1786, 100);
    QTest::newRow("right") << QPoint(1787, 100) << screen << QPoint(1786, 100);
    QTest::newRow("flush bottom") << QPoint(100, 1080 - 228) << screen << QPoint(100, 852);
    QTest::newRow("bottom") << QPoint(100, 853) << screen << QPoint(100, 852);
    QTest::newRow("far away") << QPoint(99999, 99999) << screen << QPoint(1786, 852);
    QTest::newRow("negative screen") << QPoint(-2000, -2000) << QRect(-1280, -200, 1280, 1024)
                                     << QPoint(-1280, -200);
    QTest::newRow("screen smaller than the bar: top-left wins")
        << QPoint(40, 40) << QRect(10, 20, 100, 100) << QPoint(10, 20);
}

void TestBarPlacement::clamped()
{
    QFETCH(QPoint, topLeft);
    QFETCH(QRect, screen);
    QTEST(Placement::clamped(topLeft, bar, screen), "expected");
}

void TestBarPlacement::fitted_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QPoint>("expected");

    QTest::newRow("inside") << QRect(10, 10, 134, 412) << QPoint(10, 10);
    QTest::newRow("over the left edge") << QRect(-10, 10, 134, 412) << QPoint(0, 10);
    QTest::newRow("over the top edge") << QRect(10, -10, 134, 412) << QPoint(10, 0);
    QTest::newRow("over the right edge") << QRect(1200, 10, 134, 412) << QPoint(1280 - 134, 10);
    QTest::newRow("over the bottom edge") << QRect(10, 700, 134, 412) << QPoint(10, 800 - 412);
    QTest::newRow("bottom right corner") << QRect(1279, 799, 134, 412) << QPoint(1280 - 134, 800 - 412);
    QTest::newRow("wider than the screen: right edge wins") << QRect(10, 10, 2000, 412) << QPoint(-720, 10);
    QTest::newRow("higher than the screen: bottom edge wins") << QRect(10, 10, 134, 900) << QPoint(10, -100);
}

void TestBarPlacement::fitted()
{
    QFETCH(QRect, rect);
    QFETCH(QPoint, expected);
    const QRect result = Placement::fitted(rect, QRect(0, 0, 1280, 800));
    QCOMPARE(result.topLeft(), expected);
    QCOMPARE(result.size(), rect.size());
}

void TestBarPlacement::defaultPlace()
{
    // QRect::right() is the last column, 1919.
    QCOMPARE(Placement::defaultTopLeft(bar, QRect(0, 30, 1920, 1050)), QPoint(1919 - 24 - 134, 30 + 96));
}

void TestBarPlacement::anchor_data()
{
    QTest::addColumn<QPoint>("topRight");
    QTest::addColumn<int>("width");
    QTest::addColumn<QPoint>("expected");

    QTest::newRow("right edge of a full-HD screen") << QPoint(1919, 40) << 120 << QPoint(1800, 40);
    QTest::newRow("origin") << QPoint(0, 0) << 134 << QPoint(-133, 0);
    QTest::newRow("negative screen") << QPoint(-1, 7) << 134 << QPoint(-134, 7);
}

void TestBarPlacement::anchor()
{
    QFETCH(QPoint, topRight);
    QFETCH(int, width);
    QTEST(Placement::topLeftForAnchor(topRight, QSize(width, 228)), "expected");
}

void TestBarPlacement::everyPlaceComesIntoView_data()
{
    QTest::addColumn<Screens>("screens");

    const QVector<QRect> six = {fullHd,
                                QRect(1920, 0, 1920, 1080),
                                QRect(3840, -300, 1080, 1920),
                                QRect(-2560, -1440, 2560, 1440),
                                QRect(-1280, 0, 1280, 1024),
                                QRect(5200, 900, 800, 480)};
    for (int count = 1; count <= six.size(); ++count) {
        QTest::addRow("%d screens", count) << layout(six.mid(0, count));
        QTest::addRow("%d screens, origin uncovered", count) << layout(six.mid(six.size() - count));
    }
    QTest::newRow("no screen") << Screens();
}

void TestBarPlacement::everyPlaceComesIntoView()
{
    QFETCH(Screens, screens);
    QRandomGenerator random(20240607);
    for (int i = 0; i < 2000; ++i) {
        const QPoint wish(random.bounded(-9000, 9000), random.bounded(-9000, 9000));
        const QPoint place = Placement::clamped(wish, bar, Placement::screenRect(screens, wish));
        const QRect rect(place, bar);
        QRect holder(0, 0, 1280, 800);
        for (const Screens::Screen& screen : screens.all) {
            if (screen.available.contains(rect))
                holder = screen.available;
        }
        QVERIFY2(holder.contains(rect), qPrintable(QStringLiteral("%1,%2").arg(wish.x()).arg(wish.y())));
        // Placing twice is placing once.
        QCOMPARE(Placement::clamped(place, bar, Placement::screenRect(screens, place)), place);
    }
}

void TestBarPlacement::dragStartsAtTheStartDistance()
{
    BarDrag drag;
    QVERIFY(!drag.moveTo(QPoint(50, 50), 10));
    drag.press(QPoint(100, 100), QPoint(90, 80));
    QVERIFY(!drag.moveTo(QPoint(105, 104), 10)); // 9
    QVERIFY(!drag.isDragging());
    QVERIFY(drag.moveTo(QPoint(105, 105), 10)); // 10
    QCOMPARE(drag.windowTopLeft(), QPoint(95, 85));
    QVERIFY(drag.moveTo(QPoint(101, 100), 10)); // back again: still a drag
    QCOMPARE(drag.windowTopLeft(), QPoint(91, 80));
    QVERIFY(drag.release());
    QVERIFY(!drag.isPressed());
    QVERIFY(!drag.release());
    drag.press(QPoint(0, 0), QPoint(0, 0));
    QVERIFY(!drag.release());
}

QTEST_GUILESS_MAIN(TestBarPlacement)
#include "tst_bar_placement.moc"
