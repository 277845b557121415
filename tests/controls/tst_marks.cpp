#include "controls/LabelButton.h"
#include "controls/Marks.h"
#include "controls/SwitchButton.h"
#include "controls/ThemeManager.h"
#include "support/Rendered.h"

#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <functional>

using Controls::ThemeManager;

namespace {

constexpr char switchSheet[] = "SwitchButton QPushButton { background-color: #00ff00; border: 0px; }";

// Paints what it is told to.
class Canvas final : public QWidget
{
public:
    std::function<void(QPainter&)> draw;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        draw(painter);
    }
};

QRect whereIs(const QImage& picture, const QColor& color)
{
    QRect place;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == color)
                place |= QRect(x, y, 1, 1);
        }
    }
    return place;
}

// How many pixels have the colour, one beside the other, from here on in this direction.
int run(const QImage& picture, QPoint from, QPoint step, const QColor& color)
{
    int length = 0;
    for (; picture.rect().contains(from) && picture.pixelColor(from) == color; from += step)
        ++length;
    return length;
}

// Of the four sides, along the lines through the point.
QVector<int> sideWidths(const QImage& picture, const QPoint& through, const QColor& color)
{
    const QRect frame = whereIs(picture, color);
    return {run(picture, {frame.left(), through.y()}, {1, 0}, color),
            run(picture, {frame.right(), through.y()}, {-1, 0}, color),
            run(picture, {through.x(), frame.top()}, {0, 1}, color),
            run(picture, {through.x(), frame.bottom()}, {0, -1}, color)};
}

void addScales()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QPoint>("place");
    for (const double scale : {1.0, 1.5, 2.0}) {
        for (const QPoint& place : {QPoint(10, 10), QPoint(11, 10), QPoint(10, 11), QPoint(13, 15)})
            QTest::addRow("%g, at %d, %d", scale, place.x(), place.y()) << scale << place;
    }
}

} // namespace

// Lines are equally wide on every side, whatever the scale.
class MarksTest final : public QObject
{
    Q_OBJECT

private slots:
    void frames_data() { addScales(); }
    void frames();
    void focusRing_data() { addScales(); }
    void focusRing();
    void readOnlyButton_data() { addScales(); }
    void readOnlyButton();
    void switchHalves_data() { addScales(); }
    void switchHalves();
};

void MarksTest::frames()
{
    QFETCH(const double, scale);
    QFETCH(const QPoint, place);
    Canvas canvas;
    canvas.resize(80, 60);
    const QRect rect(place, QSize(41, 30));
    canvas.draw = [rect](QPainter& painter) { Controls::paintFrame(painter, rect, Qt::red); };
    const QImage inside = TestSupport::rendered(&canvas, scale);
    QCOMPARE(sideWidths(inside, rect.center() * scale, Qt::red), QVector<int>(4, qRound(scale)));
    canvas.draw = [rect](QPainter& painter) {
        painter.fillRect(rect, Qt::green);
        Controls::paintFrameAround(painter, rect, Qt::red);
    };
    const QImage around = TestSupport::rendered(&canvas, scale);
    const int line = qRound(scale);
    QCOMPARE(sideWidths(around, rect.center() * scale, Qt::red), QVector<int>(4, line));
    QCOMPARE(whereIs(around, Qt::green), whereIs(around, Qt::red).adjusted(line, line, -line, -line));
}

void MarksTest::focusRing()
{
    QFETCH(const double, scale);
    QFETCH(const QPoint, place);
    Canvas canvas;
    canvas.resize(80, 60);
    const QRect rect(place, QSize(41, 30));
    canvas.draw = [rect](QPainter& painter) { Controls::paintFocusRing(painter, rect); };
    const QColor ring = ThemeManager::instance().color(ThemeManager::FocusRing);
    const QImage picture = TestSupport::rendered(&canvas, scale);
    QCOMPARE(sideWidths(picture, rect.center() * scale, ring), QVector<int>(4, qRound(2 * scale)));
}

void MarksTest::readOnlyButton()
{
    QFETCH(const double, scale);
    QFETCH(const QPoint, place);
    QWidget window;
    window.resize(300, 100);
    LabelButton button(&window);
    button.setGeometry(QRect(place, QSize(201, 60)));
    button.setReadOnly(true);
    const QColor line = ThemeManager::instance().color(ThemeManager::Border);
    const QImage picture = TestSupport::rendered(&window, scale);
    QCOMPARE(sideWidths(picture, button.geometry().center() * scale, line), QVector<int>(4, qRound(scale)));
}

// The line touches the halves.
void MarksTest::switchHalves()
{
    QFETCH(const double, scale);
    QFETCH(const QPoint, place);
    QWidget window;
    window.setStyleSheet(QLatin1String(switchSheet));
    window.resize(300, 100);
    SwitchButton button(&window);
    button.setCompactMode(true);
    button.setGeometry(QRect(place, QSize(201, 60)));
    const QImage picture = TestSupport::rendered(&window, scale);
    const auto* const half = button.findChild<QPushButton*>(QStringLiteral("btnOn"));
    const QPoint nearTheEdge = half->mapTo(&window, QPoint(3, 3)) * scale;
    const int line = qRound(scale);
    const QColor border = ThemeManager::instance().color(ThemeManager::Border);
    QCOMPARE(sideWidths(picture, nearTheEdge, border), QVector<int>(4, line));
    QCOMPARE(whereIs(picture, Qt::green), whereIs(picture, border).adjusted(line, line, -line, -line));
}

QTEST_MAIN(MarksTest)

#include "tst_marks.moc"
