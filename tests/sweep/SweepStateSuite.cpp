#include "sweep/SweepPanelFixture.h"
#include "sweep/SweepSuites.h"

#include <QEvent>
#include <QTest>
#include <QVector>
#include <limits>

namespace {

using Plans = QVector<SweepPlanId>;

// Counts what the widgets of a panel are asked to do.
class EventCounter final : public QObject
{
public:
    explicit EventCounter(QWidget* panel)
    {
        panel->installEventFilter(this);
        const auto widgets = panel->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            widget->installEventFilter(this);
        }
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        ++m_count;
        return QObject::eventFilter(watched, event);
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count = 0;
};

// Until nothing is left to be done.
void settle(QWidget* widget)
{
    QVERIFY(QTest::qWaitForWindowActive(widget));
    for (int quiet = 0; quiet < 3;) {
        const EventCounter counter(widget);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        quiet = counter.count() == 0 ? quiet + 1 : 0;
    }
}

} // namespace

Q_DECLARE_METATYPE(Plans)

// What the panel shows of a state; nothing is emitted by any of it.
class SweepStateSuite final : public QObject
{
    Q_OBJECT

private slots:
    void beforeAnySweep();
    void afterTheSweepHasGone();
    void eachPlan_data();
    void eachPlan();
    void eachPlanAfterEachOther_data();
    void eachPlanAfterEachOther();
    void enabling_data();
    void enabling();
    void theMarkOfTheOpenKeyboard_data();
    void theMarkOfTheOpenKeyboard();
    void theMarkStaysWithItsKeyboard();
    void anEqualSnapshotTouchesNothing();
    void anotherRevisionIsTakenOver();
    void aMissingNumberCountsAsAChange();
    void anUnchangedBusyDoesNothing();
};

void SweepStateSuite::beforeAnySweep()
{
    SweepPanelFixture fixture;
    QVERIFY(!fixture.enabledSwitch()->status());
    QVERIFY(!fixture.enabledSwitch()->isEnabled());
    QCOMPARE(fixture.plan()->labelText(), QStringLiteral("--"));
    QCOMPARE(fixture.plan()->currentEnum(), -1);
    QVERIFY(!fixture.plan()->isEnabled());
    QVERIFY(!fixture.plan()->isItemEnabled(0));
    QVERIFY(!fixture.plan()->isItemEnabled(1));
    QCOMPARE(fixture.pages()->currentIndex(), 0);
    for (const ButtonOfField& entry : valueButtons) {
        QCOMPARE(fixture.button(entry.objectName)->labelText(), QStringLiteral("--"));
        QVERIFY(!fixture.button(entry.objectName)->isEnabled());
    }
    QCOMPARE(fixture.emitted(), 0);
}

void SweepStateSuite::afterTheSweepHasGone()
{
    SweepPanelFixture fixture;
    const QStringList before = fixture.shown();
    fixture.panel.clearSweep();
    QCOMPARE(fixture.shown(), before);
    SweepSnapshot sweep = editableSweep(SweepPlanId::LevelScan);
    sweep.settings.enabled = true;
    fixture.panel.applySweep(sweep);
    fixture.panel.setNumericFieldActive(Field::LevelStart, true);
    fixture.plan()->setChecked(true);
    QVERIFY(fixture.shown() != before);
    fixture.panel.clearSweep();
    QVERIFY(!fixture.plan()->isChecked());
    QCOMPARE(fixture.shown(), before);
    fixture.panel.clearSweep();
    QCOMPARE(fixture.shown(), before);
    QCOMPARE(fixture.emitted(), 0);
}

void SweepStateSuite::eachPlan_data()
{
    QTest::addColumn<int>("plan");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("item");
    QTest::addColumn<int>("page");
    QTest::newRow("none") << 0 << "--" << -1 << 2;
    QTest::newRow("frequency") << 1 << "Freq" << 0 << 0;
    QTest::newRow("level") << 2 << "Power" << 1 << 1;
    QTest::newRow("unsupported") << 3 << "Unsupported" << -1 << 2;
    QTest::newRow("unknown") << 4 << "--" << -1 << 2;
}

