#include "controls/LabelButton.h"
#include "controls/ThemeManager.h"
#include "minibar/RemoteMiniBarWindow.h"
#include "minibar/StyleSheets.h"
#include "support/LanguageTable.h"
#include "support/Translators.h"

#include <QApplication>
#include <QEvent>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QMetaMethod>
#include <QMetaObject>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QStackedLayout>
#include <QTest>
#include <QVector>

using Mode = RemoteMiniBarWindow::MiniBarMode;

namespace {

QJsonObject json(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).object();
}

QWidget* page(const QWidget& window, const char* name)
{
    return window.findChild<QWidget*>(QLatin1String(name));
}

// The info buttons of a page, top to bottom.
QVector<LabelButton*> infoButtons(const QWidget* page)
{
    QVector<LabelButton*> buttons;
    for (int i = 0; i < page->layout()->count(); ++i) {
        if (auto* button = qobject_cast<LabelButton*>(page->layout()->itemAt(i)->widget()))
            buttons.append(button);
    }
    return buttons;
}

QPushButton* pushButton(const QWidget* page, const char* text)
{
    const auto buttons = page->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == QLatin1String(text))
            return button;
    }
    return nullptr;
}

QWidget* collapsed(const QWidget& window)
{
    return page(window, "miniBarCollapsedPage");
}

QWidget* expanded(const QWidget& window)
{
    return page(window, "miniBarExpandedPage");
}

void click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

QSize pageSize(const QWidget* page)
{
    return page->sizeHint().expandedTo(page->minimumSizeHint()) + QSize(16, 16);
}

} // namespace

class TestBarWindow : public QObject
{
    Q_OBJECT

private slots:
    void signalsStandInOrder();
    void windowItself();
    void buttonsOfBothPages_data();
    void buttonsOfBothPages();
    void pageLayouts();
    void sizesHoldTheStyledButtons();
    void startsHidden();
    void firstShowWithoutAnchor();
    void anchor();
    void anchorUnsetIsIgnored();
    void anchorMovesAVisibleBar();
    void expandAndCollapse();
    void expandingTakesTheKeyboard();
    void expansionIsPushedOnScreenAndCollapseReturns();
    void hideAndShowKeepModeAndPlace();
    void showKeepsTheModeOfAVisibleBar();
    void hoverOpacity();
    void closeAsksForTheMainWindow();
    void closeAfterPrepareForExit();
    void restoreButton();
    void statusTexts_data();
    void statusTexts();
    void parentCheckedFollows();
    void unchangedSnapshotTouchesNothing();
    void rfSnapsBack();
    void drag();
    void dragBelowStartDistanceClicks();
    void deactivationCollapses();
    void pressOutsideCollapses();
    void modButtonFollowsTheBusinesses();
    void controlsCanBeLocked();
    void everyTextHasTranslations();
};

void TestBarWindow::signalsStandInOrder()
{
    QList<QByteArray> found;
    const QMetaObject& meta = RemoteMiniBarWindow::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            found.append(meta.method(i).methodSignature());
    }
    QCOMPARE(found, (QList<QByteArray>{"restoreRequested()", "rfChangeRequested(bool)",
                                       "centerChangeRequested(double)", "levelChangeRequested(double)",
                                       "sweepChangeRequested(MinibarHelperProtocol::SweepChangeRequest)",
                                       "modChangeRequested(MinibarHelperProtocol::ModChangeRequest)"}));
}

