#include "controls/EnumTextButton.h"
#include "controls/LabelButton.h"
#include "controls/PopupWidget.h"
#include "controls/SwitchButton.h"
#include "controls/TouchNumKeyboard.h"
#include "minibar/RemoteMiniBarWindow.h"
#include "minibar/StyleSheets.h"
#include "sweep/RemoteSweepPanel.h"

#include <QDialog>
#include <QEvent>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLayout>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using Controls::TouchNumKeyboard;
using Mode = RemoteMiniBarWindow::MiniBarMode;

namespace {

QJsonObject snapshot(const char* mod = R"({"enabled":true,"enabledBusinessId":"am","businesses":[
                        {"id":"am","name":"Amplitude\nModulation","text":"AM","revision":2},
                        {"id":"fm","name":"","text":"FM & more","revision":1}]})",
                     const char* sweepAvailable = "true")
{
    const QByteArray json = QByteArray(R"({"sweep":{"available":)")
                                .append(sweepAvailable)
                                .append(R"(,"revision":3,
        "enabled":true,"selectedPlanId":"fscan","frequencyPlan":{"startHz":1e9,"stopHz":2e9,"stepHz":1e7},
        "levelPlan":{"startDbm":-20,"stopDbm":-10,"stepDb":1},"dwellSeconds":0.0025,
        "supportedPlanIds":["fscan","lscan"]},"mod":)")
                                .append(mod)
                                .append("}");
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON");
    return object;
}

} // namespace

// The sweep popup, the modulation menu and the modulation popup, opened from the real bar.
class TestBarPopups : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void sweepPopupIsBuilt();
    void sweepPopupPlace();
    void sweepButtonTogglesThePopup();
    void sweepButtonWithoutSweepOpensNothing();
    void sweepEditBecomesOneRequest();
    void sweepFieldKeyboard_data();
    void sweepFieldKeyboard();
    void rejectedFieldKeyboardSendsNothing();
    void menuActions();
    void menuMarksFollowTheSnapshot();
    void menuIsRebuiltOnlyWhenTheListDiffers();
    void menuOpensBelowTheButton();
    void menuChoiceOpensThePopup();
    void unknownMenuChoiceOpensNothing();
    void emptyListClosesMenuAndDisablesButton();
    void onePopupAtATime();
    void droppedBusinessClosesThePopup();
    void keptBusinessReloadsThePopup();
    void everythingCloses_data();
    void everythingCloses();
    void dropDownClosesFirst_data();
    void dropDownClosesFirst();
    void deactivationClosesOneThingAtATime();
    void pressOnTheBarClosesThePopupAndNothingElse();
    void equalSnapshotTouchesNoWidget();

private:
    LabelButton* button(const char* info) const;
    QDialog* popup(const char* name) const { return m_window->findChild<QDialog*>(QLatin1String(name)); }
    bool isShown(const char* name) const { return popup(name) && popup(name)->isVisible(); }
    QMenu* menu() const { return m_window->findChild<QMenu*>(QStringLiteral("miniBarModMenu")); }
    TouchNumKeyboard* keyboard() const;
    void openSweep();
    void openMod(int action);

    std::unique_ptr<RemoteMiniBarWindow> m_window;
    std::unique_ptr<QSignalSpy> m_sweepRequests;
};

const char sweepName[] = "miniBarHelperSweepPopup";
const char modName[] = "miniBarHelperModPopup";

