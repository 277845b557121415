#include "controls/OpenedKeyboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

Q_DECLARE_METATYPE(QVector<Controls::Unit>)

using namespace OpenedKeyboard;

class TouchNumKeyboardTest final : public QObject
{
    Q_OBJECT

private slots:
    void opensWithTheValueSelected();
    void everyKeyWorks();
    void keysThatLeadNowhereAreOff_data();
    void keysThatLeadNowhereAreOff();
    void unitKeyEnds();
    void unitKeyOnTheUntouchedValueReExpresses();
    void refusalStaysUntilTheNextKey();
    void physicalKeys();
    void unitLetterEnds();
    void escapeAndCancelReject();
    void copyAndPaste();
    void enterAcceptsAndSpacePressesTheFocusedKey();
    void heldEnterIsIgnored();
    void commitsOnce_data();
    void commitsOnce();
    void survivesItsOwnEndInTheCommit_data();
    void survivesItsOwnEndInTheCommit();
};

void TouchNumKeyboardTest::opensWithTheValueSelected()
{
    Opened opened;
    QVERIFY(opened.isReady());
    QVERIFY(opened.keyboard->isModal());
    QCOMPARE(opened.keyboard->windowModality(), Qt::WindowModal);
    QCOMPARE(opened.text("titleLabel"), QStringLiteral("Frequency"));
    QCOMPARE(opened.shown(), QStringLiteral("2.4 GHz"));
    QCOMPARE(opened.text("limitsLabel"), QStringLiteral("9 kHz to 6 GHz"));
    QCOMPARE(opened.adapter->currentValue(), 2.4e9);
    QCOMPARE(static_cast<QObject*>(opened.keyboard->receiver()), static_cast<QObject*>(opened.adapter));
    QCOMPARE(opened.focused()->objectName(), QStringLiteral("valueLine"));
    opened.click(QStringLiteral("key5"));
    QCOMPARE(opened.shown(), QStringLiteral("5 GHz"));
}

void TouchNumKeyboardTest::everyKeyWorks()
{
    NumericEntry entry = OpenedKeyboard::frequencyEntry();
    entry.minimum = -6e9;
    Opened opened(entry);
    for (const QChar digit : QStringLiteral("1234567890")) {
        opened.click(QStringLiteral("key") + digit);
    }
    QCOMPARE(opened.text("valueLabel"), QStringLiteral("1234567890"));
    opened.click(QStringLiteral("keyBackspace"));
    opened.click(QStringLiteral("keyPoint"));
    opened.click(QStringLiteral("key7"));
    opened.click(QStringLiteral("keySign"));
    QCOMPARE(opened.text("valueLabel"), QStringLiteral("-123456789.7"));
    opened.click(QStringLiteral("keyClear"));
    QCOMPARE(opened.text("valueLabel"), QString());
    opened.click(QStringLiteral("key3"));
    opened.click(QStringLiteral("keyStepUp"));
    QCOMPARE(opened.shown(), QStringLiteral("3.001 GHz"));
    opened.click(QStringLiteral("keyStepDown"));
    opened.click(QStringLiteral("keyStepDown"));
    QCOMPARE(opened.shown(), QStringLiteral("2.999 GHz"));
    opened.click(QStringLiteral("keyEnter"));
    QVERIFY(opened.hasCommitted(2.999e9));
}

void TouchNumKeyboardTest::keysThatLeadNowhereAreOff_data()
{
    QTest::addColumn<QVector<Controls::Unit>>("units");
    QTest::addColumn<bool>("noDecimals");
    QTest::addColumn<double>("minimum");
    QTest::addColumn<bool>("point");
    QTest::addColumn<bool>("sign");
    const double any = qQNaN();
    QTest::newRow("any number") << Quantities::plain() << false << any << true << true;
    QTest::newRow("not negative") << Quantities::plain() << false << 0.0 << true << false;
    QTest::newRow("no decimals") << Quantities::plain() << true << any << false << true;
    QTest::newRow("no decimals, not below 1") << Quantities::plain() << true << 1.0 << false << false;
    QTest::newRow("no decimals, one unit") << Quantities::level() << true << -30.0 << false << true;
    QTest::newRow("no decimals of a hertz, 1.5 kHz")
        << Quantities::frequency() << true << 0.0 << true << false;
}

