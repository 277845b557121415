#include "controls/EnumModel.h"
#include "controls/OpenedList.h"
#include "controls/Placement.h"
#include "controls/ThemeManager.h"

#include <QFile>
#include <QMouseEvent>
#include <QScrollBar>

using Controls::EnumList;
using Controls::ThemeManager;
using OpenedList::Panel;

Q_DECLARE_METATYPE(QVector<Qt::Key>)

namespace {

QString themeSheet()
{
    QFile file(QStringLiteral(CONFIGURATION_DIR "/theme.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList numbered(int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        texts.append(QStringLiteral("Item %1").arg(i));
    }
    return texts;
}

// Counts what a widget is asked to do.
class WorkCounter final : public QObject
{
public:
    explicit WorkCounter(QObject* watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        const auto type = event->type();
        count += type == QEvent::Paint || type == QEvent::UpdateRequest || type == QEvent::LayoutRequest;
        return false;
    }
    int count = 0;
};

// Through the viewport, as a finger on a touch screen is delivered to a popup.
void finger(EnumList* list, QEvent::Type type, const QPoint& position)
{
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const auto buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, position, list->viewport()->mapToGlobal(position), button, buttons,
                      Qt::NoModifier, Qt::MouseEventSynthesizedByQt);
    QCoreApplication::sendEvent(list->viewport(), &event);
}

} // namespace

class EnumListTest final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void itemsAndCurrent();
    void textTakesTheCurrentItem();
    void unchangedIsNoWork();
    void changesWhileOpen();
    void closedListOutlivesItsButton();
    void keysMove_data();
    void keysMove();
    void lettersJump();
    void currentIsVisible_data();
    void currentIsVisible();
    void gridHasThreeColumns();
    void fingerScrolls();
    void fingerTapPicks();
    void manyItemsAreNoWidgets();
    void coloursOfTheItems_data();
    void coloursOfTheItems();
    void longTextIsElided();
    void captionLeavesRoomForTheMark();
    void placement_data();
    void placement();
};

void EnumListTest::cleanup()
{
    qApp->setStyleSheet(QString());
    ThemeManager::instance().setTheme(ThemeManager::Light);
}