void TestBarPopups::init()
{
    m_window = std::make_unique<RemoteMiniBarWindow>();
    m_sweepRequests =
        std::make_unique<QSignalSpy>(m_window.get(), &RemoteMiniBarWindow::sweepChangeRequested);
    m_window->applySnapshot(snapshot());
    m_window->setAnchorTopRight(QPoint(900, 40));
    m_window->showMiniBar();
    const auto toggles = m_window->findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
    for (QPushButton* toggle : toggles) {
        if (toggle->text() == QLatin1String("v"))
            QTest::mouseClick(toggle, Qt::LeftButton);
    }
    QCOMPARE(m_window->mode(), Mode::Expanded);
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestBarPopups::cleanup()
{
    m_sweepRequests.reset();
    m_window.reset();
}

// A visible button of the bar by its text, or for the sweep button by its info line.
LabelButton* TestBarPopups::button(const char* info) const
{
    const auto buttons = m_window->findChildren<LabelButton*>(QStringLiteral("miniBarInfoButton"));
    for (LabelButton* candidate : buttons) {
        if (candidate->isVisible() &&
            (candidate->text() == QLatin1String(info) || candidate->labelText() == QLatin1String(info)))
            return candidate;
    }
    return nullptr;
}

TouchNumKeyboard* TestBarPopups::keyboard() const
{
    const auto keyboards = m_window->findChildren<TouchNumKeyboard*>();
    for (TouchNumKeyboard* candidate : keyboards) {
        if (candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

void TestBarPopups::openSweep()
{
    QTest::mouseClick(button("Sweep"), Qt::LeftButton);
    QVERIFY(isShown(sweepName));
}

void TestBarPopups::openMod(int action)
{
    QTest::mouseClick(button("MOD"), Qt::LeftButton);
    QVERIFY(menu()->isVisible());
    menu()->actions().at(action)->trigger();
    QVERIFY(isShown(modName));
}

void TestBarPopups::sweepPopupIsBuilt()
{
    openSweep();
    QDialog* dialog = popup(sweepName);
    QVERIFY(!dialog->isModal());
    QVERIFY(!dialog->testAttribute(Qt::WA_QuitOnClose));
    QVERIFY(dialog->testAttribute(Qt::WA_StyledBackground));
    QCOMPARE(dialog->styleSheet(), sweepPopupStyleSheet(true));
    QCOMPARE(dialog->layout()->contentsMargins(), QMargins(0, 0, 0, 5));
    QCOMPARE(dialog->layout()->spacing(), 0);
    auto* title = qobject_cast<QLabel*>(dialog->layout()->itemAt(0)->widget());
    QVERIFY(title);
    QCOMPARE(title->objectName(), QStringLiteral("titleLabel"));
    QCOMPARE(title->text(), QStringLiteral("Sweep"));
    QVERIFY(title->wordWrap());
    QVERIFY(qobject_cast<RemoteSweepPanel*>(dialog->layout()->itemAt(1)->widget()));
    QWidget* host = m_window->findChild<QWidget*>(QStringLiteral("miniBarHelperSweepOverlayHost"));
    QVERIFY(host);
    for (Qt::WidgetAttribute attribute :
         {Qt::WA_AcceptTouchEvents, Qt::WA_TranslucentBackground, Qt::WA_NoSystemBackground})
        QVERIFY(host->testAttribute(attribute));
    QVERIFY(!host->testAttribute(Qt::WA_QuitOnClose));
    QCOMPARE(host->styleSheet(),
             QStringLiteral("QWidget#miniBarHelperSweepOverlayHost { background: transparent; }"));
    QCOMPARE(host->geometry(), QGuiApplication::primaryScreen()->geometry());
    // Kept for the life of the window.
    m_window->hideMiniBar();
    m_window->showMiniBar();
    openSweep();
    QCOMPARE(popup(sweepName), dialog);
}

void TestBarPopups::sweepPopupPlace()
{
    openSweep();
    const QDialog* dialog = popup(sweepName);
    const QRect rect(dialog->mapToGlobal(QPoint(0, 0)), dialog->size());
    QCOMPARE(rect.width(), 560);
    QCOMPARE(rect.right(), 900);
    const LabelButton* sweep = button("Sweep");
    QCOMPARE(rect.top(), 40 + sweep->mapTo(m_window.get(), QPoint(0, 0)).y() + sweep->height() + 6);
}

void TestBarPopups::sweepButtonTogglesThePopup()
{
    openSweep();
    QVERIFY(button("Sweep")->isChecked()); // shows the confirmed state, not the click
    button("Sweep")->click();
    QVERIFY(!isShown(sweepName));
    QCOMPARE(m_window->mode(), Mode::Expanded);
    openSweep();
}

void TestBarPopups::sweepButtonWithoutSweepOpensNothing()
{
    m_window->applySnapshot(QJsonObject());
    button("Sweep")->click(); // disabled
    QVERIFY(!popup(sweepName));
}

void TestBarPopups::sweepEditBecomesOneRequest()
{
    openSweep();
    auto* enabled = popup(sweepName)->findChild<SwitchButton*>(QStringLiteral("enabled"));
    QVERIFY(enabled && enabled->status());
    QTest::mouseClick(enabled->findChild<QPushButton*>(QStringLiteral("btnOff")), Qt::LeftButton);
    QCOMPARE(m_sweepRequests->count(), 1);
    const auto request =
        m_sweepRequests->constFirst().constFirst().value<MinibarHelperProtocol::SweepChangeRequest>();
    QCOMPARE(request.expectedRevision, 3);
    QCOMPARE(request.settings.enabled, false);
    QVERIFY(enabled->status()); // back at the confirmed state
}

void TestBarPopups::sweepFieldKeyboard_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QByteArray>("object"); // of the request, empty for the request itself
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<double>("value");

    QTest::newRow("start") << "btnStartFreq"
                           << "Start Frequency" << QByteArray("1.25g") << QByteArray("frequencyPlan")
                           << QByteArray("startHz") << 1.25e9;
    QTest::newRow("stop") << "btnStopFreq"
                          << "Stop Frequency" << QByteArray("2500m") << QByteArray("frequencyPlan")
                          << QByteArray("stopHz") << 2.5e9;
    QTest::newRow("step") << "btnStepFreq"
                          << "Frequency Step" << QByteArray("5\r") << QByteArray("frequencyPlan")
                          << QByteArray("stepHz") << 5e6;
    QTest::newRow("dwell") << "btnDwellTime_Analog"
                           << "Dwell Time" << QByteArray("3.5\r") << QByteArray()
                           << QByteArray("dwellSeconds") << 0.0035;
}

void TestBarPopups::sweepFieldKeyboard()
{
    QFETCH(QString, button);
    QFETCH(QString, title);
    QFETCH(QByteArray, keys);
    QFETCH(QByteArray, object);
    QFETCH(QByteArray, key);
    QFETCH(double, value);
    openSweep();
    auto* field = popup(sweepName)->findChild<LabelButton*>(button);
    QVERIFY(field);
    QTest::mouseClick(field, Qt::LeftButton);
    QVERIFY(keyboard());
    QCOMPARE(keyboard()->windowTitle(), title);
    QVERIFY(field->isChecked());
    QVERIFY(QTest::qWaitForWindowActive(keyboard()));
    for (char character : keys) {
        if (character == '\r')
            QTest::keyClick(keyboard(), Qt::Key_Return);
        else
            QTest::keyClick(keyboard(), character);
    }
    QTRY_VERIFY(!keyboard());
    QVERIFY(!field->isChecked());
    QVERIFY(isShown(sweepName));
    QCOMPARE(m_sweepRequests->count(), 1);
    const QJsonObject json = m_sweepRequests->constFirst()
                                 .constFirst()
                                 .value<MinibarHelperProtocol::SweepChangeRequest>()
                                 .toJson();
    const QJsonObject holder = object.isEmpty() ? json : json.value(QLatin1String(object)).toObject();
    QVERIFY(holder.value(QLatin1String(key)).toDouble() == value);
    QCOMPARE(json.value(QLatin1String("expectedRevision")).toInt(), 3);
}

void TestBarPopups::rejectedFieldKeyboardSendsNothing()
{
    openSweep();
    auto* field = popup(sweepName)->findChild<LabelButton*>(QStringLiteral("btnStartFreq"));
    QTest::mouseClick(field, Qt::LeftButton);
    QVERIFY(keyboard());
    QTest::keyClick(keyboard(), '5');
    QTest::keyClick(keyboard(), Qt::Key_Escape);
    QTRY_VERIFY(!keyboard());
    QVERIFY(!field->isChecked());
    QVERIFY(isShown(sweepName));
    QCOMPARE(m_sweepRequests->count(), 0);
}

void TestBarPopups::menuActions()
{
    QVERIFY(menu());
    QStringList texts;
    QStringList ids;
    const auto actions = menu()->actions();
    for (const QAction* action : actions) {
        texts.append(action->text());
        ids.append(action->data().toString());
        QVERIFY(action->isCheckable());
        QCOMPARE(action->isChecked(), action->data().toString() == QLatin1String("am"));
    }
    // On one line; a nameless one by its text; no letter is taken for a mnemonic.
    QCOMPARE(texts, (QStringList{QStringLiteral("Amplitude Modulation"), QStringLiteral("FM && more")}));
    QCOMPARE(ids, (QStringList{QStringLiteral("am"), QStringLiteral("fm")}));
}

void TestBarPopups::menuMarksFollowTheSnapshot()
{
    const char* const mod = R"({"enabled":false,"enabledBusinessId":"%1","businesses":[
                        {"id":"am","name":"Amplitude\nModulation","text":"AM","revision":2},
                        {"id":"fm","name":"","text":"FM & more","revision":1}]})";
    for (const char* enabled : {"fm", "", "gone", "am"}) {
        m_window->applySnapshot(snapshot(QByteArray(mod).replace("%1", enabled).constData()));
        const auto actions = menu()->actions();
        for (const QAction* action : actions)
            QCOMPARE(action->isChecked(), action->data().toString() == QLatin1String(enabled));
    }
}

