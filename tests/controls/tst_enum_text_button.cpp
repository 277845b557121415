#include "controls/OpenedList.h"

#include <QAccessible>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <array>
#include <functional>

using OpenedList::Panel;

namespace {

// What an application-wide filter sees of popups.
class PopupWitness final : public QObject
{
public:
    PopupWitness() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto type = event->type();
        const bool wanted = type == QEvent::Show || type == QEvent::Hide || type == QEvent::Close;
        if (wanted && qobject_cast<PopupWidget*>(watched)) {
            seen.append(type);
        }
        return false;
    }
    QVector<QEvent::Type> seen;
};

QAccessibleInterface* accessible(QObject* object)
{
    return QAccessible::queryAccessibleInterface(object);
}

} // namespace

class EnumTextButtonTest final : public QObject
{
    Q_OBJECT

private slots:
    void opens_data();
    void opens();
    void popupIsWhatOthersExpect();
    void standsOnTheScreen_data();
    void standsOnTheScreen();
    void picksOnce_data();
    void picksOnce();
    void picksNothingMore();
    void doubleClickOnAnItem();
    void doubleClickOnTheButton();
    void pressElsewhereOnlyCloses();
    void buttonClosesItsOwnList();
    void disabledItemIsNotPicked();
    void dragPicksWhereItEnds();
    void releaseWithoutPressPicksNothing();
    void escapeCloses();
    void heldKeyPicksNothing();
    void closesWithItsButton_data();
    void closesWithItsButton();
    void survivesItsEndInTheSlot_data();
    void survivesItsEndInTheSlot();
    void filterSeesOrdinaryEvents();
    void emptyOpensNothing();
    void accessibility();
};

void EnumTextButtonTest::opens_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("click") << 0;
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("return") << int(Qt::Key_Return);
    QTest::newRow("enter") << int(Qt::Key_Enter);
}

void EnumTextButtonTest::opens()
{
    QFETCH(const int, key);
    Panel panel;
    QVERIFY(panel.show());
    panel.button->setFocus();
    if (key) {
        panel.key(Qt::Key(key));
    } else {
        panel.clickButton();
    }
    QVERIFY(panel.isOpen());
    QVERIFY(panel.button->isListOpen());
    QVERIFY(panel.button->isChecked()); // seen on the button as long as the list is open
    QCOMPARE(panel.list()->currentIndex().row(), 1);
    QVERIFY(panel.edited().isEmpty());
    panel.key(Qt::Key_Escape);
    QTRY_VERIFY(!panel.isOpen());
    QVERIFY(!panel.button->isChecked());
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::popupIsWhatOthersExpect()
{
    Panel panel;
    QVERIFY(panel.show());
    panel.button->setTitleText(QStringLiteral("Shape of it"));
    QVERIFY(panel.openByClick());
    PopupWidget* const popup = panel.popup();
    QCOMPARE(popup->windowType(), Qt::Popup);
    QCOMPARE(popup->parentWidget(), panel.dialog.get());
    QVERIFY(!popup->testAttribute(Qt::WA_QuitOnClose));
    QCOMPARE(QApplication::activePopupWidget(), popup);
    auto* const title = popup->findChild<QLabel*>(QStringLiteral("popupTitle"));
    QVERIFY(title->isVisible());
    QCOMPARE(title->text(), QStringLiteral("Shape of it"));
    const QRect button(panel.button->mapToGlobal(QPoint(0, 0)), panel.button->size());
    QCOMPARE(popup->x(), button.x());
    QVERIFY(popup->width() >= button.width());
    QVERIFY(popup->y() > button.bottom() && popup->y() < button.bottom() + 8);
    QCOMPARE(panel.list()->height(), 4 * 44);
}

void EnumTextButtonTest::standsOnTheScreen_data()
{
    QTest::addColumn<Qt::Corner>("corner");
    QTest::addColumn<int>("items");
    for (const int items : {3, 200}) {
        QTest::addRow("top left, %d items", items) << Qt::TopLeftCorner << items;
        QTest::addRow("top right, %d items", items) << Qt::TopRightCorner << items;
        QTest::addRow("bottom left, %d items", items) << Qt::BottomLeftCorner << items;
        QTest::addRow("bottom right, %d items", items) << Qt::BottomRightCorner << items;
    }
}

void EnumTextButtonTest::standsOnTheScreen()
{
    QFETCH(const Qt::Corner, corner);
    QFETCH(const int, items);
    QStringList texts{QStringLiteral("An item that is wider than the button that opens the list of it")};
    while (texts.size() < items) {
        texts.append(QString::number(texts.size()));
    }
    Panel panel(texts);
    panel.beneath->hide();
    QVERIFY(panel.show());
    const QRect screen = panel.dialog->screen()->availableGeometry();
    QRect window = panel.dialog->geometry();
    const bool right = corner == Qt::TopRightCorner || corner == Qt::BottomRightCorner;
    const bool bottom = corner == Qt::BottomLeftCorner || corner == Qt::BottomRightCorner;
    window.moveLeft(right ? screen.right() + 1 - window.width() : screen.left());
    window.moveTop(bottom ? screen.bottom() + 1 - window.height() : screen.top());
    panel.button->move(right ? 100 : 0, bottom ? 240 : 0);
    panel.dialog->move(window.topLeft());
    QTRY_COMPARE(panel.dialog->mapToGlobal(QPoint(0, 0)), window.topLeft());
    QVERIFY(panel.openByClick());
    const QRect button(panel.button->mapToGlobal(QPoint(0, 0)), panel.button->size());
    const QRect popup = panel.popup()->geometry();
    QVERIFY(screen.contains(popup));
    QVERIFY(!popup.intersects(button));
    QCOMPARE(popup.top() > button.top(), !bottom);
    QVERIFY(panel.list()->height() <= 8 * 44);
    QVERIFY(popup.width() > button.width());
}

void EnumTextButtonTest::picksOnce_data()
{
    QTest::addColumn<bool>("mouse");
    QTest::addColumn<int>("item");
    for (const bool mouse : {true, false}) {
        QTest::addRow("another, %s", mouse ? "mouse" : "keys") << mouse << 2;
        QTest::addRow("the current one again, %s", mouse ? "mouse" : "keys") << mouse << 1;
    }
}

void EnumTextButtonTest::picksOnce()
{
    QFETCH(const bool, mouse);
    QFETCH(const int, item);
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    int seenInSlot = -1;
    bool openInSlot = true;
    connect(panel.button, &EnumTextButton::currentItemEdited, panel.button, [&] {
        seenInSlot = panel.button->currentEnum();
        QCoreApplication::processEvents(); // as a slot does that opens a dialog
        openInSlot = panel.isOpen();
    });
    if (mouse) {
        panel.clickItem(item);
    } else {
        for (int row = 1; row < item; ++row) {
            panel.key(Qt::Key_Down);
        }
        panel.key(Qt::Key_Return);
    }
    QCOMPARE(panel.edited(), QVector<int>{item});
    QCOMPARE(seenInSlot, item);
    QVERIFY(!openInSlot);
    QVERIFY(!panel.isOpen());
    QCOMPARE(panel.button->currentEnum(), item);
    QCOMPARE(panel.button->labelText(), panel.button->enums().at(item));
    QCOMPARE(panel.pushes->count(), 0);
}

// What is typed or clicked before the list is closed picks nothing more.
void EnumTextButtonTest::picksNothingMore()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    Controls::EnumList* const list = panel.list();
    QTest::keyClick(list, Qt::Key_Return);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(panel.edited(), QVector<int>{1});
    QTRY_VERIFY(!panel.isOpen());
    QCOMPARE(panel.pushes->count(), 0);
    QVERIFY(panel.openByClick()); // another list, another choice
    QTest::keyClick(panel.list(), Qt::Key_Return);
    QCOMPARE(panel.edited(), (QVector<int>{1, 1}));
}

