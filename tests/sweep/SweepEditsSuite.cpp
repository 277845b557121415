#include "controls/PopupWidget.h"
#include "sweep/SweepPanelFixture.h"
#include "sweep/SweepSuites.h"

#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using MinibarHelperProtocol::SweepChangeRequest;

// Edits by real clicks: each leaves as one request and shows nothing by itself.
class SweepEditsSuite final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void theSwitchAsksAndStays_data();
    void theSwitchAsksAndStays();
    void theHalfThatIsOnAsksForNothing();
    void aSwitchTurnedAnywayAsksForNothing_data();
    void aSwitchTurnedAnywayAsksForNothing();
    void choosingAPlanAsksAndStays_data();
    void choosingAPlanAsksAndStays();
    void choosingTheSamePlanAsksForNothing();
    void aPlanThatIsNotOfferedCannotBeChosen();
    void aPlanChosenAnywayAsksForNothing_data();
    void aPlanChosenAnywayAsksForNothing();
    void choosingFromAnUnsupportedPlan();
    void aValueButtonAsksForTheKeyboard_data();
    void aValueButtonAsksForTheKeyboard();
    void clickingWhileTheKeyboardIsOpen();
    void aDisabledPanelTakesNoClick_data();
    void aDisabledPanelTakesNoClick();
    void anAnswerWithinTheRequestIsShown();

private:
    [[nodiscard]] SweepPanelFixture& fixture() const { return *m_fixture; }
    void show(const SweepSnapshot& sweep);
    void clickHalf(const char* name);
    void openList();
    void clickItem(int index);

    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<SweepPanelFixture> m_fixture;
};

void SweepEditsSuite::init()
{
    m_window = std::make_unique<QWidget>();
    m_fixture = std::make_unique<SweepPanelFixture>(m_window.get());
    auto* const layout = new QVBoxLayout(m_window.get());
    layout->addWidget(&m_fixture->panel);
    m_window->resize(560, 220);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void SweepEditsSuite::cleanup()
{
    m_fixture.reset();
    m_window.reset();
}

void SweepEditsSuite::show(const SweepSnapshot& sweep)
{
    fixture().panel.applySweep(sweep);
}

void SweepEditsSuite::clickHalf(const char* name)
{
    auto* const half = fixture().enabledSwitch()->findChild<QPushButton*>(QLatin1String(name));
    QVERIFY(half);
    QTest::mouseClick(half, Qt::LeftButton);
}

void SweepEditsSuite::openList()
{
    QTest::mouseClick(fixture().plan(), Qt::LeftButton);
    QTRY_VERIFY(m_window->findChild<PopupWidget*>() && m_window->findChild<PopupWidget*>()->isVisible());
}

void SweepEditsSuite::clickItem(int index)
{
    openList();
    const auto* const list = m_window->findChild<PopupWidget*>()->findChild<QListView*>();
    QVERIFY(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualRect(list->model()->index(index, 0)).center());
}

void SweepEditsSuite::theSwitchAsksAndStays_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("on to off") << true;
    QTest::newRow("off to on") << false;
}

void SweepEditsSuite::theSwitchAsksAndStays()
{
    QFETCH(const bool, enabled);
    SweepSnapshot sweep = editableSweep();
    sweep.settings.enabled = enabled;
    show(sweep);
    const char* const other = enabled ? "btnOff" : "btnOn";
    clickHalf(other);
    QCOMPARE(fixture().emitted(), 1);
    QCOMPARE(fixture().enabledSwitch()->status(), enabled);
    QCOMPARE(fixture().request(0).expectedRevision, sweep.revision);
    SweepSettings asked = sweep.settings;
    asked.enabled = !enabled;
    QVERIFY(fixture().request(0).settings == asked);
    clickHalf(other); // once more, as long as nothing has answered
    QCOMPARE(fixture().emitted(), 2);
    QCOMPARE(fixture().enabledSwitch()->status(), enabled);
    sweep.settings.enabled = !enabled;
    show(sweep);
    QCOMPARE(fixture().enabledSwitch()->status(), !enabled);
    QCOMPARE(fixture().emitted(), 2);
}

void SweepEditsSuite::theHalfThatIsOnAsksForNothing()
{
    show(editableSweep());
    clickHalf("btnOff");
    QCOMPARE(fixture().emitted(), 0);
}

