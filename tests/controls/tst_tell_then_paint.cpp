// Every button of the kit tells of a press before it is painted, and is painted for it all the same.

#include "controls/CommandButton.h"
#include "controls/KeypadKey.h"
#include "controls/LabelButton.h"
#include "controls/SwitchHalf.h"
#include "controls/WrappedCheckBox.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <functional>

namespace {

using Make = std::function<QAbstractButton*(QWidget*)>;

// Counts how often a widget is painted.
class PaintCounter final : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count = 0;
};

struct Panel
{
    explicit Panel(const Make& make)
        : button(make(&window))
    {
        button->setGeometry(10, 10, 160, 60);
        window.resize(200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
    }

    QWidget window;
    QAbstractButton* button;
};

void press(QWidget* widget, bool byKey)
{
    if (byKey)
        QTest::keyPress(widget, Qt::Key_Space);
    else
        QTest::mousePress(widget, Qt::LeftButton);
}

void release(QWidget* widget, bool byKey)
{
    if (byKey)
        QTest::keyRelease(widget, Qt::Key_Space);
    else
        QTest::mouseRelease(widget, Qt::LeftButton);
}

} // namespace

Q_DECLARE_METATYPE(Make)

class TestTellThenPaint final : public QObject
{
    Q_OBJECT

private slots:
    void toldBeforeItIsPainted_data();
    void toldBeforeItIsPainted();
    void deletedByWhatItAsksFor_data();
    void deletedByWhatItAsksFor();
    void otherButtonsOfTheMouse();
};

void TestTellThenPaint::toldBeforeItIsPainted_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<bool>("byKey");
    const struct
    {
        const char* name;
        Make make;
    } rows[] = {
        {"LabelButton", [](QWidget* parent) { return new LabelButton(parent); }},
        {"CommandButton", [](QWidget* parent) { return new CommandButton(parent); }},
        {"SwitchHalf", [](QWidget* parent) { return new Controls::SwitchHalf(true, parent); }},
        {"KeypadKey",
         [](QWidget* parent) { return new Controls::KeypadKey(QStringLiteral("1"), 20, parent); }},
        {"WrappedCheckBox", [](QWidget* parent) { return new Controls::WrappedCheckBox(parent); }},
        {"a push button",
         [](QWidget* parent) {
             return new Controls::TellThenPaint<QPushButton>(QStringLiteral("Restore"), parent);
         }},
    };
    for (const auto& row : rows) {
        QTest::addRow("%s, mouse", row.name) << row.make << false;
        QTest::addRow("%s, key", row.name) << row.make << true;
    }
}

void TestTellThenPaint::toldBeforeItIsPainted()
{
    QFETCH(Make, make);
    QFETCH(bool, byKey);
    const Panel panel(make);
    const PaintCounter paints(panel.button);
    int whenTold = -1;
    int duringTheSlot = -1;
    connect(panel.button, &QAbstractButton::clicked, panel.button, [&] {
        whenTold = paints.count();
        QCoreApplication::processEvents(); // as a window does that the click opens
        duringTheSlot = paints.count();
    });
    press(panel.button, byKey);
    QCOMPARE(paints.count(), 0);
    QTRY_COMPARE(paints.count(), 1); // held down
    QVERIFY(panel.button->isDown());
    release(panel.button, byKey);
    QCOMPARE(whenTold, 1);
    QVERIFY(duringTheSlot > whenTold);
    QVERIFY(!panel.button->isDown());
    const int before = paints.count();
    press(panel.button, byKey);
    QTest::mouseRelease(panel.button, Qt::LeftButton, {}, QPoint(-20, -20)); // no click
    QTRY_VERIFY(paints.count() > before);
}

void TestTellThenPaint::deletedByWhatItAsksFor_data()
{
    toldBeforeItIsPainted_data();
}

void TestTellThenPaint::deletedByWhatItAsksFor()
{
    QFETCH(Make, make);
    QFETCH(bool, byKey);
    const Panel panel(make);
    const QPointer<QAbstractButton> button(panel.button);
    connect(panel.button, &QAbstractButton::clicked, panel.button, [&] { delete panel.button; });
    press(panel.button, byKey);
    release(panel.button, byKey);
    QVERIFY(button.isNull());
}

// What is no press leaves nothing switched off.
void TestTellThenPaint::otherButtonsOfTheMouse()
{
    const Panel panel([](QWidget* parent) { return new CommandButton(parent); });
    const QSignalSpy clicks(panel.button, &QAbstractButton::clicked);
    QTest::mouseClick(panel.button, Qt::RightButton);
    QTest::keyClick(panel.button, Qt::Key_A);
    QVERIFY(panel.button->updatesEnabled());
    QCOMPARE(clicks.count(), 0);
}

QTEST_MAIN(TestTellThenPaint)

#include "tst_tell_then_paint.moc"
