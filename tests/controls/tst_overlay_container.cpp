#include "controls/EnumTextButton.h"
#include "controls/OverlayContainer.h"
#include "controls/PopupWidget.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <QX11Info>
#include <memory>
#include <xcb/xcb.h>

using Controls::OverlayContainer;

namespace {

const QPoint outside(40, 40);
const QPoint onTheLabel(320, 220);
const QPoint onTheButton(320, 280);

// Counts what nobody has consumed.
class Host final : public QWidget
{
public:
    Host()
        : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    {
        setAttribute(Qt::WA_AcceptTouchEvents);
        setAttribute(Qt::WA_TranslucentBackground);
        setAttribute(Qt::WA_NoSystemBackground);
    }
    int unconsumed = 0;

protected:
    bool event(QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::TouchBegin:
        case QEvent::Wheel:
            ++unconsumed;
            break;
        default:
            break;
        }
        return QWidget::event(event);
    }
};

// Announces a compositing manager as one does, without drawing anything.
class Announcement final
{
public:
    Announcement() { own(xcb_window_t(m_owner.winId())); }
    ~Announcement() { own(XCB_WINDOW_NONE); }
    Q_DISABLE_COPY(Announcement)

private:
    static void own(xcb_window_t window)
    {
        xcb_connection_t* const x = QX11Info::connection();
        const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(QX11Info::appScreen());
        const auto cookie = xcb_intern_atom(x, false, uint16_t(name.size()), name.constData());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&free)> atom(
            xcb_intern_atom_reply(x, cookie, nullptr), &free);
        xcb_set_selection_owner(x, window, atom->atom, XCB_CURRENT_TIME);
        xcb_flush(x);
    }

    QWidget m_owner;
};

struct Stage
{
    Stage()
    {
        dialog = new QDialog;
        label = new QLabel(dialog);
        label->setGeometry(0, 0, 300, 50);
        button = new QPushButton(dialog);
        button->setGeometry(0, 50, 300, 100);
        container = new OverlayContainer(&host);
        container->setBlocksOutsideInput(true);
        container->setOutsideInputHandler([this] { ++presses; });
    }
    ~Stage() { delete dialog; }
    Q_DISABLE_COPY(Stage)

    // In the order in which a popup is opened.
    void open()
    {
        host.winId();
        host.setGeometry(host.screen()->geometry());
        dialog->resize(300, 150);
        dialog->move(200, 200);
        container->setActiveDialog(dialog);
        host.show();
        host.raise();
        container->prepareForShow();
        dialog->show();
        dialog->raise();
    }
    [[nodiscard]] bool show()
    {
        open();
        return QTest::qWaitForWindowExposed(&host);
    }
    void click(const QPoint& position)
    {
        QTest::mouseClick(host.windowHandle(), Qt::LeftButton, {}, position);
    }
    void tap(const QPoint& position)
    {
        static QTouchDevice* const screen = QTest::createTouchDevice();
        QTest::touchEvent(host.windowHandle(), screen).press(0, position, &host);
        QTest::touchEvent(host.windowHandle(), screen).release(0, position, &host);
    }
    void wheel(const QPoint& position)
    {
        QWheelEvent event(position, host.mapToGlobal(position), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&host, &event);
    }

    Host host;
    QPointer<QDialog> dialog;
    QLabel* label;
    QPushButton* button;
    OverlayContainer* container;
    int presses = 0;
};

} // namespace

class OverlayContainerTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void dialogKeepsItsPlace_data();
    void dialogKeepsItsPlace();
    void pressesOutside_data();
    void pressesOutside();
    void pressesInsideAreUntouched_data();
    void pressesInsideAreUntouched();
    void notBlockingConsumesNothing();
    void handlerMayEndIt_data();
    void handlerMayEndIt();
    void escapeTakesTheHostAlong();
    void hostMayHideFirst();
    void openListClosesBeforeTheHandlerIsCalled();
    void withoutCompositingOnlyTheDialogIsThere();
    void compositingManagerComesAndGoes();
};

void OverlayContainerTest::initTestCase()
{
    QVERIFY(QX11Info::isPlatformX11());
    QVERIFY(!QX11Info::isCompositingManagerRunning());
}

