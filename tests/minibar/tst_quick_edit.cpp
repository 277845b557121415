#include "controls/BaseUnitAdapter.h"
#include "controls/LabelButton.h"
#include "controls/TouchNumKeyboard.h"
#include "minibar/BarParts.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QEvent>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using Controls::TouchNumKeyboard;
using Mode = RemoteMiniBarWindow::MiniBarMode;

// Frequency and level typed on the numeric keyboard, from the button to the signal.
class TestQuickEdit : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void typedValue_data();
    void typedValue();
    void configuration_data();
    void configuration();
    void rejectedSendsNothing();
    void unitKeyEndsTheEntry();
    void collapsedPageOpensItToo();
    void secondEditReplacesTheFirst();
    void hidingEndsTheEdit();
    void exitEndsTheEdit();
    void destroyedKeyboardEndsTheEdit();
    void deactivationKeepsTheBarWhileTheKeyboardIsOpen();
    void snapshotWhileOpenLeavesTheKeyboard();

private:
    LabelButton* button(const char* text) const;
    TouchNumKeyboard* keyboard() const { return BarParts::keyboard(*m_window); }
    void type(const char* keys);

    std::unique_ptr<RemoteMiniBarWindow> m_window;
    std::unique_ptr<QSignalSpy> m_center;
    std::unique_ptr<QSignalSpy> m_level;
};

void TestQuickEdit::init()
{
    m_window = std::make_unique<RemoteMiniBarWindow>();
    m_center = std::make_unique<QSignalSpy>(m_window.get(), &RemoteMiniBarWindow::centerChangeRequested);
    m_level = std::make_unique<QSignalSpy>(m_window.get(), &RemoteMiniBarWindow::levelChangeRequested);
    m_window->applySnapshot(
        QJsonDocument::fromJson(
            R"({"tx":{"centerHz":1.5e9,"centerUnit":"MHz","levelDbm":-7,"levelUnit":"dBm"}})")
            .object());
    m_window->showMiniBar();
    BarParts::click(BarParts::pushButton(BarParts::collapsed(*m_window), "v"));
    QCOMPARE(m_window->mode(), Mode::Expanded);
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestQuickEdit::cleanup()
{
    m_level.reset();
    m_center.reset();
    m_window.reset();
}

LabelButton* TestQuickEdit::button(const char* text) const
{
    const auto buttons = m_window->findChildren<LabelButton*>();
    for (LabelButton* candidate : buttons) {
        if (candidate->isVisible() && candidate->text() == QLatin1String(text))
            return candidate;
    }
    return nullptr;
}

// Types into the open keyboard; '\r' is Enter, '\x1b' Esc.
void TestQuickEdit::type(const char* keys)
{
    QVERIFY(keyboard());
    QVERIFY(QTest::qWaitForWindowActive(keyboard()));
    for (const char* key = keys; *key; ++key) {
        QWidget* target = keyboard()->focusWidget() ? keyboard()->focusWidget() : keyboard();
        if (*key == '\r')
            QTest::keyClick(target, Qt::Key_Return);
        else if (*key == '\x1b')
            QTest::keyClick(target, Qt::Key_Escape);
        else
            QTest::keyClick(target, *key);
    }
}

void TestQuickEdit::typedValue_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<double>("value");

    QTest::newRow("frequency with unit letter") << "Frequency" << QByteArray("2.4g") << 2.4e9;
    QTest::newRow("frequency, Enter takes the shown unit") << "Frequency" << QByteArray("2400\r") << 2.4e9;
    QTest::newRow("frequency, all digits arrive")
        << "Frequency" << QByteArray("2.41234567890123g") << 2412345678.90123;
    QTest::newRow("level") << "Level" << QByteArray("-20\r") << -20.0;
    QTest::newRow("level with decimals") << "Level" << QByteArray("3.25\r") << 3.25;
}

void TestQuickEdit::typedValue()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, keys);
    QFETCH(double, value);
    QTest::mouseClick(this->button(qPrintable(button)), Qt::LeftButton);
    type(keys.constData());
    QTRY_VERIFY(!keyboard());
    const bool frequency = button == QLatin1String("Frequency");
    QCOMPARE((frequency ? *m_center : *m_level).count(), 1);
    QCOMPARE((frequency ? *m_level : *m_center).count(), 0);
    QVERIFY((frequency ? *m_center : *m_level).constFirst().constFirst().toDouble() ==
            value); // to the last bit
    // Nothing is shown before a snapshot confirms it.
    QCOMPARE(this->button("Frequency")->labelText(), QStringLiteral("1.5GHz"));
    QCOMPARE(this->button("Level")->labelText(), QStringLiteral("-7 dBm"));
}

void TestQuickEdit::configuration_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("commitMode");
    QTest::addColumn<double>("afterStepUp");

    QTest::newRow("frequency steps by 1 MHz") << "Frequency" << 1.5e9 << 2 << 1.501e9;
    QTest::newRow("level steps by 5") << "Level" << -7.0 << 0 << -2.0;
}

