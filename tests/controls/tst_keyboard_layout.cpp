#include "controls/Keypad.h"
#include "controls/OpenedKeyboard.h"

#include <QAccessible>
#include <QSet>

using namespace OpenedKeyboard;

Q_DECLARE_METATYPE(Controls::Unit)

class KeyboardLayoutTest final : public QObject
{
    Q_OBJECT

private slots:
    void singleUnitHasOneTallKey();
    void plainNumberHasEnter();
    void keysAreLargeEnoughAndApart_data();
    void keysAreLargeEnoughAndApart();
    void lowScreenGetsLowerKeys_data();
    void lowScreenGetsLowerKeys();
    void tabReachesEveryKey();
    void longNumberIsNotCut();
    void longLabelsAreNotCutSilently();
    void clickSetsTheCursor();
    void repeatingKeys();
    void accessibility();
    void aboveOtherWindows();
};

void KeyboardLayoutTest::singleUnitHasOneTallKey()
{
    NumericEntry entry;
    entry.value = -20.0;
    Opened opened(entry, Quantities::level());
    QVERIFY(!opened.key(QStringLiteral("keyEnter")));
    QVERIFY(!opened.key(QStringLiteral("keyStepUp")));
    const QAbstractButton* const unit = opened.key(QStringLiteral("unitKey_dBm"));
    QVERIFY(unit->height() > 4 * opened.key(QStringLiteral("key7"))->height());
    opened.click(QStringLiteral("keySign"));
    opened.click(QStringLiteral("unitKey_dBm"));
    QVERIFY(opened.hasCommitted(20.0));
}

void KeyboardLayoutTest::plainNumberHasEnter()
{
    NumericEntry entry;
    entry.value = 12.0;
    entry.step = 2.0;
    Opened opened(entry, Quantities::plain());
    QCOMPARE(opened.text("unitLabel"), QString());
    QCOMPARE(opened.text("limitsLabel"), QString());
    opened.click(QStringLiteral("keyStepUp"));
    opened.click(QStringLiteral("keyEnter"));
    QVERIFY(opened.hasCommitted(14.0));
}

void KeyboardLayoutTest::keysAreLargeEnoughAndApart_data()
{
    QTest::addColumn<QVector<Controls::Unit>>("units");
    QTest::addColumn<bool>("withStep");
    const std::pair<const char*, QVector<Controls::Unit>> quantities[] = {
        {"frequency", Quantities::frequency()},
        {"time", Quantities::time()},
        {"level", Quantities::level()},
        {"plain", Quantities::plain()}};
    for (const auto& [name, units] : quantities) {
        QTest::addRow("%s with step", name) << units << true;
        QTest::addRow("%s", name) << units << false;
    }
}

void KeyboardLayoutTest::keysAreLargeEnoughAndApart()
{
    QFETCH(const QVector<Controls::Unit>, units);
    QFETCH(const bool, withStep);
    NumericEntry entry;
    entry.title = QStringLiteral("Title");
    entry.step = withStep ? std::optional<double>(0.0015) : std::nullopt;
    Opened opened(entry, units);
    const auto keys = opened.keyboard->findChildren<QAbstractButton*>();
    QCOMPARE(keys.size(), 1 + 10 + 4 + (withStep ? 2 : 0) + (units.size() == 1 ? 1 : units.size() + 1));
    const auto place = [&](const QWidget* key) {
        return QRect(key->mapTo(opened.keyboard, QPoint(0, 0)), key->size());
    };
    for (const QAbstractButton* key : keys) {
        const QRect rect = place(key);
        QVERIFY2(rect.width() >= 44 && rect.height() >= 44, qPrintable(key->objectName()));
        QVERIFY2(opened.keyboard->rect().adjusted(8, 8, -8, -8).contains(rect),
                 qPrintable(key->objectName()));
        QVERIFY2(!key->accessibleName().isEmpty(), qPrintable(key->objectName()));
        for (const QAbstractButton* other : keys) {
            const bool apart = other == key || !rect.adjusted(-3, -3, 3, 3).intersects(place(other));
            QVERIFY2(apart, qPrintable(QString(key->objectName() + QLatin1Char(' ') + other->objectName())));
        }
    }
}

void KeyboardLayoutTest::lowScreenGetsLowerKeys_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<int>("height");
    QTest::newRow("more than enough") << 500 << 318;
    QTest::newRow("just enough") << 318 << 318;
    QTest::newRow("one pixel too few") << 317 << 312;
    QTest::newRow("half a small screen") << 238 << 234;
    QTest::newRow("too low for any finger") << 100 << 222;
}

void KeyboardLayoutTest::lowScreenGetsLowerKeys()
{
    QFETCH(const int, room);
    QFETCH(const int, height);
    Controls::Keypad keypad(Quantities::frequency(), QStringLiteral("1 MHz"), nullptr);
    keypad.setLargestHeight(room);
    QCOMPARE(keypad.height(), height);
    const auto keys = keypad.findChildren<QAbstractButton*>();
    QCOMPARE(keys.size(), 21);
    for (const QAbstractButton* key : keys) {
        QVERIFY2(keypad.rect().contains(key->geometry()), qPrintable(key->objectName()));
        for (const QAbstractButton* other : keys)
            QVERIFY2(other == key || !other->geometry().intersects(key->geometry()),
                     qPrintable(key->objectName()));
    }
}