void OverlayContainerTest::dialogKeepsItsPlace_data()
{
    QTest::addColumn<bool>("wasWindow");
    QTest::newRow("new") << false;
    QTest::newRow("was a window of its own") << true;
}

void OverlayContainerTest::dialogKeepsItsPlace()
{
    QFETCH(const bool, wasWindow);
    Stage stage;
    if (wasWindow) {
        stage.dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(stage.dialog));
    }
    QVERIFY(stage.show());
    QCOMPARE(stage.container->activeDialog(), stage.dialog.data());
    QCOMPARE(stage.dialog->parentWidget(), &stage.host);
    QVERIFY(!stage.dialog->isWindow());
    QCOMPARE(stage.dialog->geometry(), QRect(200, 200, 300, 150));
    QVERIFY(stage.dialog->isVisible());
    stage.dialog->hide();
    stage.container->setActiveDialog(nullptr);
    QCOMPARE(stage.container->activeDialog(), nullptr);
    QCOMPARE(stage.dialog->parentWidget(), &stage.host);
    stage.open(); // as often as the user likes
    QVERIFY(stage.dialog->isVisible());
    QCOMPARE(stage.dialog->geometry(), QRect(200, 200, 300, 150));
}

void OverlayContainerTest::pressesOutside_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<int>("presses");
    QTest::newRow("click") << 0 << 1;
    QTest::newRow("right click") << 1 << 1;
    QTest::newRow("double click") << 2 << 2;
    QTest::newRow("touch") << 3 << 1;
    QTest::newRow("wheel") << 4 << 0;
    QTest::newRow("release alone") << 5 << 0;
}

void OverlayContainerTest::pressesOutside()
{
    QFETCH(const int, what);
    QFETCH(const int, presses);
    Stage stage;
    QVERIFY(stage.show());
    QWindow* const window = stage.host.windowHandle();
    switch (what) {
    case 0:
        stage.click(outside);
        break;
    case 1:
        QTest::mouseClick(window, Qt::RightButton, {}, outside);
        break;
    case 2:
        QTest::mouseDClick(window, Qt::LeftButton, {}, outside);
        break;
    case 3:
        stage.tap(outside);
        break;
    case 4:
        stage.wheel(outside);
        break;
    default:
        QTest::mouseRelease(window, Qt::LeftButton, {}, outside);
        break;
    }
    QCOMPARE(stage.presses, presses);
    QCOMPARE(stage.host.unconsumed, 0);
    QVERIFY(stage.dialog->isVisible());
}

void OverlayContainerTest::pressesInsideAreUntouched_data()
{
    QTest::addColumn<bool>("touch");
    QTest::newRow("mouse") << false;
    QTest::newRow("touch") << true;
}

void OverlayContainerTest::pressesInsideAreUntouched()
{
    QFETCH(const bool, touch);
    Stage stage;
    QVERIFY(stage.show());
    QSignalSpy clicks(stage.button, &QPushButton::clicked);
    const auto press = [&](const QPoint& position) { touch ? stage.tap(position) : stage.click(position); };
    press(onTheButton);
    QCOMPARE(clicks.count(), 1);
    press(onTheLabel); // nobody there wants it
    stage.wheel(onTheLabel);
    QCOMPARE(stage.presses, 0);
    press(outside);
    QCOMPARE(stage.presses, 1);
}

void OverlayContainerTest::notBlockingConsumesNothing()
{
    const Announcement composited;
    QTRY_VERIFY(QX11Info::isCompositingManagerRunning());
    Stage stage;
    stage.container->setBlocksOutsideInput(false);
    QVERIFY(stage.show());
    QCOMPARE(stage.host.mask(), QRegion(200, 200, 300, 150));
    stage.click(outside);
    QCOMPARE(stage.presses, 0);
    QCOMPARE(stage.host.unconsumed, 2);
    stage.container->setBlocksOutsideInput(true);
    QVERIFY(stage.host.mask().isEmpty());
}