void TestQuickEdit::configuration()
{
    QFETCH(QString, button);
    QFETCH(double, afterStepUp);
    QTest::mouseClick(this->button(qPrintable(button)), Qt::LeftButton);
    QVERIFY(keyboard());
    QCOMPARE(keyboard()->windowTitle(), button);
    QCOMPARE(keyboard()->windowModality(), Qt::WindowModal);
    const auto* adapter = qobject_cast<Controls::BaseUnitAdapter*>(keyboard()->receiver());
    QVERIFY(adapter);
    QTEST(adapter->currentValue(), "value");
    QTEST(adapter->commitMode(), "commitMode");
    QVERIFY(QTest::qWaitForWindowActive(keyboard()));
    QTest::keyClick(keyboard(), Qt::Key_Up);
    type("\r");
    QCOMPARE(m_center->count() + m_level->count(), 1);
    const QSignalSpy& spy = m_center->isEmpty() ? *m_level : *m_center;
    QCOMPARE(spy.constFirst().constFirst().toDouble(), afterStepUp);
}

void TestQuickEdit::rejectedSendsNothing()
{
    for (const char* name : {"Frequency", "Level"}) {
        QTest::mouseClick(button(name), Qt::LeftButton);
        type("5\x1b");
        QTRY_VERIFY(!keyboard());
    }
    QCOMPARE(m_center->count() + m_level->count(), 0);
}

void TestQuickEdit::unitKeyEndsTheEntry()
{
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    type("868");
    auto* unitKey = keyboard()->findChild<QAbstractButton*>(QStringLiteral("unitKey_MHz"));
    QVERIFY(unitKey);
    QVERIFY(!m_window->geometry().contains(unitKey->mapToGlobal(unitKey->rect().center())));
    QTest::mouseClick(unitKey, Qt::LeftButton);
    QTRY_VERIFY(!keyboard());
    QCOMPARE(m_window->mode(), Mode::Expanded); // a press beside the bar, but on what belongs to it
    QCOMPARE(m_center->count(), 1);
    QCOMPARE(m_center->constFirst().constFirst().toDouble(), 868e6);
}

void TestQuickEdit::collapsedPageOpensItToo()
{
    BarParts::click(BarParts::pushButton(BarParts::expanded(*m_window), "^"));
    QCOMPARE(m_window->mode(), Mode::Collapsed);
    QTest::mouseClick(button("Level"), Qt::LeftButton);
    type("1\r");
    QCOMPARE(m_level->count(), 1);
    QCOMPARE(m_window->mode(), Mode::Collapsed);
}

void TestQuickEdit::secondEditReplacesTheFirst()
{
    LabelButton* level = button("Level");
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    const QPointer<TouchNumKeyboard> first = keyboard();
    level->click(); // past the modal keyboard, as assistive technology does
    QTRY_VERIFY(!first || !first->isVisible());
    QVERIFY(keyboard());
    QCOMPARE(keyboard()->windowTitle(), QStringLiteral("Level"));
    QCOMPARE(m_center->count() + m_level->count(), 0);
    type("2\r");
    QCOMPARE(m_level->count(), 1);
    QCOMPARE(m_center->count(), 0);
}

void TestQuickEdit::hidingEndsTheEdit()
{
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    type("5");
    m_window->hideMiniBar();
    QTRY_VERIFY(!keyboard());
    m_window->showMiniBar();
    QVERIFY(!keyboard());
    QCOMPARE(m_center->count(), 0);
}

void TestQuickEdit::exitEndsTheEdit()
{
    QTest::mouseClick(button("Level"), Qt::LeftButton);
    m_window->prepareForExit();
    QTRY_VERIFY(!keyboard());
    QCOMPARE(m_level->count(), 0);
}

void TestQuickEdit::destroyedKeyboardEndsTheEdit()
{
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    delete keyboard();
    QCOMPARE(m_center->count(), 0);
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    type("1g");
    QCOMPARE(m_center->count(), 1);
}

void TestQuickEdit::deactivationKeepsTheBarWhileTheKeyboardIsOpen()
{
    QEvent deactivate(QEvent::ApplicationDeactivate);
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    QCoreApplication::sendEvent(qApp, &deactivate);
    QCOMPARE(m_window->mode(), Mode::Expanded);
    keyboard()->reject();
    QCoreApplication::sendEvent(qApp, &deactivate); // still within the click that closed it
    QCOMPARE(m_window->mode(), Mode::Expanded);
    QCoreApplication::processEvents();
    QCoreApplication::sendEvent(qApp, &deactivate);
    QCOMPARE(m_window->mode(), Mode::Collapsed);
}

void TestQuickEdit::snapshotWhileOpenLeavesTheKeyboard()
{
    QTest::mouseClick(button("Frequency"), Qt::LeftButton);
    type("3");
    m_window->applySnapshot(QJsonDocument::fromJson(R"({"tx":{"centerHz":9e9}})").object());
    type(".5g");
    QCOMPARE(m_center->count(), 1);
    QCOMPARE(m_center->constFirst().constFirst().toDouble(), 3.5e9);
}

QTEST_MAIN(TestQuickEdit)
#include "tst_quick_edit.moc"