// By the keys of the screen only: whatever is typed is judged as ever.
void TouchNumKeyboardTest::keysThatLeadNowhereAreOff()
{
    QFETCH(const QVector<Controls::Unit>, units);
    QFETCH(const bool, noDecimals);
    QFETCH(const double, minimum);
    NumericEntry entry;
    entry.value = 12.0;
    if (noDecimals)
        entry.decimals = 0;
    entry.minimum = minimum;
    Opened opened(entry, units);
    QTEST(opened.key(QStringLiteral("keyPoint"))->isEnabled(), "point");
    QTEST(opened.key(QStringLiteral("keySign"))->isEnabled(), "sign");
    opened.click(QStringLiteral("keyClear"));
    opened.click(QStringLiteral("keyPoint"));
    opened.click(QStringLiteral("keySign"));
    QFETCH(const bool, point);
    QFETCH(const bool, sign);
    QCOMPARE(opened.text("valueLabel"), QLatin1String(sign ? "-" : "") + QLatin1String(point ? "0." : ""));
    QVERIFY(opened.isReady());
    opened.press(Qt::Key_A, Qt::ControlModifier);
    opened.type("-1.5");
    QCOMPARE(opened.text("valueLabel"), QStringLiteral("-1.5"));
}

void TouchNumKeyboardTest::unitKeyEnds()
{
    Opened opened;
    opened.click(QStringLiteral("key9"));
    opened.click(QStringLiteral("key1"));
    opened.click(QStringLiteral("key5"));
    opened.click(QStringLiteral("unitKey_MHz"));
    QVERIFY(opened.hasCommitted(915e6));
    QVERIFY(!opened.keyboard->isVisible());
}

void TouchNumKeyboardTest::unitKeyOnTheUntouchedValueReExpresses()
{
    Opened opened;
    opened.click(QStringLiteral("unitKey_kHz"));
    QCOMPARE(opened.shown(), QStringLiteral("2400000 kHz"));
    QVERIFY(opened.committed.isEmpty());
    opened.click(QStringLiteral("unitKey_kHz"));
    QVERIFY(opened.hasCommitted(2.4e9));
}

void TouchNumKeyboardTest::refusalStaysUntilTheNextKey()
{
    Opened opened;
    opened.type("7");
    opened.click(QStringLiteral("unitKey_GHz"));
    QCOMPARE(opened.text("limitsLabel"), QStringLiteral("The maximum is 6 GHz."));
    QVERIFY(opened.keyboard->findChild<QLabel*>(QStringLiteral("limitsLabel"))->property("refused").toBool());
    QCOMPARE(opened.shown(), QStringLiteral("7 GHz"));
    QVERIFY(opened.keyboard->isVisible());
    QVERIFY(opened.committed.isEmpty() && opened.results.isEmpty());
    opened.press(Qt::Key_Backspace);
    QCOMPARE(opened.text("limitsLabel"), QStringLiteral("9 kHz to 6 GHz"));
    opened.type("5");
    opened.press(Qt::Key_Return);
    QVERIFY(opened.hasCommitted(5e9));
}

void TouchNumKeyboardTest::physicalKeys()
{
    Opened opened;
    QVERIFY(opened.isReady());
    opened.press(Qt::Key_Up);
    QCOMPARE(opened.shown(), QStringLiteral("2.401 GHz"));
    opened.press(Qt::Key_Down);
    opened.press(Qt::Key_Down);
    QCOMPARE(opened.shown(), QStringLiteral("2.399 GHz"));
    opened.type("12,5");
    opened.press(Qt::Key_Left);
    opened.press(Qt::Key_Backspace);
    opened.press(Qt::Key_Home);
    opened.press(Qt::Key_Delete);
    opened.press(Qt::Key_End);
    opened.type("0");
    QCOMPARE(opened.text("valueLabel"), QStringLiteral("250"));
    opened.press(Qt::Key_A, Qt::ControlModifier);
    opened.type("1.5e3");
    QCOMPARE(opened.text("valueLabel"), QStringLiteral("1.5e3"));
    opened.click(QStringLiteral("unitKey_MHz"));
    QVERIFY(opened.hasCommitted(1.5e9));
}

void TouchNumKeyboardTest::unitLetterEnds()
{
    Opened opened;
    opened.type("2.45g");
    QVERIFY(opened.hasCommitted(2.45e9));
}