void TestBarWindow::windowItself()
{
    RemoteMiniBarWindow window;
    QCOMPARE(window.objectName(), QStringLiteral("miniBarWindow"));
    QCOMPARE(window.windowFlags(), Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(window.focusPolicy(), Qt::StrongFocus);
    QVERIFY(window.testAttribute(Qt::WA_StyledBackground));
    QVERIFY(!window.testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(!window.testAttribute(Qt::WA_QuitOnClose));
    QVERIFY(window.testAttribute(Qt::WA_MouseTracking));
    QVERIFY(window.testAttribute(Qt::WA_ShowWithoutActivating));
    QCOMPARE(window.layout()->contentsMargins(), QMargins(8, 8, 8, 8));
    QCOMPARE(window.layout()->spacing(), 0);
    QCOMPARE(window.layout()->count(), 1);
    QVERIFY(qobject_cast<QStackedLayout*>(window.layout()->itemAt(0)->layout()));
    // No settings file lies beside the test: Light.
    QCOMPARE(window.styleSheet(), miniBarStyleSheet(true));
    QCOMPARE(Controls::ThemeManager::instance().theme(), Controls::ThemeManager::Light);
}

void TestBarWindow::buttonsOfBothPages_data()
{
    QTest::addColumn<bool>("onExpanded");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("info");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("enabled");

    for (bool onExpanded : {false, true}) {
        const char* where = onExpanded ? "expanded" : "collapsed";
        QTest::addRow("%s RF", where) << onExpanded << 0 << "RF"
                                      << "OFF" << true << true;
        QTest::addRow("%s frequency", where) << onExpanded << 1 << "Frequency"
                                             << "--" << false << true;
        QTest::addRow("%s level", where) << onExpanded << 2 << "Level"
                                         << "--" << false << true;
    }
    QTest::newRow("sweep") << true << 3 << "Fre/Pwr"
                           << "Sweep" << true << false;
    QTest::newRow("mod") << true << 4 << "MOD"
                         << "OFF" << true << false;
}

void TestBarWindow::buttonsOfBothPages()
{
    QFETCH(bool, onExpanded);
    QFETCH(int, index);
    RemoteMiniBarWindow window;
    const QVector<LabelButton*> buttons = infoButtons(onExpanded ? expanded(window) : collapsed(window));
    QCOMPARE(buttons.size(), onExpanded ? 5 : 3);
    const LabelButton* button = buttons.at(index);
    QTEST(button->text(), "text");
    QTEST(button->labelText(), "info");
    QTEST(button->isCheckable(), "checkable");
    QTEST(button->isEnabled(), "enabled");
    QCOMPARE(button->isChecked(), false);
    QCOMPARE(button->objectName(), QStringLiteral("miniBarInfoButton"));
    QCOMPARE(button->minimumSize(), QSize(118, 60));
    QCOMPARE(button->maximumSize(), QSize(118, 60));
    QCOMPARE(button->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(button->textAlignment(), Qt::Alignment(Qt::AlignCenter));
    QCOMPARE(button->labelAlignment(), Qt::Alignment(Qt::AlignCenter));
}

void TestBarWindow::pageLayouts()
{
    RemoteMiniBarWindow window;
    for (QWidget* onePage : {collapsed(window), expanded(window)}) {
        QVERIFY(onePage);
        QCOMPARE(onePage->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(onePage->layout()->spacing(), 0);
        const bool isExpanded = onePage == expanded(window);
        QCOMPARE(onePage->layout()->count(), isExpanded ? 7 : 4);
        auto* toggle = qobject_cast<QPushButton*>(onePage->layout()->itemAt(isExpanded ? 6 : 3)->widget());
        QVERIFY(toggle);
        QCOMPARE(toggle->text(), isExpanded ? QStringLiteral("^") : QStringLiteral("v"));
        QCOMPARE(toggle->objectName(), QStringLiteral("miniBarToggleButton"));
        QCOMPARE(toggle->focusPolicy(), Qt::NoFocus);
        QVERIFY(toggle->isFlat());
        QCOMPARE(toggle->cursor().shape(), Qt::PointingHandCursor);
    }
    auto* restore = qobject_cast<QPushButton*>(expanded(window)->layout()->itemAt(5)->widget());
    QVERIFY(restore);
    QCOMPARE(restore->text(), QStringLiteral("Restore"));
    QCOMPARE(restore->objectName(), QStringLiteral("miniBarCommandButton"));
    QCOMPARE(restore->focusPolicy(), Qt::NoFocus);
    QVERIFY(restore->isFlat());
}

void TestBarWindow::sizesHoldTheStyledButtons()
{
    RemoteMiniBarWindow window;
    for (bool isExpanded : {false, true}) {
        window.showMiniBar();
        if (isExpanded)
            click(pushButton(collapsed(window), "v"));
        const QWidget* onePage = isExpanded ? expanded(window) : collapsed(window);
        QCOMPARE(window.size(), pageSize(onePage));
        int bottom = 0;
        for (int i = 0; i < onePage->layout()->count(); ++i) {
            const QWidget* button = onePage->layout()->itemAt(i)->widget();
            QCOMPARE(button->y(), bottom); // nothing overlaps, nothing gapes
            QCOMPARE(button->width(), 118);
            QVERIFY(button->height() >= button->minimumHeight());
            bottom += button->height();
        }
        QCOMPARE(onePage->height(), bottom);
        QCOMPARE(onePage->geometry().topLeft(), QPoint(8, 8));
    }
}

void TestBarWindow::startsHidden()
{
    RemoteMiniBarWindow window;
    QCOMPARE(window.mode(), Mode::Hidden);
    QVERIFY(!window.isVisible());
    window.hideMiniBar();
    QVERIFY(!window.isVisible());
}

void TestBarWindow::firstShowWithoutAnchor()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(-1, -1));
    window.showMiniBar();
    QVERIFY(window.isVisible());
    QCOMPARE(window.mode(), Mode::Collapsed);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(window.pos(), QPoint(screen.right() - 24 - window.width(), screen.top() + 96));
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(0.65 * 100));
}

void TestBarWindow::anchor()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
}