void TestBarPopups::menuIsRebuiltOnlyWhenTheListDiffers()
{
    const QAction* first = menu()->actions().constFirst();
    m_window->applySnapshot(snapshot());
    QCOMPARE(menu()->actions().constFirst(), first);
    m_window->applySnapshot(
        snapshot(R"({"businesses":[{"id":"am","text":"AM","revision":9},{"id":"x","text":"X"}]})"));
    QCOMPARE(menu()->actions().size(), 2);
    QCOMPARE(menu()->actions().constLast()->text(), QStringLiteral("X"));
}

void TestBarPopups::menuOpensBelowTheButton()
{
    const LabelButton* mod = button("MOD");
    QTest::mouseClick(button("MOD"), Qt::LeftButton);
    QVERIFY(menu()->isVisible());
    QVERIFY(mod->isChecked()); // modulation is on
    QCOMPARE(menu()->geometry().right(), 900);
    QCOMPARE(menu()->y(), 40 + mod->mapTo(m_window.get(), QPoint(0, 0)).y() + mod->height() + 6);
    button("MOD")->click();
    QVERIFY(!menu()->isVisible());
}

void TestBarPopups::menuChoiceOpensThePopup()
{
    QSignalSpy requests(m_window.get(), &RemoteMiniBarWindow::modChangeRequested);
    openMod(1);
    QDialog* dialog = popup(modName);
    QCOMPARE(dialog->findChild<QLabel*>(QStringLiteral("titleLabel"))->text(), QStringLiteral("FM & more"));
    QVERIFY(dialog->findChild<QWidget*>(QStringLiteral("remoteModEditorHost")));
    QCOMPARE(dialog->styleSheet(), modPopupStyleSheet(true));
    QVERIFY(!menu()->isVisible());
    for (int i : {0, 1}) // the choice marks nothing: AM is still the one that is on
        QCOMPARE(menu()->actions().at(i)->isChecked(), i == 0);
    QCOMPARE(requests.count(), 0); // the menu itself asks for nothing
    const QRect rect(dialog->mapToGlobal(QPoint(0, 0)), dialog->size());
    QCOMPARE(rect.width(), 560);
    QCOMPARE(rect.right(), 900);
}