void SweepStateSuite::eachPlan()
{
    QFETCH(const int, plan);
    SweepPanelFixture fixture;
    SweepSnapshot sweep = editableSweep(SweepPlanId(plan));
    for (const bool enabled : {true, false}) {
        sweep.settings.enabled = enabled;
        fixture.panel.applySweep(sweep);
        QCOMPARE(fixture.enabledSwitch()->status(), enabled);
        QTEST(fixture.plan()->labelText(), "text");
        QTEST(fixture.plan()->currentEnum(), "item");
        QTEST(fixture.pages()->currentIndex(), "page");
    }
    QCOMPARE(fixture.emitted(), 0);
}

void SweepStateSuite::eachPlanAfterEachOther_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (int from = 0; from < 4; ++from) {
        for (int to = 0; to < 4; ++to) {
            QTest::newRow(qPrintable(QStringLiteral("%1 to %2").arg(from).arg(to))) << from << to;
        }
    }
}

void SweepStateSuite::eachPlanAfterEachOther()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    SweepPanelFixture direct;
    direct.panel.applySweep(editableSweep(SweepPlanId(to)));
    SweepPanelFixture after;
    after.panel.applySweep(editableSweep(SweepPlanId(from)));
    after.panel.applySweep(editableSweep(SweepPlanId(to)));
    QCOMPARE(after.shown(), direct.shown());
    QCOMPARE(after.emitted(), 0);
}

void SweepStateSuite::enabling_data()
{
    QTest::addColumn<bool>("available");
    QTest::addColumn<bool>("busy");
    QTest::addColumn<Plans>("plans");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<bool>("frequency");
    QTest::addColumn<bool>("level");
    const Plans both{SweepPlanId::LevelScan, SweepPlanId::FrequencyScan};
    const Plans frequency{SweepPlanId::FrequencyScan};
    const Plans level{SweepPlanId::LevelScan};
    QTest::newRow("both plans") << true << false << both << true << true << true;
    QTest::newRow("frequency only") << true << false << frequency << true << true << false;
    QTest::newRow("level only") << true << false << level << true << false << true;
    QTest::newRow("no plan") << true << false << Plans() << true << false << false;
    QTest::newRow("busy") << true << true << both << false << false << false;
    QTest::newRow("not available") << false << false << both << false << false << false;
    QTest::newRow("neither") << false << true << both << false << false << false;
}

void SweepStateSuite::enabling()
{
    QFETCH(const bool, available);
    QFETCH(const bool, busy);
    QFETCH(const Plans, plans);
    QFETCH(const bool, editable);
    QFETCH(const bool, frequency);
    QFETCH(const bool, level);
    SweepSnapshot sweep = editableSweep();
    sweep.available = available;
    sweep.supportedPlanIds = plans;
    for (const bool busyFirst : {false, true}) {
        SweepPanelFixture fixture;
        fixture.panel.setBusy(busy && busyFirst);
        fixture.panel.applySweep(sweep);
        fixture.panel.setBusy(busy);
        QCOMPARE(fixture.enabledSwitch()->isEnabled(), editable);
        QCOMPARE(fixture.plan()->isEnabled(), frequency || level);
        QCOMPARE(fixture.plan()->isItemEnabled(0), frequency);
        QCOMPARE(fixture.plan()->isItemEnabled(1), level);
        for (const ButtonOfField& entry : valueButtons) {
            QCOMPARE(fixture.button(entry.objectName)->isEnabled(), editable);
        }
        fixture.panel.clearSweep();
        QVERIFY(!fixture.enabledSwitch()->isEnabled() && !fixture.plan()->isEnabled());
        QCOMPARE(fixture.emitted(), 0);
    }
}

void SweepStateSuite::theMarkOfTheOpenKeyboard_data()
{
    QTest::addColumn<int>("plan");
    QTest::addColumn<Field>("field");
    QTest::addColumn<QStringList>("marked");
    const auto row = [](const char* name, int plan, Field field, const char* marked) {
        const QString button = QLatin1String(marked);
        QTest::newRow(name) << plan << field << (button.isEmpty() ? QStringList() : QStringList(button));
    };
    for (const ButtonOfField& entry : valueButtons) {
        row(entry.objectName, entry.page + 1, entry.field, entry.objectName);
    }
    row("of the page that is not shown", 1, Field::LevelStop, "btnStopLevel");
    row("dwell without a plan", 0, Field::Dwell, "");
    row("dwell of a plan without a page", 3, Field::Dwell, "");
    row("start of a plan without a page", 3, Field::FrequencyStart, "btnStartFreq");
    row("no field", 1, Field::Invalid, "");
}