void TestBarWindow::anchorUnsetIsIgnored()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.setAnchorTopRight(QPoint(-1, -1));
    window.showMiniBar();
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
}

void TestBarWindow::anchorMovesAVisibleBar()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    window.setAnchorTopRight(QPoint(400, 60));
    QCOMPARE(window.geometry().topRight(), QPoint(400, 60));
    window.setAnchorTopRight(QPoint(5, 99999)); // comes wholly into view
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(window.geometry().bottomLeft(), screen.bottomLeft());
}

void TestBarWindow::expandAndCollapse()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QCOMPARE(window.mode(), Mode::Expanded);
    QVERIFY(expanded(window)->isVisible());
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(1.0 * 100));
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
    click(pushButton(expanded(window), "^"));
    QCOMPARE(window.mode(), Mode::Collapsed);
    QVERIFY(collapsed(window)->isVisible());
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(0.65 * 100));
    QCOMPARE(window.geometry().topRight(), QPoint(500, 40));
}

void TestBarWindow::expandingTakesTheKeyboard()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QWidget other;
    other.setGeometry(10, 300, 50, 50);
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    pushButton(collapsed(window), "v")->click();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

void TestBarWindow::expansionIsPushedOnScreenAndCollapseReturns()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(99999, 99999));
    window.showMiniBar();
    const QRect before = window.geometry();
    QCOMPARE(before.bottomRight(), screen.bottomRight());
    click(pushButton(collapsed(window), "v"));
    QCOMPARE(window.geometry().bottomRight(), screen.bottomRight());
    QVERIFY(window.y() < before.y());
    click(pushButton(expanded(window), "^"));
    QCOMPARE(window.geometry(), before);
}

void TestBarWindow::hideAndShowKeepModeAndPlace()
{
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(500, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    const QRect before = window.geometry();
    window.hideMiniBar();
    QCOMPARE(window.mode(), Mode::Hidden);
    QVERIFY(!window.isVisible());
    window.showMiniBar();
    QCOMPARE(window.mode(), Mode::Expanded);
    QVERIFY(window.isVisible());
    QCOMPARE(window.geometry(), before);
    click(pushButton(expanded(window), "^"));
    window.hideMiniBar();
    window.showMiniBar();
    QCOMPARE(window.mode(), Mode::Collapsed);
}

void TestBarWindow::showKeepsTheModeOfAVisibleBar()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    window.setAnchorTopRight(QPoint(300, 50));
    window.showMiniBar();
    QCOMPARE(window.mode(), Mode::Expanded);
    QCOMPARE(window.geometry().topRight(), QPoint(300, 50));
}

void TestBarWindow::hoverOpacity()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&window, &enter);
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(1.0 * 100));
    QCoreApplication::sendEvent(&window, &leave);
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(0.65 * 100));
    click(pushButton(collapsed(window), "v"));
    QCoreApplication::sendEvent(&window, &leave);
    QCOMPARE(qRound(window.windowOpacity() * 100), qRound(1.0 * 100));
}

void TestBarWindow::closeAsksForTheMainWindow()
{
    RemoteMiniBarWindow window;
    QSignalSpy restore(&window, &RemoteMiniBarWindow::restoreRequested);
    window.showMiniBar();
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    QCOMPARE(restore.count(), 1);
}

void TestBarWindow::closeAfterPrepareForExit()
{
    RemoteMiniBarWindow window;
    QSignalSpy restore(&window, &RemoteMiniBarWindow::restoreRequested);
    window.showMiniBar();
    window.prepareForExit();
    QVERIFY(window.close());
    QVERIFY(!window.isVisible());
    QCOMPARE(restore.count(), 0);
}