void KeyboardLayoutTest::tabReachesEveryKey()
{
    NumericEntry entry = frequencyEntry();
    entry.minimum = -6e9; // no key is off
    Opened opened(entry);
    QVERIFY(opened.isReady());
    QSet<QString> reached;
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(opened.focused(), Qt::Key_Tab);
        reached.insert(opened.focused()->objectName());
    }
    const auto keys = opened.keyboard->findChildren<QAbstractButton*>();
    for (const QAbstractButton* key : keys) {
        QVERIFY2(reached.contains(key->objectName()), qPrintable(key->objectName()));
    }
    QCOMPARE(opened.shown(), QStringLiteral("2.4 GHz"));
}

void KeyboardLayoutTest::longNumberIsNotCut()
{
    Opened opened;
    opened.type("123456789012345678901234");
    auto* const label = opened.keyboard->findChild<QLabel*>(QStringLiteral("valueLabel"));
    QCOMPARE(label->text().size(), 24);
    // Left of the number stands nothing but background.
    const QImage image = label->grab().toImage();
    for (int y = 0; y < image.height(); ++y) {
        QCOMPARE(image.pixelColor(0, y), image.pixelColor(0, 0));
    }
    opened.type("5");
    QCOMPARE(opened.text("limitsLabel"), QStringLiteral("No more than 24 characters."));
}

void KeyboardLayoutTest::longLabelsAreNotCutSilently()
{
    NumericEntry entry = frequencyEntry();
    entry.title = QStringLiteral("Frequency step of the second carrier of the lower band, ").repeated(3);
    entry.step = 1234567890.123;
    entry.maximum = 1234567890123.456;
    const Opened opened(entry);
    const QString step = QStringLiteral("1.234567890123 GHz");
    const auto keys = opened.keyboard->findChildren<QAbstractButton*>();
    int shortened = 0;
    for (const QAbstractButton* key : keys) {
        QVERIFY(key->fontMetrics().horizontalAdvance(key->text()) <= key->width());
        shortened += key->toolTip().endsWith(step) ? 1 : 0;
    }
    QCOMPARE(shortened, 2);
    QCOMPARE(opened.keyboard->findChild<QLabel*>(QStringLiteral("titleLabel"))->toolTip(), entry.title);
    QCOMPARE(opened.keyboard->width(), Opened().keyboard->width());
}

void KeyboardLayoutTest::clickSetsTheCursor()
{
    Opened opened;
    auto* const line = opened.keyboard->findChild<QWidget*>(QStringLiteral("valueLine"));
    QTest::mouseClick(line, Qt::LeftButton, {}, QPoint(2, line->height() / 2));
    opened.type("1");
    QCOMPARE(opened.shown(), QStringLiteral("12.4 GHz"));
    const QWidget* const number = line->findChild<QWidget*>(QStringLiteral("valueLabel"));
    QTest::mouseClick(line, Qt::LeftButton, {}, number->geometry().center() + QPoint(number->width() / 2, 0));
    opened.press(Qt::Key_Backspace);
    QCOMPARE(opened.shown(), QStringLiteral("12. GHz"));
    QTest::mouseDClick(line, Qt::LeftButton);
    opened.type("3");
    QCOMPARE(opened.shown(), QStringLiteral("3 GHz"));
}

void KeyboardLayoutTest::repeatingKeys()
{
    const Opened opened;
    const auto keys = opened.keyboard->findChildren<QAbstractButton*>();
    QSet<QString> repeating;
    for (const QAbstractButton* key : keys) {
        if (key->autoRepeat()) {
            repeating.insert(key->objectName());
        }
    }
    const QSet<QString> expected = {QStringLiteral("keyBackspace"), QStringLiteral("keyStepDown"),
                                    QStringLiteral("keyStepUp")};
    QCOMPARE(repeating, expected);
}

void KeyboardLayoutTest::accessibility()
{
    Opened opened;
    auto* const line = opened.keyboard->findChild<QWidget*>(QStringLiteral("valueLine"));
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(line);
    QVERIFY(seen && seen->textInterface());
    QCOMPARE(seen->role(), QAccessible::EditableText);
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Frequency"));
    QCOMPARE(seen->text(QAccessible::Value), QStringLiteral("2.4 GHz"));
    QCOMPARE(seen->text(QAccessible::Description), QStringLiteral("9 kHz to 6 GHz"));
    QCOMPARE(seen->textInterface()->text(0, seen->textInterface()->characterCount()),
             QStringLiteral("2.4 GHz"));
    opened.type("7");
    opened.press(Qt::Key_Return);
    QCOMPARE(seen->text(QAccessible::Value), QStringLiteral("7 GHz"));
    QCOMPARE(seen->text(QAccessible::Description), QStringLiteral("The maximum is 6 GHz."));
    const auto nameOf = [&](const char* key) {
        return QAccessible::queryAccessibleInterface(opened.key(QLatin1String(key)))->text(QAccessible::Name);
    };
    QCOMPARE(nameOf("key7"), QStringLiteral("7"));
    QCOMPARE(nameOf("unitKey_GHz"), QStringLiteral("GHz"));
    QCOMPARE(nameOf("keyBackspace"), QStringLiteral("Backspace"));
    QCOMPARE(nameOf("keyStepUp"), QStringLiteral("Step up 1 MHz"));
    QCOMPARE(nameOf("keyCancel"), QStringLiteral("Cancel"));
}

void KeyboardLayoutTest::aboveOtherWindows()
{
    const Opened opened;
    const Qt::WindowFlags flags = opened.keyboard->windowFlags();
    QVERIFY(flags & Qt::FramelessWindowHint);
    QVERIFY(flags & Qt::WindowStaysOnTopHint);
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::Dialog);
    QCOMPARE(opened.keyboard->minimumSize(), opened.keyboard->maximumSize());
}

QTEST_MAIN(KeyboardLayoutTest)

#include "tst_keyboard_layout.moc"
