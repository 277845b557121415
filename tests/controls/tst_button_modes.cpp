#include "controls/EnumTextButton.h"
#include "controls/ThemeManager.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using Controls::ThemeManager;

namespace {

constexpr char popupSheet[] = "QWidget#popup LabelButton { background-color: #010101; border: none; }"
                              "QWidget#popup LabelButton:checked { background-color: #020202; }";
constexpr char applicationSheet[] = "LabelButton:pressed { background-color: #030303; }"
                                    "QWidget#popup LabelButton { qproperty-pressedColor: #040404; }";

// A window whose own style sheet says what its buttons look like.
struct Popup
{
    Popup()
    {
        window.setObjectName(QStringLiteral("popup"));
        window.setStyleSheet(QLatin1String(popupSheet));
        window.resize(300, 100);
        button = new LabelButton(&window);
        button->setText(QStringLiteral("Carrier Spacing"));
        button->setLabelText(QStringLiteral("30kHz"));
        button->setGeometry(0, 0, 200, 60);
    }
    [[nodiscard]] bool show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    // Where no text is.
    [[nodiscard]] QColor background() { return window.grab().toImage().pixelColor(100, 4); }

    QWidget window;
    LabelButton* button;
};

} // namespace

// What the buttons are asked for by forms: values that are only shown, and a popup that styles its buttons.
class ButtonModesTest final : public QObject
{
    Q_OBJECT

private slots:
    void valueButtonsAreEquallyHigh();
    void readOnlyButtonTakesNoInput();
    void readOnlyButtonIsAFrame();
    void readOnlyButtonTellsWhatIsCut();
    void readOnlyIsSeenByAssistivePrograms();
    void readOnlyCanBeTakenBack();
    void pressedColorReachesAStyledPopup();
};

void ButtonModesTest::valueButtonsAreEquallyHigh()
{
    LabelButton value;
    EnumTextButton choice;
    for (LabelButton* button : {&value, static_cast<LabelButton*>(&choice)}) {
        QCOMPARE(button->sizeHint().height(), 60);
        button->setText(QStringLiteral("Rate"));
        button->setLabelText(QStringLiteral("2.5kHz"));
        QCOMPARE(button->sizeHint().height(), 60);
    }
}

void ButtonModesTest::readOnlyButtonTakesNoInput()
{
    Popup popup;
    popup.button->setReadOnly(true);
    QVERIFY(popup.show());
    QSignalSpy pressed(popup.button, &QAbstractButton::pressed);
    QSignalSpy clicked(popup.button, &QAbstractButton::clicked);
    const QImage before = popup.window.grab().toImage();
    QTest::mouseMove(popup.button);
    QTest::mousePress(popup.button, Qt::LeftButton);
    QCOMPARE(popup.window.grab().toImage(), before);
    QTest::mouseRelease(popup.button, Qt::LeftButton);
    QCOMPARE(popup.button->focusPolicy(), Qt::NoFocus);
    QVERIFY(!popup.button->hasFocus());
    QCOMPARE(pressed.count() + clicked.count(), 0);
}

void ButtonModesTest::readOnlyButtonIsAFrame()
{
    Popup popup;
    popup.button->setReadOnly(true);
    QVERIFY(popup.show());
    for (ThemeManager::Theme theme : {ThemeManager::Dark, ThemeManager::Light}) {
        ThemeManager::instance().setTheme(theme);
        const QImage picture = popup.window.grab().toImage();
        for (const QPoint& corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 59), QPoint(199, 59)}) {
            QCOMPARE(picture.pixelColor(corner), ThemeManager::color(ThemeManager::Border, theme));
        }
        QCOMPARE(picture.pixelColor(100, 4), ThemeManager::color(ThemeManager::Surface, theme));
    }
}

void ButtonModesTest::readOnlyButtonTellsWhatIsCut()
{
    Popup popup;
    popup.button->setReadOnly(true);
    popup.button->resize(80, 60);
    QVERIFY(popup.show());
    QCOMPARE(popup.button->toolTip(), QStringLiteral("Carrier Spacing"));
}

void ButtonModesTest::readOnlyIsSeenByAssistivePrograms()
{
    Popup popup;
    QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(popup.button);
    QVERIFY(seen && seen->actionInterface());
    const QString press = QAccessibleActionInterface::pressAction();
    QVERIFY(!seen->state().readOnly);
    QVERIFY(seen->actionInterface()->actionNames().contains(press));
    popup.button->setReadOnly(true);
    QVERIFY(seen->state().readOnly);
    QVERIFY(!seen->actionInterface()->actionNames().contains(press));
    QCOMPARE(seen->text(QAccessible::Description), QStringLiteral("30kHz"));
}

void ButtonModesTest::readOnlyCanBeTakenBack()
{
    Popup popup;
    popup.button->setReadOnly(true);
    popup.button->setReadOnly(false);
    QVERIFY(popup.show());
    QSignalSpy clicked(popup.button, &QAbstractButton::clicked);
    QTest::mouseClick(popup.button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(popup.button->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(popup.background(), QColor(1, 1, 1));
}

void ButtonModesTest::pressedColorReachesAStyledPopup()
{
    Popup popup;
    qApp->setStyleSheet(QLatin1String(applicationSheet));
    popup.button->setCheckable(true);
    QVERIFY(popup.show());
    QCOMPARE(popup.background(), QColor(1, 1, 1));
    QTest::mousePress(popup.button, Qt::LeftButton);
    QCOMPARE(popup.background(), QColor(4, 4, 4));
    QTest::mouseRelease(popup.button, Qt::LeftButton);
    QCOMPARE(popup.background(), QColor(2, 2, 2));
    qApp->setStyleSheet({});
}

QTEST_MAIN(ButtonModesTest)

#include "tst_button_modes.moc"