void SweepStateSuite::theMarkOfTheOpenKeyboard()
{
    QFETCH(const int, plan);
    QFETCH(const Field, field);
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep(SweepPlanId(plan)));
    for (const Field before : allFields) {
        fixture.panel.setNumericFieldActive(before, true);
        fixture.panel.setNumericFieldActive(field, true);
        QTEST(fixture.marked(), "marked");
    }
    fixture.panel.setNumericFieldActive(field, false);
    QCOMPARE(fixture.marked(), QStringList());
    fixture.panel.setNumericFieldActive(Field::FrequencyStop, true);
    fixture.panel.setNumericFieldActive(field, false); // whichever it is
    QCOMPARE(fixture.marked(), QStringList());
    QCOMPARE(fixture.emitted(), 0);
}

void SweepStateSuite::theMarkStaysWithItsKeyboard()
{
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep());
    fixture.panel.setNumericFieldActive(Field::Dwell, true);
    fixture.panel.setBusy(true);
    fixture.panel.applySweep(editableSweep(SweepPlanId::LevelScan));
    QCOMPARE(fixture.marked(), QStringList(QStringLiteral("btnDwellTime_Analog")));
    fixture.panel.setNumericFieldActive(Field::Dwell, false);
    QCOMPARE(fixture.marked(), QStringList());
}

void SweepStateSuite::anEqualSnapshotTouchesNothing()
{
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep());
    fixture.panel.show();
    settle(&fixture.panel);
    const EventCounter counter(&fixture.panel);
    fixture.panel.applySweep(editableSweep());
    fixture.panel.setBusy(false);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCOMPARE(counter.count(), 0);
    SweepSnapshot other = editableSweep();
    other.settings.stopHz = 3e9;
    fixture.panel.applySweep(other);
    QTRY_VERIFY(counter.count() > 0);
}

void SweepStateSuite::anotherRevisionIsTakenOver()
{
    SweepPanelFixture fixture;
    SweepSnapshot sweep = editableSweep();
    fixture.panel.applySweep(sweep);
    const QString text = fixture.button("btnStartFreq")->labelText();
    fixture.button("btnStartFreq")->setLabelText(QStringLiteral("something else"));
    fixture.panel.applySweep(sweep);
    QCOMPARE(fixture.button("btnStartFreq")->labelText(), QStringLiteral("something else"));
    sweep.revision = 42;
    fixture.panel.applySweep(sweep);
    QCOMPARE(fixture.button("btnStartFreq")->labelText(), text);
    fixture.panel.applyNumericValue(Field::Dwell, 1);
    QCOMPARE(fixture.request(0).expectedRevision, 42);
}

void SweepStateSuite::aMissingNumberCountsAsAChange()
{
    SweepPanelFixture fixture;
    SweepSnapshot sweep = editableSweep();
    sweep.settings.stepHz = std::numeric_limits<double>::quiet_NaN();
    fixture.panel.applySweep(sweep);
    fixture.button("btnStartFreq")->setLabelText(QStringLiteral("something else"));
    fixture.panel.applySweep(sweep);
    QCOMPARE(fixture.button("btnStartFreq")->labelText(), QStringLiteral("1.5GHz"));
    QCOMPARE(fixture.emitted(), 0);
}

void SweepStateSuite::anUnchangedBusyDoesNothing()
{
    SweepPanelFixture fixture;
    fixture.panel.applySweep(editableSweep());
    fixture.enabledSwitch()->setEnabled(false);
    fixture.panel.setBusy(false);
    QVERIFY(!fixture.enabledSwitch()->isEnabled());
    fixture.panel.setBusy(true);
    fixture.panel.setBusy(false);
    QVERIFY(fixture.enabledSwitch()->isEnabled());
}

std::unique_ptr<QObject> makeSweepStateSuite()
{
    return std::make_unique<SweepStateSuite>();
}

#include "SweepStateSuite.moc"