void TestBarPopups::unknownMenuChoiceOpensNothing()
{
    QAction* action = menu()->actions().constFirst();
    for (const char* id : {"gone", ""}) {
        action->setData(QString::fromLatin1(id));
        action->trigger();
        QVERIFY(!isShown(modName));
    }
}

void TestBarPopups::emptyListClosesMenuAndDisablesButton()
{
    QTest::mouseClick(button("MOD"), Qt::LeftButton);
    m_window->applySnapshot(snapshot("{}"));
    QVERIFY(!menu()->isVisible());
    QVERIFY(!button("MOD")->isEnabled());
}

void TestBarPopups::onePopupAtATime()
{
    openSweep();
    menu()->actions().constFirst()->trigger();
    QVERIFY(isShown(modName) && !isShown(sweepName));
    button("Sweep")->click();
    QVERIFY(isShown(sweepName) && !isShown(modName));
    button("MOD")->click();
    QVERIFY(!isShown(sweepName) && menu()->isVisible());
}

void TestBarPopups::droppedBusinessClosesThePopup()
{
    openMod(0);
    m_window->applySnapshot(snapshot(R"({"businesses":[{"id":"fm","text":"FM"}]})"));
    QVERIFY(!isShown(modName));
    QCOMPARE(m_window->mode(), Mode::Expanded);
}