void SweepEditsSuite::aSwitchTurnedAnywayAsksForNothing_data()
{
    QTest::addColumn<QString>("situation");
    QTest::newRow("no sweep") << "none";
    QTest::newRow("busy") << "busy";
    QTest::newRow("not available") << "unavailable";
}

void SweepEditsSuite::aSwitchTurnedAnywayAsksForNothing()
{
    QFETCH(const QString, situation);
    if (situation != QLatin1String("none")) {
        SweepSnapshot sweep = editableSweep();
        sweep.available = situation == QLatin1String("busy");
        show(sweep);
        fixture().panel.setBusy(situation == QLatin1String("busy"));
    }
    fixture().enabledSwitch()->setStatus(true);
    QVERIFY(!fixture().enabledSwitch()->status());
    QCOMPARE(fixture().emitted(), 0);
}

void SweepEditsSuite::choosingAPlanAsksAndStays_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<QString>("shown");
    QTest::newRow("frequency to level") << 1 << "Freq";
    QTest::newRow("level to frequency") << 2 << "Power";
}

void SweepEditsSuite::choosingAPlanAsksAndStays()
{
    QFETCH(const int, from);
    SweepSnapshot sweep = editableSweep(SweepPlanId(from));
    sweep.settings.enabled = true;
    show(sweep);
    clickItem(2 - from);
    QTRY_COMPARE(fixture().emitted(), 1);
    QTEST(fixture().plan()->labelText(), "shown");
    QCOMPARE(fixture().plan()->currentEnum(), from - 1);
    QCOMPARE(fixture().pages()->currentIndex(), from - 1);
    QCOMPARE(fixture().request(0).expectedRevision, sweep.revision);
    sweep.settings.selectedPlanId = SweepPlanId(3 - from);
    QVERIFY(fixture().request(0).settings == sweep.settings);
    show(sweep);
    QCOMPARE(fixture().pages()->currentIndex(), 2 - from);
    QCOMPARE(fixture().plan()->currentEnum(), 2 - from);
    QCOMPARE(fixture().emitted(), 1);
}

void SweepEditsSuite::choosingTheSamePlanAsksForNothing()
{
    show(editableSweep());
    QSignalSpy chosen(fixture().plan(), &EnumTextButton::currentItemEdited);
    clickItem(0);
    QTRY_COMPARE(chosen.count(), 1);
    QCOMPARE(fixture().emitted(), 0);
    QCOMPARE(fixture().plan()->labelText(), QStringLiteral("Freq"));
}

void SweepEditsSuite::aPlanThatIsNotOfferedCannotBeChosen()
{
    SweepSnapshot sweep = editableSweep();
    sweep.supportedPlanIds = {SweepPlanId::FrequencyScan};
    show(sweep);
    QSignalSpy chosen(fixture().plan(), &EnumTextButton::currentItemEdited);
    clickItem(1);
    QTest::keyClick(m_window->findChild<PopupWidget*>(), Qt::Key_Escape);
    QTRY_VERIFY(!m_window->findChild<PopupWidget*>());
    QCOMPARE(chosen.count(), 0);
    QCOMPARE(fixture().emitted(), 0);
}

void SweepEditsSuite::aPlanChosenAnywayAsksForNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("situation");
    QTest::newRow("not offered") << 1 << "frequency only";
    QTest::newRow("no such item") << 2 << "both";
    QTest::newRow("no item") << -1 << "both";
    QTest::newRow("busy") << 1 << "busy";
    QTest::newRow("not available") << 1 << "unavailable";
}

void SweepEditsSuite::aPlanChosenAnywayAsksForNothing()
{
    QFETCH(const int, index);
    QFETCH(const QString, situation);
    SweepSnapshot sweep = editableSweep();
    sweep.available = situation != QLatin1String("unavailable");
    if (situation == QLatin1String("frequency only")) {
        sweep.supportedPlanIds = {SweepPlanId::FrequencyScan};
    }
    show(sweep);
    fixture().panel.setBusy(situation == QLatin1String("busy"));
    fixture().plan()->setCurrentEnum(index); // as the button does before it tells
    emit fixture().plan()->currentItemEdited(index);
    QCOMPARE(fixture().plan()->labelText(), QStringLiteral("Freq"));
    QCOMPARE(fixture().plan()->currentEnum(), 0);
    QCOMPARE(fixture().emitted(), 0);
}