void TouchNumKeyboardTest::escapeAndCancelReject()
{
    Opened escaped;
    escaped.type("5");
    escaped.press(Qt::Key_Escape);
    QVERIFY(escaped.wasRejected());
    QCOMPARE(escaped.adapter->currentValue(), 2.4e9);

    Opened cancelled;
    cancelled.type("5");
    cancelled.click(QStringLiteral("keyCancel"));
    QVERIFY(cancelled.wasRejected());

    Opened closed;
    closed.keyboard->close();
    QVERIFY(closed.wasRejected());
}

void TouchNumKeyboardTest::copyAndPaste()
{
    QClipboard* const clipboard = QGuiApplication::clipboard();
    Opened opened;
    QVERIFY(opened.isReady());
    opened.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard->text(), QStringLiteral("2.4 GHz"));
    clipboard->setText(QStringLiteral(" 915 MHz\n"));
    opened.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(opened.shown(), QStringLiteral("915 MHz"));
    clipboard->setText(QStringLiteral("nonsense"));
    opened.press(Qt::Key_Insert, Qt::ShiftModifier);
    QCOMPARE(opened.shown(), QStringLiteral("915 MHz"));
    QVERIFY(opened.keyboard->findChild<QLabel*>(QStringLiteral("limitsLabel"))->property("refused").toBool());
    QVERIFY(opened.committed.isEmpty());
    opened.press(Qt::Key_Enter);
    QVERIFY(opened.hasCommitted(915e6));
}

void TouchNumKeyboardTest::enterAcceptsAndSpacePressesTheFocusedKey()
{
    Opened opened;
    QVERIFY(opened.isReady());
    opened.key(QStringLiteral("key7"))->setFocus(Qt::TabFocusReason);
    opened.press(Qt::Key_Space);
    QCOMPARE(opened.shown(), QStringLiteral("7 GHz"));
    opened.press(Qt::Key_Backspace);
    opened.type("5");
    opened.press(Qt::Key_Up);
    QCOMPARE(opened.shown(), QStringLiteral("5.001 GHz"));
    opened.press(Qt::Key_Return);
    QVERIFY(opened.hasCommitted(5.001e9));
}

void TouchNumKeyboardTest::heldEnterIsIgnored()
{
    Opened opened;
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QCoreApplication::sendEvent(opened.focused(), &held);
    QVERIFY(opened.committed.isEmpty() && opened.results.isEmpty());
    opened.press(Qt::Key_Return);
    QVERIFY(opened.hasCommitted(2.4e9));
}

void TouchNumKeyboardTest::commitsOnce_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("enter twice") << 0;
    QTest::newRow("double click on a unit key") << 1;
    QTest::newRow("enter and click") << 2;
    QTest::newRow("click and escape") << 3;
}

void TouchNumKeyboardTest::commitsOnce()
{
    QFETCH(const int, way);
    Opened opened;
    QWidget* const focused = opened.focused();
    QAbstractButton* const unit = opened.key(QStringLiteral("unitKey_GHz"));
    opened.type("5");
    switch (way) {
    case 0:
        QTest::keyClick(focused, Qt::Key_Return);
        QTest::keyClick(focused, Qt::Key_Return);
        break;
    case 1:
        QTest::mouseClick(unit, Qt::LeftButton);
        QTest::mouseDClick(unit, Qt::LeftButton);
        break;
    case 2:
        QTest::keyClick(focused, Qt::Key_Enter);
        unit->click();
        break;
    default:
        unit->click();
        QTest::keyClick(focused, Qt::Key_Escape);
        break;
    }
    QVERIFY(opened.hasCommitted(5e9));
}

void TouchNumKeyboardTest::survivesItsOwnEndInTheCommit_data()
{
    QTest::addColumn<bool>("deleted");
    QTest::newRow("rejected") << false;
    QTest::newRow("deleted") << true;
}

void TouchNumKeyboardTest::survivesItsOwnEndInTheCommit()
{
    QFETCH(const bool, deleted);
    Opened opened;
    QObject::connect(opened.adapter, &BaseUnitAdapter::editingFinished, opened.keyboard.data(), [&] {
        if (deleted) {
            delete opened.keyboard.data();
        } else {
            opened.keyboard->reject();
        }
    });
    opened.press(Qt::Key_Return);
    QCOMPARE(opened.committed, QVector<double>{2.4e9});
    QCOMPARE(opened.results.size(), deleted ? 0 : 1);
}

QTEST_MAIN(TouchNumKeyboardTest)

#include "tst_touch_num_keyboard.moc"
