#include "controls/OpenedKeyboard.h"

#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>

using namespace OpenedKeyboard;

// What only a real display has.
class KeyboardDesktopTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void middleClickPastesTheSelection();
    void takesTheKeyboardFromAnAlwaysOnTopWindow();
};

// When a modal window closes, Qt asks which window is under the pointer; that of a window that the window
// manager is just taking apart gives a warning.
void KeyboardDesktopTest::initTestCase()
{
    QCursor::setPos(1, 1);
}

void KeyboardDesktopTest::middleClickPastesTheSelection()
{
    QClipboard* const clipboard = QGuiApplication::clipboard();
    QVERIFY(clipboard->supportsSelection());
    clipboard->setText(QStringLiteral("915 MHz"), QClipboard::Selection);
    const Opened opened;
    QVERIFY(opened.isReady());
    QTest::mouseClick(opened.keyboard->findChild<QWidget*>(QStringLiteral("valueLine")), Qt::MiddleButton);
    QCOMPARE(opened.shown(), QStringLiteral("915 MHz"));
    QVERIFY(opened.committed.isEmpty());
}

void KeyboardDesktopTest::takesTheKeyboardFromAnAlwaysOnTopWindow()
{
    QWidget bar(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    bar.setGeometry(100, 100, 134, 400);
    bar.show();
    bar.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    {
        TouchNumKeyboard keyboard(std::make_unique<BaseUnitAdapter>(Quantities::frequency()),
                                  frequencyEntry(), &bar);
        keyboard.open();
        QVERIFY(QTest::qWaitForWindowActive(&keyboard));
        QVERIFY(!keyboard.geometry().intersects(bar.geometry()));
        QTRY_COMPARE(QGuiApplication::focusWindow(), keyboard.windowHandle());
        keyboard.reject();
    }
    QTRY_COMPARE(QGuiApplication::focusWindow(), bar.windowHandle());
}

QTEST_MAIN(KeyboardDesktopTest)

#include "tst_keyboard_desktop.moc"