void TestBarPopups::keptBusinessReloadsThePopup()
{
    openMod(0);
    m_window->applySnapshot(snapshot(R"({"businesses":[{"id":"am","text":"AM, newly named"}]})"));
    QVERIFY(isShown(modName));
    QCOMPARE(popup(modName)->findChild<QLabel*>(QStringLiteral("titleLabel"))->text(),
             QStringLiteral("AM, newly named"));
}

void TestBarPopups::everythingCloses_data()
{
    QTest::addColumn<QString>("opened");
    QTest::addColumn<QString>("event");
    for (const char* opened : {"sweep", "sweep keyboard", "sweep drop-down", "menu", "mod"}) {
        for (const char* event : {"hide", "exit", "collapse"})
            QTest::addRow("%s, %s", opened, event)
                << QString::fromLatin1(opened) << QString::fromLatin1(event);
    }
}

void TestBarPopups::everythingCloses()
{
    QFETCH(QString, opened);
    QFETCH(QString, event);
    if (opened.startsWith(QLatin1String("sweep")))
        openSweep();
    if (opened == QLatin1String("sweep keyboard"))
        QTest::mouseClick(popup(sweepName)->findChild<LabelButton*>(QStringLiteral("btnStopFreq")),
                          Qt::LeftButton);
    if (opened == QLatin1String("sweep drop-down"))
        QTest::mouseClick(popup(sweepName)->findChild<EnumTextButton*>(QStringLiteral("btnMode")),
                          Qt::LeftButton);
    if (opened == QLatin1String("menu"))
        QTest::mouseClick(button("MOD"), Qt::LeftButton);
    if (opened == QLatin1String("mod"))
        openMod(0);

    if (event == QLatin1String("hide"))
        m_window->hideMiniBar();
    else if (event == QLatin1String("exit"))
        m_window->prepareForExit();
    else {
        const auto toggles = m_window->findChildren<QPushButton*>(QStringLiteral("miniBarToggleButton"));
        for (QPushButton* toggle : toggles) {
            if (toggle->text() == QLatin1String("^"))
                toggle->click();
        }
        if (menu()->isVisible())
            menu()->close(); // only a press beside it can come to the toggle, and that closes the menu
    }
    QTRY_VERIFY(!keyboard());
    QVERIFY(!isShown(sweepName) && !isShown(modName) && !menu()->isVisible());
    const auto dropDowns = m_window->findChildren<PopupWidget*>();
    for (const PopupWidget* dropDown : dropDowns)
        QVERIFY(!dropDown->isVisible());
    const auto hosts = {"miniBarHelperSweepOverlayHost", "miniBarHelperModOverlayHost"};
    for (const char* host : hosts) {
        const auto* widget = m_window->findChild<QWidget*>(QLatin1String(host));
        QVERIFY(!widget || !widget->isVisible());
    }
    QCOMPARE(m_sweepRequests->count(), 0);
}

