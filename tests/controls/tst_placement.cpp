#include "controls/Placement.h"

#include <QTest>

using Controls::placeBeside;

class PlacementTest final : public QObject
{
    Q_OBJECT

private slots:
    void placement_data();
    void placement();
};

void PlacementTest::placement_data()
{
    QTest::addColumn<QRect>("anchor");
    QTest::addColumn<QRect>("surroundings");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QPoint>("expected");
    QTest::addColumn<QRect>("offThis"); // what the window must not cover

    const QSize size(300, 400);
    const QRect full(0, 0, 1920, 1080);
    const QRect barLeft(100, 100, 134, 400);
    const QRect barRight(1760, 100, 134, 400);
    const auto buttonIn = [](const QRect& bar, int y) { return QRect(bar.x() + 8, bar.y() + y, 118, 60); };
    QTest::newRow("right of the bar")
        << buttonIn(barLeft, 68) << barLeft << size << full << QPoint(242, 168) << barLeft;
    QTest::newRow("left of a bar at the right edge")
        << buttonIn(barRight, 68) << barRight << size << full << QPoint(1452, 168) << barRight;
    QTest::newRow("moved up at the bottom") << QRect(108, 1000, 118, 60) << QRect(100, 660, 134, 400) << size
                                            << full << QPoint(242, 680) << QRect(100, 660, 134, 400);
    QTest::newRow("second screen") << QRect(2028, 168, 118, 60) << QRect(2020, 100, 134, 400) << size
                                   << QRect(1920, 0, 1280, 800) << QPoint(2162, 168)
                                   << QRect(2020, 100, 134, 400);
    QTest::newRow("screen left of the origin")
        << QRect(-1172, -600, 118, 60) << QRect(-1180, -668, 134, 400) << size
        << QRect(-1280, -1024, 1280, 1024) << QPoint(-1038, -600) << QRect(-1180, -668, 134, 400);
    QTest::newRow("under a panel") << QRect(20, 0, 118, 32) << QRect(20, 0, 760, 32) << size
                                   << QRect(0, 0, 800, 600) << QPoint(20, 40) << QRect(20, 0, 760, 32);
    QTest::newRow("above a panel") << QRect(20, 568, 118, 32) << QRect(20, 568, 760, 32) << size
                                   << QRect(0, 0, 800, 600) << QPoint(20, 160) << QRect(20, 568, 760, 32);
    QTest::newRow("large window: off the button alone")
        << QRect(600, 300, 118, 60) << QRect(0, 0, 1920, 1080) << size << full << QPoint(726, 300)
        << QRect(600, 300, 118, 60);
    QTest::newRow("large window: left of the button")
        << QRect(1780, 300, 118, 60) << QRect(0, 0, 1920, 1080) << size << full << QPoint(1472, 300)
        << QRect(1780, 300, 118, 60);
    QTest::newRow("small screen: as near as can be")
        << QRect(100, 100, 118, 60) << QRect(92, 32, 134, 400) << size << QRect(0, 0, 400, 420)
        << QPoint(100, 20) << QRect();
    QTest::newRow("tiny screen: its corner stays visible")
        << QRect(10, 10, 118, 60) << QRect(2, 2, 134, 200) << size << QRect(0, 0, 200, 200) << QPoint(0, 0)
        << QRect();
}

void PlacementTest::placement()
{
    QFETCH(const QRect, anchor);
    QFETCH(const QRect, surroundings);
    QFETCH(const QSize, size);
    QFETCH(const QRect, screen);
    QFETCH(const QRect, offThis);
    const QRect placed(placeBeside(anchor, surroundings, size, screen), size);
    QTEST(placed.topLeft(), "expected");
    QVERIFY(!placed.intersects(offThis));
    if (size.width() <= screen.width() && size.height() <= screen.height()) {
        QVERIFY(screen.contains(placed));
    }
}

QTEST_GUILESS_MAIN(PlacementTest)

#include "tst_placement.moc"