void EnumListTest::itemsAndCurrent()
{
    Panel panel;
    EnumTextButton& button = *panel.button;
    QCOMPARE(button.currentEnum(), 1);
    QCOMPARE(button.labelText(), QStringLiteral("Square"));
    for (const int outside : {-1, 4, 1000}) {
        button.setCurrentEnum(outside);
        QCOMPARE(button.currentEnum(), 1);
        button.setItemEnabled(outside, true);
        QVERIFY(!button.isItemEnabled(outside));
    }
    button.setItemEnabled(2, false);
    QVERIFY(button.isItemEnabled(0) && !button.isItemEnabled(2));
    button.setCurrentEnum(2); // by code it may be current all the same
    QCOMPARE(button.labelText(), QStringLiteral("Triangle"));
    button.setEnums({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    QCOMPARE(button.currentEnum(), -1);
    QCOMPARE(button.labelText(), QStringLiteral("Triangle"));
    QVERIFY(button.isItemEnabled(2));
    QCOMPARE(button.enums().size(), 3);
    QVERIFY(panel.edited().isEmpty());
    button.setViewMode(7);
    QCOMPARE(button.viewMode(), int(EnumTextButton::List));
}

void EnumListTest::textTakesTheCurrentItem()
{
    Panel panel;
    LabelButton* const plain = panel.button; // as code sees it that knows value buttons only
    plain->setLabelText(QStringLiteral("--"));
    QCOMPARE(panel.button->currentEnum(), -1);
    QCOMPARE(panel.button->labelText(), QStringLiteral("--"));
    panel.button->setCurrentEnum(1);
    panel.button->setProperty("labelText", QStringLiteral("Square")); // the same text, but no item
    QCOMPARE(panel.button->currentEnum(), -1);
    QVERIFY(panel.edited().isEmpty());
}

void EnumListTest::unchangedIsNoWork()
{
    Panel panel;
    QVERIFY(panel.show());
    QCoreApplication::processEvents();
    WorkCounter onButton(panel.button);
    WorkCounter onDialog(panel.dialog.get());
    panel.button->setCurrentEnum(1);
    panel.button->setItemEnabled(1, true);
    panel.button->setEnums(panel.button->enums());
    panel.button->setCurrentEnum(1);
    QCoreApplication::processEvents();
    QCOMPARE(onButton.count + onDialog.count, 0);
    panel.button->setCurrentEnum(2);
    QCoreApplication::processEvents();
    QVERIFY(onButton.count + onDialog.count > 0);
}

void EnumListTest::changesWhileOpen()
{
    Panel panel;
    QVERIFY(panel.show());
    const auto isMarked = [&](int row) {
        return panel.list()->model()->index(row, 0).data(Qt::CheckStateRole) == QVariant(Qt::Checked);
    };
    QVERIFY(panel.openByClick());
    QVERIFY(isMarked(1));
    panel.button->setCurrentEnum(3);
    QVERIFY(isMarked(3) && !isMarked(1));
    panel.button->setLabelText(QStringLiteral("--"));
    QVERIFY(!isMarked(3));
    panel.button->setEnums(panel.button->enums()); // nothing new
    panel.button->setItemEnabled(0, true);
    QVERIFY(panel.isOpen());
    panel.button->setItemEnabled(0, false);
    QVERIFY(!panel.isOpen());
    QVERIFY(panel.openByClick());
    panel.button->setEnums({QStringLiteral("X")});
    QVERIFY(!panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
}

// The list goes with the next turn of the event loop, the button perhaps at once.
void EnumListTest::closedListOutlivesItsButton()
{
    OpenedList::Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const QPointer<Controls::EnumList> list = panel.list();
    panel.popup()->close();
    QVERIFY(!panel.isOpen());
    delete panel.button;
    QVERIFY(list);
    list->resize(300, 100);
    QCOMPARE(list->sizeHint().height(), 4 * 44);
    QTRY_VERIFY(!list);
}

void EnumListTest::keysMove_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("from");
    QTest::addColumn<QVector<Qt::Key>>("keys");
    QTest::addColumn<int>("to");
    // Of twenty items 0, 5 and 19 are disabled.
    using Keys = QVector<Qt::Key>;
    QTest::newRow("down") << 1 << 1 << Keys{Qt::Key_Down} << 2;
    QTest::newRow("down past disabled") << 1 << 4 << Keys{Qt::Key_Down} << 6;
    QTest::newRow("up past disabled") << 1 << 6 << Keys{Qt::Key_Up} << 4;
    QTest::newRow("up at the top") << 1 << 1 << Keys{Qt::Key_Up} << 1;
    QTest::newRow("down at the bottom") << 1 << 18 << Keys{Qt::Key_Down} << 18;
    QTest::newRow("home") << 1 << 9 << Keys{Qt::Key_Home} << 1;
    QTest::newRow("end") << 1 << 9 << Keys{Qt::Key_End} << 18;
    QTest::newRow("page down") << 1 << 1 << Keys{Qt::Key_PageDown} << 9;
    QTest::newRow("page down to the end") << 1 << 15 << Keys{Qt::Key_PageDown} << 18;
    QTest::newRow("page up") << 1 << 17 << Keys{Qt::Key_PageUp} << 9;
    QTest::newRow("page up onto disabled") << 1 << 13 << Keys{Qt::Key_PageUp} << 6;
    QTest::newRow("page up to the start") << 1 << 4 << Keys{Qt::Key_PageUp} << 1;
    QTest::newRow("sideways in a list") << 1 << 4 << Keys{Qt::Key_Right, Qt::Key_Left} << 4;
    QTest::newRow("nothing current") << 1 << -1 << Keys{Qt::Key_Down} << 1;
    QTest::newRow("grid down") << 3 << 1 << Keys{Qt::Key_Down} << 4;
    QTest::newRow("grid down past disabled") << 3 << 2 << Keys{Qt::Key_Down} << 8;
    QTest::newRow("grid right past disabled") << 3 << 4 << Keys{Qt::Key_Right} << 6;
    QTest::newRow("grid left") << 3 << 4 << Keys{Qt::Key_Left, Qt::Key_Left} << 2;
    QTest::newRow("grid bottom row") << 3 << 18 << Keys{Qt::Key_Down} << 18;
}

void EnumListTest::keysMove()
{
    QFETCH(const int, columns);
    QFETCH(const int, from);
    QFETCH(const QVector<Qt::Key>, keys);
    QFETCH(const int, to);
    Panel panel(numbered(20));
    panel.button->setViewMode(columns == 3 ? EnumTextButton::Grid : EnumTextButton::List);
    for (const int row : {0, 5, 19}) {
        panel.button->setItemEnabled(row, false);
    }
    if (from < 0) {
        panel.button->setLabelText(QStringLiteral("--"));
    } else {
        panel.button->setCurrentEnum(from);
    }
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    for (const Qt::Key key : keys) {
        panel.key(key);
    }
    QCOMPARE(panel.list()->currentIndex().row(), to);
    QCOMPARE(panel.button->currentEnum(), from); // moving is not choosing
    panel.key(Qt::Key_Return);
    QCOMPARE(panel.edited(), QVector<int>{to});
}

void EnumListTest::lettersJump()
{
    Panel panel(
        {QStringLiteral("Alpha"), QStringLiteral("Beta"), QStringLiteral("Gamma"), QStringLiteral("Bravo")});
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    panel.key(Qt::Key_G);
    QCOMPARE(panel.list()->currentIndex().row(), 2);
    panel.key(Qt::Key_Return);
    QCOMPARE(panel.edited(), QVector<int>{2});
}

void EnumListTest::currentIsVisible_data()
{
    QTest::addColumn<int>("current");
    QTest::newRow("first") << 0;
    QTest::newRow("middle") << 250;
    QTest::newRow("last") << 499;
}

void EnumListTest::currentIsVisible()
{
    QFETCH(const int, current);
    Panel panel(numbered(500));
    panel.button->setCurrentEnum(current);
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const EnumList& list = *panel.list();
    const QRect item = list.visualRect(list.currentIndex());
    QCOMPARE(item.height(), 44);
    QCOMPARE(list.height(), 8 * 44);
    QVERIFY(list.viewport()->rect().contains(item));
    QCOMPARE(list.verticalScrollBar()->value() % 44, 0); // no half rows
}

void EnumListTest::gridHasThreeColumns()
{
    Panel panel(numbered(17));
    panel.button->setViewMode(EnumTextButton::Grid);
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const EnumList& list = *panel.list();
    QCOMPARE(list.height(), 6 * 44);
    QVERIFY(!list.verticalScrollBar()->isVisible());
    for (int row = 0; row < 17; ++row) {
        const QRect cell = list.visualRect(list.model()->index(row, 0));
        QCOMPARE(cell.x(), row % 3 * list.cellSize().width());
        QCOMPARE(cell.y(), row / 3 * 44);
        QVERIFY(list.viewport()->rect().contains(cell));
        // The last column has what is left over.
        if (row % 3 == 2) {
            QCOMPARE(cell.right(), list.viewport()->rect().right());
            QCOMPARE(list.indexAt(QPoint(cell.right(), cell.center().y())).row(), row);
        } else {
            QCOMPARE(cell.width(), list.cellSize().width());
        }
    }
}

void EnumListTest::fingerScrolls()
{
    Panel panel(numbered(50));
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    EnumList* const list = panel.list();
    finger(list, QEvent::MouseButtonPress, {50, 300});
    QVERIFY(list->isPressed(list->indexAt({50, 300})));
    finger(list, QEvent::MouseMove, {50, 100});
    QCOMPARE(list->verticalScrollBar()->value(), 200);
    finger(list, QEvent::MouseButtonRelease, {50, 100});
    QVERIFY(panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
}

void EnumListTest::fingerTapPicks()
{
    Panel panel(numbered(50));
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const QPoint place = panel.list()->visualRect(panel.list()->model()->index(4, 0)).center();
    finger(panel.list(), QEvent::MouseButtonPress, place);
    finger(panel.list(), QEvent::MouseMove, place + QPoint(2, 3)); // no finger stands still
    finger(panel.list(), QEvent::MouseButtonRelease, place + QPoint(2, 3));
    QCOMPARE(panel.edited(), QVector<int>{4});
}

void EnumListTest::manyItemsAreNoWidgets()
{
    const auto widgetsOf = [](int items) {
        Panel panel(numbered(items));
        return panel.show() && panel.openByClick() ? panel.popup()->findChildren<QWidget*>().size() : -1;
    };
    QVERIFY(widgetsOf(9) > 0);
    QCOMPARE(widgetsOf(500), widgetsOf(9));
}

void EnumListTest::coloursOfTheItems_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("sheet");
    QTest::newRow("dark, theme's style sheet") << int(ThemeManager::Dark) << themeSheet();
    QTest::newRow("dark, no style sheet") << int(ThemeManager::Dark) << QString();
    QTest::newRow("light, no style sheet") << int(ThemeManager::Light) << QString();
}

void EnumListTest::coloursOfTheItems()
{
    QFETCH(const int, theme);
    QFETCH(const QString, sheet);
    ThemeManager& manager = ThemeManager::instance();
    manager.setTheme(ThemeManager::Theme(theme));
    qApp->setStyleSheet(sheet);
    Panel panel;
    panel.button->setItemEnabled(3, false);
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const auto corner = [&](int row) {
        return panel.list()->viewport()->grab().toImage().pixelColor(4, row * 44 + 4);
    };
    QCOMPARE(corner(0), manager.color(ThemeManager::ListItemDefault));
    QCOMPARE(corner(1), manager.color(ThemeManager::ListItemSelected));
    QCOMPARE(corner(3), manager.color(ThemeManager::ListItemDefault));
    QCOMPARE(panel.popup()->grab().toImage().pixelColor(0, 50), manager.color(ThemeManager::Border));
    // The current item carries a mark as well, left of its text.
    const QImage picture = panel.list()->viewport()->grab(QRect(10, 44, 12, 44)).toImage();
    int marked = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            marked += picture.pixelColor(x, y) != manager.color(ThemeManager::ListItemSelected);
        }
    }
    QVERIFY(marked > 10);
}