void TestBarWindow::restoreButton()
{
    RemoteMiniBarWindow window;
    QSignalSpy restore(&window, &RemoteMiniBarWindow::restoreRequested);
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    click(pushButton(expanded(window), "Restore"));
    QCOMPARE(restore.count(), 1);
    QVERIFY(window.isVisible()); // the main process hides it
}

void TestBarWindow::statusTexts_data()
{
    QTest::addColumn<QByteArray>("snapshot");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("info");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("enabled");

    const auto row = [](const char* name, const QByteArray& snapshot, int index, const char* text,
                        const char* info, bool checked, bool enabled) {
        QTest::newRow(name) << snapshot << index << QString::fromLatin1(text) << QString::fromLatin1(info)
                            << checked << enabled;
    };
    const auto sweep = [](const char* plan, bool enabled, bool available = true, const char* list = "fscan") {
        return QStringLiteral(R"({"sweep":{"available":%1,"revision":1,"enabled":%2,"selectedPlanId":"%3",
            "frequencyPlan":{"startHz":1,"stopHz":2,"stepHz":3},"levelPlan":{"startDbm":4,"stopDbm":5,"stepDb":6},
            "dwellSeconds":1,"supportedPlanIds":["%4"]}})")
            .arg(QVariant(available).toString(), QVariant(enabled).toString(), QLatin1String(plan),
                 QLatin1String(list))
            .toUtf8();
    };
    row("RF on", R"({"tx":{"rf":true}})", 0, "RF", "ON", true, true);
    row("RF off", R"({"tx":{"rf":false}})", 0, "RF", "OFF", false, true);
    row("frequency", R"({"tx":{"centerHz":2412345678}})", 1, "Frequency", "2.412345678GHz", false, true);
    row("frequency text", R"({"tx":{"centerText":" 5 GHz "}})", 1, "Frequency", "5 GHz", false, true);
    row("level", R"({"tx":{"levelDbm":-12.5}})", 2, "Level", "-12.5 dBm", false, true);
    row("no sweep", "{}", 3, "Fre/Pwr", "Sweep", false, false);
    row("sweep off", sweep("fscan", false), 3, "Fre/Pwr", "Sweep", false, true);
    row("frequency sweep", sweep("fscan", true), 3, "Freq", "Sweep", true, true);
    row("level sweep", sweep("lscan", true, true, "lscan"), 3, "Power", "Sweep", true, true);
    row("unsupported sweep", sweep("unsupported", true, false), 3, "Unsupported", "Sweep", true, false);
    row("unavailable sweep", sweep("fscan", false, false), 3, "Fre/Pwr", "Sweep", false, false);
    row("modulation on", R"({"mod":{"enabled":true}})", 4, "MOD", "ON", true, false);
    row("modulation off", R"({"mod":{"enabled":false,"businesses":[{"id":"a","text":"A"}]}})", 4, "MOD",
        "OFF", false, true);
}

void TestBarWindow::statusTexts()
{
    QFETCH(QByteArray, snapshot);
    QFETCH(int, index);
    RemoteMiniBarWindow window;
    window.applySnapshot(json(snapshot));
    for (const QWidget* onePage : {collapsed(window), expanded(window)}) {
        const QVector<LabelButton*> buttons = infoButtons(onePage);
        if (index >= buttons.size())
            continue;
        QTEST(buttons.at(index)->text(), "text");
        QTEST(buttons.at(index)->labelText(), "info");
        QTEST(buttons.at(index)->isChecked(), "checked");
        QTEST(buttons.at(index)->isEnabled(), "enabled");
    }
}

void TestBarWindow::parentCheckedFollows()
{
    RemoteMiniBarWindow window;
    for (const char* rf : {"false", "true", "false"}) {
        window.applySnapshot(json(QByteArray(R"({"tx":{"rf":)") + rf + "}}"));
        for (const QWidget* onePage : {collapsed(window), expanded(window)}) {
            const LabelButton* button = infoButtons(onePage).constFirst();
            const QVariant expected(QByteArray(rf) == "true");
            QCOMPARE(button->property("parentChecked"), expected);
            for (const char* label : {"textLabel", "infoLabel"})
                QCOMPARE(button->findChild<QLabel*>(QLatin1String(label))->property("parentChecked"),
                         expected);
        }
    }
}