// The second click comes when the list is gone; what is beneath must not take it.
void EnumTextButtonTest::doubleClickOnAnItem()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const QPoint position = panel.itemPosition(2);
    QVERIFY(panel.beneath->geometry().contains(position));
    QTest::mouseDClick(panel.dialog->windowHandle(), Qt::LeftButton, {}, position);
    QCOMPARE(panel.edited(), QVector<int>{2});
    QCOMPARE(panel.pushes->count(), 0);
    QVERIFY(!panel.isOpen());
    panel.click(position);
    QCOMPARE(panel.pushes->count(), 1);
}

void EnumTextButtonTest::doubleClickOnTheButton()
{
    Panel panel;
    QVERIFY(panel.show());
    QTest::mouseDClick(panel.dialog->windowHandle(), Qt::LeftButton, {}, panel.button->geometry().center());
    QVERIFY(panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::pressElsewhereOnlyCloses()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const QPoint elsewhere(panel.beneath->geometry().bottomRight() - QPoint(5, 5));
    panel.click(elsewhere);
    QCoreApplication::processEvents(); // were the press passed on, it would be posted
    QVERIFY(!panel.isOpen());
    QCOMPARE(panel.pushes->count(), 0);
    panel.click(elsewhere);
    QCOMPARE(panel.pushes->count(), 1);
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::buttonClosesItsOwnList()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    panel.clickButton();
    QVERIFY(!panel.isOpen());
    QVERIFY(panel.openByClick());
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::disabledItemIsNotPicked()
{
    Panel panel;
    QVERIFY(panel.show());
    panel.button->setItemEnabled(2, false);
    QVERIFY(panel.openByClick());
    panel.clickItem(2);
    QVERIFY(panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
    panel.key(Qt::Key_Down);
    panel.key(Qt::Key_Space);
    QCOMPARE(panel.edited(), QVector<int>{3});
}

void EnumTextButtonTest::dragPicksWhereItEnds()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    panel.drag(panel.itemPosition(0), QPoint(290, 290));
    QVERIFY(panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
    panel.drag(panel.itemPosition(0), panel.itemPosition(3));
    QCOMPARE(panel.edited(), QVector<int>{3});
}

void EnumTextButtonTest::releaseWithoutPressPicksNothing()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    QTest::mouseRelease(panel.dialog->windowHandle(), Qt::LeftButton, {}, panel.itemPosition(2));
    QVERIFY(panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::escapeCloses()
{
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    panel.key(Qt::Key_Down);
    panel.key(Qt::Key_Escape);
    QVERIFY(!panel.isOpen());
    QVERIFY(panel.dialog->isVisible()); // that key was the list's
    QCOMPARE(panel.button->currentEnum(), 1);
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::heldKeyPicksNothing()
{
    Panel panel;
    QVERIFY(panel.show());
    panel.button->setFocus();
    panel.key(Qt::Key_Return);
    QVERIFY(panel.isOpen());
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QCoreApplication::sendEvent(panel.list(), &repeated);
    QVERIFY(panel.isOpen());
    QVERIFY(panel.edited().isEmpty());
}

void EnumTextButtonTest::closesWithItsButton_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("hidden") << 0;
    QTest::newRow("disabled") << 1;
    QTest::newRow("deleted") << 2;
    QTest::newRow("parent disabled") << 3;
    QTest::newRow("window hidden") << 4;
    QTest::newRow("window deleted") << 5;
}

void EnumTextButtonTest::closesWithItsButton()
{
    QFETCH(const int, what);
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    const QPointer<PopupWidget> popup = panel.popup();
    const std::array<std::function<void()>, 6> ends{
        [&] { panel.button->hide(); }, [&] { panel.button->setEnabled(false); },
        [&] { delete panel.button; },  [&] { panel.dialog->setEnabled(false); },
        [&] { panel.dialog->hide(); }, [&] { panel.dialog.reset(); },
    };
    ends.at(size_t(what))();
    QVERIFY(!popup || !popup->isVisible());
    QTRY_VERIFY(!popup);
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
}

void EnumTextButtonTest::survivesItsEndInTheSlot_data()
{
    QTest::addColumn<bool>("window");
    QTest::addColumn<bool>("mouse");
    for (const bool mouse : {true, false}) {
        QTest::addRow("button, %s", mouse ? "mouse" : "keys") << false << mouse;
        QTest::addRow("window, %s", mouse ? "mouse" : "keys") << true << mouse;
    }
}

// An editor may be rebuilt as an answer to the choice.
void EnumTextButtonTest::survivesItsEndInTheSlot()
{
    QFETCH(const bool, window);
    QFETCH(const bool, mouse);
    Panel panel;
    QVERIFY(panel.show());
    QVERIFY(panel.openByClick());
    connect(panel.button, &EnumTextButton::currentItemEdited, qApp, [&] {
        if (window) {
            panel.dialog.reset();
        } else {
            delete panel.button;
        }
    });
    if (mouse) {
        panel.clickItem(2);
    } else {
        QTest::keyPress(panel.dialog->windowHandle(), Qt::Key_Return);
    }
    QCOMPARE(panel.edits->count(), 1);
    QCOMPARE(panel.dialog == nullptr, window);
    QCoreApplication::processEvents();
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
}

void EnumTextButtonTest::filterSeesOrdinaryEvents()
{
    Panel panel;
    QVERIFY(panel.show());
    PopupWitness witness;
    QVERIFY(panel.openByClick());
    QCOMPARE(witness.seen, QVector<QEvent::Type>{QEvent::Show});
    panel.popup()->close();
    QCOMPARE(witness.seen, (QVector<QEvent::Type>{QEvent::Show, QEvent::Close, QEvent::Hide}));
    witness.seen.clear();
    QVERIFY(panel.openByClick());
    delete panel.popup();
    QCOMPARE(witness.seen, (QVector<QEvent::Type>{QEvent::Show, QEvent::Hide}));
    QVERIFY(!panel.button->isListOpen());
    QVERIFY(!panel.button->isChecked());
    QVERIFY(panel.openByClick());
}

void EnumTextButtonTest::emptyOpensNothing()
{
    Panel panel{QStringList()};
    QVERIFY(panel.show());
    panel.clickButton();
    QVERIFY(!panel.isOpen());
    QVERIFY(!panel.button->isChecked());
}

void EnumTextButtonTest::accessibility()
{
    Panel panel;
    QVERIFY(panel.show());
    panel.button->setItemEnabled(3, false);
    QAccessibleInterface* const seen = accessible(panel.button);
    QCOMPARE(seen->role(), QAccessible::ComboBox);
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Shape"));
    QCOMPARE(seen->text(QAccessible::Value), QStringLiteral("Square"));
    QVERIFY(seen->state().expandable && seen->state().collapsed && !seen->state().checkable);
    seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(panel.isOpen());
    QVERIFY(seen->state().expanded && !seen->state().collapsed);
    QAccessibleInterface* const list = accessible(panel.list());
    QCOMPARE(list->role(), QAccessible::List);
    QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Shape"));
    QCOMPARE(list->childCount(), 4);
    QCOMPARE(list->child(1)->text(QAccessible::Name), QStringLiteral("Square"));
    QVERIFY(list->child(1)->state().checked && !list->child(2)->state().checked);
}

QTEST_MAIN(EnumTextButtonTest)

#include "tst_enum_text_button.moc"