void EnumListTest::longTextIsElided()
{
    Panel panel({QString(2000, QLatin1Char('w')), QStringLiteral("b")});
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    QVERIFY(panel.popup()->width() <= 602);
}

void EnumListTest::captionLeavesRoomForTheMark()
{
    Panel panel;
    QVERIFY(panel.show());
    panel.button->setText(QString(100, QLatin1Char('w')));
    panel.button->setLabelText(QString(100, QLatin1Char('w')));
    const auto rightOf = [&](const char* name) {
        return panel.button->findChild<QWidget*>(QLatin1String(name))->geometry().right() + 1;
    };
    panel.button->resize(200, 60);
    QCOMPARE(rightOf("textLabel"), 200 - 10 - 16);
    QCOMPARE(rightOf("infoLabel"), 200 - 10);
    panel.button->resize(200, 30); // one line
    QCOMPARE(rightOf("infoLabel"), 200 - 10 - 16);
}

void EnumListTest::placement_data()
{
    QTest::addColumn<QRect>("anchor");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("placed");
    // On a screen from (100, 50) to (1100, 850); a row is 44 px high.
    const QSize list(200, 300);
    QTest::newRow("below") << QRect(300, 100, 200, 60) << list << QRect(300, 162, 200, 300);
    QTest::newRow("just below") << QRect(300, 488, 200, 60) << list << QRect(300, 550, 200, 300);
    QTest::newRow("above") << QRect(300, 489, 200, 60) << list << QRect(300, 187, 200, 300);
    QTest::newRow("at the right edge") << QRect(1000, 100, 100, 60) << list << QRect(900, 162, 200, 300);
    QTest::newRow("left of the screen") << QRect(50, 100, 100, 60) << list << QRect(100, 162, 200, 300);
    QTest::newRow("lower below") << QRect(300, 300, 200, 60) << QSize(200, 700) << QRect(300, 362, 200, 488);
    QTest::newRow("lower above") << QRect(300, 600, 200, 60) << QSize(200, 700) << QRect(300, 50, 200, 548);
    QTest::newRow("as wide as the screen")
        << QRect(300, 100, 200, 60) << QSize(5000, 88) << QRect(100, 162, 1000, 88);
    QTest::newRow("no room at all") << QRect(100, 50, 1000, 800) << list << QRect(100, 806, 200, 44);
}

void EnumListTest::placement()
{
    QFETCH(const QRect, anchor);
    QFETCH(const QSize, size);
    QTEST(Controls::placeDropDown(anchor, size, 44, QRect(100, 50, 1000, 800)), "placed");
}

QTEST_MAIN(EnumListTest)

#include "tst_enum_list.moc"