void TestBarWindow::unchangedSnapshotTouchesNothing()
{
    // Counts every event that a changed text, state or style brings about.
    class Counter : public QObject
    {
    public:
        int count = 0;

    protected:
        bool eventFilter(QObject*, QEvent* event) override
        {
            switch (event->type()) {
            case QEvent::UpdateRequest:
            case QEvent::Paint:
            case QEvent::StyleChange:
            case QEvent::Polish:
            case QEvent::DynamicPropertyChange:
            case QEvent::LayoutRequest:
            case QEvent::EnabledChange:
            case QEvent::ToolTipChange:
                ++count;
                break;
            default:
                break;
            }
            return false;
        }
    } counter;

    const QJsonObject snapshot = json(R"({"seq":1,"tx":{"rf":true,"centerHz":1e9,"levelDbm":1},
        "mod":{"enabled":true,"businesses":[{"id":"a","text":"A"}]}})");
    RemoteMiniBarWindow window;
    window.showMiniBar();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.applySnapshot(snapshot);
    QCoreApplication::processEvents();
    qApp->installEventFilter(&counter);
    for (int i = 0; i < 10; ++i)
        window.applySnapshot(snapshot);
    QCoreApplication::processEvents();
    QCOMPARE(counter.count, 0);
    window.applySnapshot(json(R"({"seq":2})"));
    QCoreApplication::processEvents();
    QVERIFY(counter.count > 0);
}

void TestBarWindow::rfSnapsBack()
{
    RemoteMiniBarWindow window;
    QSignalSpy rf(&window, &RemoteMiniBarWindow::rfChangeRequested);
    window.showMiniBar();
    LabelButton* button = infoButtons(collapsed(window)).constFirst();
    click(button);
    QCOMPARE(rf.takeFirst(), QVariantList{true});
    QVERIFY(!button->isChecked());
    QCOMPARE(button->labelText(), QStringLiteral("OFF"));
    window.applySnapshot(json(R"({"tx":{"rf":true}})"));
    QVERIFY(button->isChecked());
    click(button);
    QCOMPARE(rf.takeFirst(), QVariantList{false});
    QVERIFY(button->isChecked());
    QVERIFY(rf.isEmpty());
}

void TestBarWindow::drag()
{
    RemoteMiniBarWindow window;
    QSignalSpy rf(&window, &RemoteMiniBarWindow::rfChangeRequested);
    window.setAnchorTopRight(QPoint(400, 40));
    window.showMiniBar();
    const QPoint before = window.pos();
    LabelButton* button = infoButtons(collapsed(window)).constFirst();
    const QPoint start = button->mapToGlobal(button->rect().center());
    const auto send = [button](QEvent::Type type, QPoint global, Qt::MouseButtons buttons) {
        const QPoint inWindow = button->window()->mapFromGlobal(global);
        QMouseEvent event(type, button->mapFromGlobal(global), inWindow, global,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(button, &event);
    };
    send(QEvent::MouseButtonPress, start, Qt::LeftButton);
    QVERIFY(button->isDown());
    send(QEvent::MouseMove, start + QPoint(20, 30), Qt::LeftButton);
    QCOMPARE(window.pos(), before + QPoint(20, 30));
    QVERIFY(!button->isDown());
    send(QEvent::MouseMove, start + QPoint(5, 6), Qt::LeftButton);
    send(QEvent::MouseButtonRelease, start + QPoint(5, 6), Qt::NoButton);
    QCOMPARE(window.pos(), before + QPoint(5, 6));
    QCOMPARE(rf.count(), 0); // a drag clicks nothing
    // The new place is the one that it comes back to.
    window.hideMiniBar();
    window.showMiniBar();
    QCOMPARE(window.pos(), before + QPoint(5, 6));
    // The button is as good as new.
    click(button);
    QCOMPARE(rf.count(), 1);
}

void TestBarWindow::dragBelowStartDistanceClicks()
{
    RemoteMiniBarWindow window;
    QSignalSpy rf(&window, &RemoteMiniBarWindow::rfChangeRequested);
    window.showMiniBar();
    const QPoint before = window.pos();
    LabelButton* button = infoButtons(collapsed(window)).constFirst();
    const QPoint centre = button->rect().center();
    QTest::mousePress(button, Qt::LeftButton, Qt::NoModifier, centre);
    const QPoint near = centre + QPoint(QApplication::startDragDistance() - 1, 0);
    QMouseEvent move(QEvent::MouseMove, near, button->mapTo(&window, near), button->mapToGlobal(near),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(button, &move);
    QCOMPARE(window.pos(), before);
    QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, near);
    QCOMPARE(window.pos(), before);
    QCOMPARE(rf.count(), 1);
}

void TestBarWindow::deactivationCollapses()
{
    RemoteMiniBarWindow window;
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QEvent deactivate(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(&window, &deactivate); // only the application's own counts
    QCOMPARE(window.mode(), Mode::Expanded);
    QCoreApplication::sendEvent(qApp, &deactivate);
    QCOMPARE(window.mode(), Mode::Collapsed);
    window.hideMiniBar();
    QCoreApplication::sendEvent(qApp, &deactivate);
    QCOMPARE(window.mode(), Mode::Hidden);
}

void TestBarWindow::pressOutsideCollapses()
{
    QWidget other;
    other.setGeometry(10, 400, 50, 50);
    other.show();
    RemoteMiniBarWindow window;
    window.setAnchorTopRight(QPoint(400, 40));
    window.showMiniBar();
    click(pushButton(collapsed(window), "v"));
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2)); // the bar's own edge
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QCOMPARE(window.mode(), Mode::Expanded);
    const QPoint overTheBar = window.geometry().center();
    QMouseEvent press(QEvent::MouseButtonPress, QPoint(1, 1), QPoint(1, 1), overTheBar, Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&other, &press);
    QCOMPARE(window.mode(), Mode::Expanded);
    QTest::mousePress(&other, Qt::RightButton);
    QCOMPARE(window.mode(), Mode::Collapsed);
    QTest::mouseRelease(&other, Qt::RightButton);
}