void OverlayContainerTest::handlerMayEndIt_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<bool>("touch");
    for (const bool touch : {false, true}) {
        QTest::addRow("hides everything, %s", touch ? "touch" : "mouse") << 0 << touch;
        QTest::addRow("deletes the dialog, %s", touch ? "touch" : "mouse") << 1 << touch;
        QTest::addRow("replaces itself, %s", touch ? "touch" : "mouse") << 2 << touch;
    }
}

void OverlayContainerTest::handlerMayEndIt()
{
    QFETCH(const int, what);
    QFETCH(const bool, touch);
    Stage stage;
    QVERIFY(stage.show());
    stage.container->setOutsideInputHandler([&stage, what] {
        ++stage.presses;
        if (what == 0) {
            stage.dialog->hide();
            stage.container->setActiveDialog(nullptr);
            stage.host.hide();
        } else if (what == 1) {
            delete stage.dialog;
        } else {
            stage.container->setOutsideInputHandler({});
        }
        ++stage.presses; // what the handler holds is still there
    });
    touch ? stage.tap(outside) : stage.click(outside);
    QCOMPARE(stage.presses, 2);
    QCOMPARE(stage.host.isVisible(), what == 2); // no dialog, nothing that covers the screen
    QCOMPARE(stage.container->activeDialog() == nullptr, what != 2);
    stage.click(outside); // and it goes on
}

void OverlayContainerTest::escapeTakesTheHostAlong()
{
    Stage stage;
    QVERIFY(stage.show());
    stage.host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&stage.host));
    QSignalSpy rejections(stage.dialog, &QDialog::rejected);
    QTest::keyClick(stage.host.windowHandle(), Qt::Key_Escape);
    QCOMPARE(rejections.count(), 1);
    QVERIFY(!stage.host.isVisible()); // nothing invisible lies over the screen
}

void OverlayContainerTest::hostMayHideFirst()
{
    Stage stage;
    QVERIFY(stage.show());
    stage.host.hide();
    QVERIFY(!stage.dialog->isHidden());
    stage.host.show();
    QVERIFY(stage.dialog->isVisible());
}

void OverlayContainerTest::openListClosesBeforeTheHandlerIsCalled()
{
    Stage stage;
    auto* const choice = new EnumTextButton(stage.dialog);
    choice->setEnums({QStringLiteral("A"), QStringLiteral("B")});
    choice->setGeometry(0, 50, 300, 60);
    QVERIFY(stage.show());
    stage.click(onTheButton);
    QVERIFY(choice->isListOpen());
    QCOMPARE(stage.host.findChild<PopupWidget*>(QStringLiteral("enumPopup"))->parentWidget(), &stage.host);
    stage.click(outside);
    QVERIFY(!choice->isListOpen());
    QCOMPARE(stage.presses, 0);
    stage.click(outside);
    QCOMPARE(stage.presses, 1);
}

void OverlayContainerTest::withoutCompositingOnlyTheDialogIsThere()
{
    Stage stage;
    QVERIFY(stage.show());
    QCOMPARE(stage.host.mask(), QRegion(200, 200, 300, 150));
    stage.dialog->move(250, 220);
    QCOMPARE(stage.host.mask(), QRegion(250, 220, 300, 150));
    stage.dialog->resize(310, 400);
    QCOMPARE(stage.host.mask(), QRegion(250, 220, 310, 400));
    stage.container->setActiveDialog(nullptr);
    QCOMPARE(stage.host.mask(), QRegion(250, 220, 310, 400)); // no flash while it goes
}

void OverlayContainerTest::compositingManagerComesAndGoes()
{
    Stage stage;
    {
        const Announcement composited;
        QTRY_VERIFY(QX11Info::isCompositingManagerRunning());
        QVERIFY(stage.show());
        QVERIFY(stage.host.mask().isEmpty());
    }
    QTRY_VERIFY(!QX11Info::isCompositingManagerRunning());
    stage.container->prepareForShow();
    QCOMPARE(stage.host.mask(), QRegion(200, 200, 300, 150));
    const Announcement again;
    QTRY_VERIFY(QX11Info::isCompositingManagerRunning());
    stage.container->prepareForShow();
    QVERIFY(stage.host.mask().isEmpty());
}

QTEST_MAIN(OverlayContainerTest)

#include "tst_overlay_container.moc"