void TestBarPopups::dropDownClosesFirst_data()
{
    QTest::addColumn<bool>("sweep");
    QTest::addColumn<QString>("selector");
    QTest::newRow("sweep") << true << "btnMode";
    QTest::newRow("mod") << false << "btnShape";
}

void TestBarPopups::dropDownClosesFirst()
{
    QFETCH(bool, sweep);
    QFETCH(QString, selector);
    const char* const name = sweep ? sweepName : modName;
    if (sweep) {
        openSweep();
    } else {
        m_window->applySnapshot(
            snapshot(R"({"businesses":[{"id":"am","name":"AM","text":"AM","editorKind":"am"}]})"));
        openMod(0);
    }
    QTest::mouseClick(popup(name)->findChild<EnumTextButton*>(selector), Qt::LeftButton);
    const QPointer<PopupWidget> dropDown = m_window->findChild<PopupWidget*>();
    QVERIFY(dropDown && dropDown->isVisible());
    const auto pressBar = [this] {
        QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(3, 3));
    };
    pressBar();
    QTRY_VERIFY(!dropDown || !dropDown->isVisible());
    QVERIFY(isShown(name));
    QCoreApplication::processEvents();
    pressBar();
    QVERIFY(!isShown(name));
    QCOMPARE(m_window->mode(), Mode::Expanded);
}

void TestBarPopups::deactivationClosesOneThingAtATime()
{
    const auto deactivate = [] {
        QEvent event(QEvent::ApplicationDeactivate);
        QCoreApplication::sendEvent(qApp, &event);
    };
    openSweep();
    QTest::mouseClick(popup(sweepName)->findChild<EnumTextButton*>(QStringLiteral("btnMode")),
                      Qt::LeftButton);
    QPointer<PopupWidget> dropDown = m_window->findChild<PopupWidget*>();
    QVERIFY(dropDown && dropDown->isVisible());
    deactivate();
    QTRY_VERIFY(!dropDown || !dropDown->isVisible());
    QVERIFY(isShown(sweepName));
    QCoreApplication::processEvents();
    deactivate();
    QVERIFY(!isShown(sweepName));
    QCOMPARE(m_window->mode(), Mode::Expanded);
    deactivate();
    QCOMPARE(m_window->mode(), Mode::Collapsed);
}

void TestBarPopups::pressOnTheBarClosesThePopupAndNothingElse()
{
    QSignalSpy rf(m_window.get(), &RemoteMiniBarWindow::rfChangeRequested);
    openMod(0);
    QTest::mouseClick(button("RF"), Qt::LeftButton);
    QVERIFY(!isShown(modName));
    QCOMPARE(rf.count(), 0);
    QTest::mouseClick(button("RF"), Qt::LeftButton);
    QCOMPARE(rf.count(), 1);
}

void TestBarPopups::equalSnapshotTouchesNoWidget()
{
    class Counter : public QObject
    {
    public:
        int count = 0;

    protected:
        bool eventFilter(QObject*, QEvent* event) override
        {
            const QEvent::Type type = event->type();
            if (type == QEvent::Paint || type == QEvent::UpdateRequest || type == QEvent::LayoutRequest ||
                type == QEvent::StyleChange || type == QEvent::DynamicPropertyChange)
                ++count;
            return false;
        }
    } counter;

    openSweep();
    QVERIFY(QTest::qWaitForWindowExposed(popup(sweepName)->window()));
    qApp->installEventFilter(&counter);
    const auto isQuiet = [&counter] {
        counter.count = 0;
        QCoreApplication::processEvents();
        return counter.count == 0;
    };
    QTRY_VERIFY(isQuiet()); // what opening the popup has left to do
    for (int i = 0; i < 5; ++i)
        m_window->applySnapshot(snapshot());
    QCoreApplication::processEvents();
    QCOMPARE(counter.count, 0);
}

QTEST_MAIN(TestBarPopups)
#include "tst_bar_popups.moc"