void TestBarWindow::modButtonFollowsTheBusinesses()
{
    RemoteMiniBarWindow window;
    LabelButton* mod = infoButtons(expanded(window)).at(4);
    window.applySnapshot(json(R"({"mod":{"businesses":[{"id":"a","text":"A"}]}})"));
    QVERIFY(mod->isEnabled());
    window.applySnapshot(json("{}"));
    QVERIFY(!mod->isEnabled());
}

void TestBarWindow::controlsCanBeLocked()
{
    RemoteMiniBarWindow window;
    window.setControlsEnabled(false);
    for (const QWidget* onePage : {collapsed(window), expanded(window)}) {
        for (const LabelButton* button : infoButtons(onePage).mid(0, 3))
            QVERIFY(!button->isEnabled());
    }
    window.applySnapshot(QJsonObject());
    for (const LabelButton* button : infoButtons(collapsed(window)))
        QVERIFY(button->isEnabled());
}

void TestBarWindow::everyTextHasTranslations()
{
    TestSupport::RecordingTranslator recorder;
    QVERIFY(QCoreApplication::installTranslator(&recorder));
    recorder.asked.clear(); // what the installation itself has made others ask
    RemoteMiniBarWindow window;
    window.applySnapshot(json(R"({"mod":{"businesses":[
        {"id":"1","name":"AM","text":"-"}, {"id":"2","name":"FM","text":"-"}, {"id":"3","name":"PM","text":"-"},
        {"id":"4","name":"Pulse","text":"-"}, {"id":"5","name":"Digital Ramp","text":"-"},
        {"id":"6","name":"Digital","text":"-"}, {"id":"7","name":"Multitone","text":"-"},
        {"id":"8","name":"AWGN","text":"-"}, {"id":"9","name":"DSSS","text":"-"}, {"id":"10","name":"OFDM","text":"-"},
        {"id":"11","name":"Quick Waveform","text":"-"}, {"id":"12","name":"Playback","text":"-"},
        {"id":"13","name":"Streaming","text":"-"}]}})"));
    QCoreApplication::removeTranslator(&recorder);
    QVERIFY(recorder.asked.contains(QStringLiteral("RemoteMiniBarWindow|Streaming")));
    QCOMPARE(recorder.asked - TestSupport::translatableTexts(QStringLiteral(CONFIGURATION_DIR)),
             QSet<QString>());
}

QTEST_MAIN(TestBarWindow)
#include "tst_bar_window.moc"