void SweepEditsSuite::choosingFromAnUnsupportedPlan()
{
    show(editableSweep(SweepPlanId::Unsupported));
    clickItem(1);
    QTRY_COMPARE(fixture().emitted(), 1);
    QCOMPARE(fixture().request(0).settings.selectedPlanId, SweepPlanId::LevelScan);
    QCOMPARE(fixture().plan()->labelText(), QStringLiteral("Unsupported"));
    QCOMPARE(fixture().plan()->currentEnum(), -1);
    QCOMPARE(fixture().pages()->currentIndex(), 2);
}

void SweepEditsSuite::aValueButtonAsksForTheKeyboard_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Field>("field");
    QTest::addColumn<int>("page");
    for (const ButtonOfField& entry : valueButtons) {
        QTest::newRow(entry.objectName)
            << QString(QLatin1String(entry.objectName)) << entry.field << entry.page;
    }
}

void SweepEditsSuite::aValueButtonAsksForTheKeyboard()
{
    QFETCH(const QString, name);
    QFETCH(const Field, field);
    QFETCH(const int, page);
    show(editableSweep(SweepPlanId(page + 1)));
    LabelButton* const button = fixture().button(qPrintable(name));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(fixture().emitted(), 1);
    QCOMPARE(fixture().edits.count(), 1);
    QCOMPARE(fixture().edits.first().first().value<Field>(), field);
    QCOMPARE(fixture().edits.first().at(1).value<QWidget*>(), button);
    // Only an open keyboard marks it.
    QCOMPARE(fixture().marked(), QStringList());
    connect(&fixture().panel, &RemoteSweepPanel::numericEditRequested, &fixture().panel,
            [this](Field edited) { fixture().panel.setNumericFieldActive(edited, true); });
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(fixture().marked(), QStringList(name));
}

void SweepEditsSuite::clickingWhileTheKeyboardIsOpen()
{
    show(editableSweep());
    fixture().panel.setNumericFieldActive(Field::FrequencyStart, true);
    QTest::mouseClick(fixture().button("btnStartFreq"), Qt::LeftButton);
    QCOMPARE(fixture().edits.count(), 1);
    QCOMPARE(fixture().marked(), QStringList(QStringLiteral("btnStartFreq")));
    QTest::mouseClick(fixture().button("btnStopFreq"), Qt::LeftButton);
    QCOMPARE(fixture().edits.count(), 2);
    QCOMPARE(fixture().marked(), QStringList(QStringLiteral("btnStartFreq")));
}

void SweepEditsSuite::aDisabledPanelTakesNoClick_data()
{
    aSwitchTurnedAnywayAsksForNothing_data();
}

void SweepEditsSuite::aDisabledPanelTakesNoClick()
{
    QFETCH(const QString, situation);
    if (situation != QLatin1String("none")) {
        SweepSnapshot sweep = editableSweep();
        sweep.available = situation == QLatin1String("busy");
        show(sweep);
        fixture().panel.setBusy(situation == QLatin1String("busy"));
    }
    clickHalf("btnOn");
    QTest::mouseClick(fixture().plan(), Qt::LeftButton);
    for (const ButtonOfField& entry : valueButtons) {
        QTest::mouseClick(fixture().button(entry.objectName), Qt::LeftButton);
        emit fixture().button(entry.objectName)->clicked(true); // as if it had been enabled
    }
    QVERIFY(!m_window->findChild<PopupWidget*>());
    QCOMPARE(fixture().emitted(), 0);
}

// The main process may answer before the signal has returned.
void SweepEditsSuite::anAnswerWithinTheRequestIsShown()
{
    SweepSnapshot sweep = editableSweep();
    show(sweep);
    connect(&fixture().panel, &RemoteSweepPanel::changeRequested, &fixture().panel,
            [&](const SweepChangeRequest& request) {
                sweep.settings = request.settings;
                ++sweep.revision;
                fixture().panel.applySweep(sweep);
            });
    clickHalf("btnOn");
    QVERIFY(fixture().enabledSwitch()->status());
    clickItem(1);
    QTRY_COMPARE(fixture().plan()->labelText(), QStringLiteral("Power"));
    QCOMPARE(fixture().plan()->currentEnum(), 1);
    QCOMPARE(fixture().pages()->currentIndex(), 1);
    QCOMPARE(fixture().emitted(), 2);
    QCOMPARE(fixture().request(1).expectedRevision, 42);
}

std::unique_ptr<QObject> makeSweepEditsSuite()
{
    return std::make_unique<SweepEditsSuite>();
}

#include "SweepEditsSuite.moc"
