#include "business/PropertyBindingHelper.h"
#include "business/UnitAdapters.h"
#include "controls/BaseUnitAdapter.h"
#include "controls/TouchNumKeyboard.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using Controls::BaseUnitAdapter;
using Controls::TouchNumKeyboard;
using PropertyBindingHelper::NumericKeyboardConfig;
using PropertyBindingHelper::prepareNumericKeyBoard;

namespace {

NumericKeyboardConfig frequencyConfig()
{
    NumericKeyboardConfig config;
    config.title = QStringLiteral("Start Frequency");
    config.adapterType = Adapters::OutputFrequencyUnitAdapter::adapterType();
    config.value = 1e9;
    config.step = 1e6;
    config.minimum = 1.0;
    config.unitText = QStringLiteral("MHz");
    config.auxText = QStringLiteral("125");
    return config;
}

// A window with one button, as the bar is.
struct Bar
{
    explicit Bar(const QPoint& position)
    {
        button = new QPushButton(&window);
        button->setGeometry(8, 68, 118, 60);
        window.setGeometry(QRect(position, QSize(134, 400)));
        window.show();
    }
    QWidget window;
    QPushButton* button;
};

QString labelText(const TouchNumKeyboard* keyboard, const char* name)
{
    return keyboard->findChild<QLabel*>(QLatin1String(name))->text();
}

} // namespace

class PropertyBindingTest final : public QObject
{
    Q_OBJECT

private slots:
    void carriesTheConfiguration();
    void plainNumber();
    void decimalsAndWholeNumbers();
    void deletesItselfWhenClosed_data();
    void deletesItselfWhenClosed();
    void goesWithTheWindow();
    void withoutAnchor();
    void standsBesideItsBar_data();
    void standsBesideItsBar();
};

void PropertyBindingTest::carriesTheConfiguration()
{
    Bar bar(QPoint(100, 100));
    TouchNumKeyboard* const keyboard = prepareNumericKeyBoard(bar.button, frequencyConfig());
    QVERIFY(!keyboard->isVisible());
    QCOMPARE(keyboard->parentWidget(), &bar.window);
    QCOMPARE(keyboard->property("auxText").toString(), QStringLiteral("125"));
    QCOMPARE(keyboard->windowTitle(), QStringLiteral("Start Frequency"));
    QCOMPARE(labelText(keyboard, "titleLabel"), QStringLiteral("Start Frequency"));
    QCOMPARE(labelText(keyboard, "valueLabel"), QStringLiteral("1000"));
    QCOMPARE(labelText(keyboard, "unitLabel"), QStringLiteral("MHz"));
    QCOMPARE(labelText(keyboard, "limitsLabel"), QStringLiteral("At least 1 Hz"));
    auto* const adapter = qobject_cast<BaseUnitAdapter*>(keyboard->receiver());
    QVERIFY(adapter);
    QCOMPARE(adapter->commitMode(), int(BaseUnitAdapter::OnEditingFinished));
    QSignalSpy commits(adapter, &BaseUnitAdapter::editingFinished);
    keyboard->open();
    QTest::keyClicks(keyboard, QStringLiteral("915"));
    QTest::keyClick(keyboard, Qt::Key_Return);
    QCOMPARE(commits.count(), 1);
    QCOMPARE(commits.first().first().toDouble(), 915e6);
}

void PropertyBindingTest::plainNumber()
{
    NumericKeyboardConfig config;
    config.value = 12.0;
    const std::unique_ptr<TouchNumKeyboard> keyboard(prepareNumericKeyBoard(nullptr, config));
    QCOMPARE(labelText(keyboard.get(), "valueLabel"), QStringLiteral("12"));
    QCOMPARE(labelText(keyboard.get(), "unitLabel"), QString());
    QVERIFY(keyboard->findChild<QWidget*>(QStringLiteral("keyEnter")));
}

void PropertyBindingTest::decimalsAndWholeNumbers()
{
    NumericKeyboardConfig config;
    config.value = 12.0;
    config.decimals = 2;
    config.maximum = 100.0;
    const std::unique_ptr<TouchNumKeyboard> decimals(prepareNumericKeyBoard(nullptr, config));
    QTest::keyClicks(decimals.get(), QStringLiteral("1.255"));
    QTest::keyClick(decimals.get(), Qt::Key_Return);
    QCOMPARE(labelText(decimals.get(), "limitsLabel"), QStringLiteral("The finest step is 0.01."));
    config.integerOnly = true;
    const std::unique_ptr<TouchNumKeyboard> whole(prepareNumericKeyBoard(nullptr, config));
    auto* const adapter = qobject_cast<Controls::BaseUnitAdapter*>(whole->receiver());
    QVERIFY(adapter);
    QTest::keyClicks(whole.get(), QStringLiteral("1.5"));
    QTest::keyClick(whole.get(), Qt::Key_Return);
    QCOMPARE(adapter->currentValue(), 2.0);
}

void PropertyBindingTest::deletesItselfWhenClosed_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("accepted") << int(Qt::Key_Return);
    QTest::newRow("rejected") << int(Qt::Key_Escape);
}

void PropertyBindingTest::deletesItselfWhenClosed()
{
    QFETCH(const int, key);
    Bar bar(QPoint(100, 100));
    const QPointer<TouchNumKeyboard> keyboard = prepareNumericKeyBoard(bar.button, frequencyConfig());
    keyboard->open();
    QTest::keyClick(keyboard, Qt::Key(key));
    QTRY_VERIFY(!keyboard);
}

void PropertyBindingTest::goesWithTheWindow()
{
    QPointer<TouchNumKeyboard> keyboard;
    {
        Bar bar(QPoint(100, 100));
        keyboard = prepareNumericKeyBoard(bar.button, frequencyConfig());
        keyboard->open();
    }
    QVERIFY(!keyboard);
}

void PropertyBindingTest::withoutAnchor()
{
    const std::unique_ptr<TouchNumKeyboard> keyboard(prepareNumericKeyBoard(nullptr, frequencyConfig()));
    keyboard->open();
    QVERIFY(QTest::qWaitForWindowExposed(keyboard.get()));
    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(keyboard->frameGeometry()));
}

void PropertyBindingTest::standsBesideItsBar_data()
{
    QTest::addColumn<QPoint>("position");
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QTest::newRow("left") << screen.topLeft() + QPoint(20, 40);
    QTest::newRow("right") << screen.topRight() + QPoint(-134, 40);
    QTest::newRow("bottom right") << screen.bottomRight() + QPoint(-134, -400);
}

void PropertyBindingTest::standsBesideItsBar()
{
    QFETCH(const QPoint, position);
    Bar bar(position);
    QVERIFY(QTest::qWaitForWindowExposed(&bar.window));
    TouchNumKeyboard* const keyboard = prepareNumericKeyBoard(bar.button, frequencyConfig());
    keyboard->open();
    QVERIFY(QTest::qWaitForWindowExposed(keyboard));
    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(keyboard->geometry()));
    QTRY_VERIFY(!keyboard->geometry().intersects(bar.window.geometry()));
}

QTEST_MAIN(PropertyBindingTest)

#include "tst_property_binding.moc"
