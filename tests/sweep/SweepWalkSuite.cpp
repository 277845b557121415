#include "sweep/SweepPanelFixture.h"
#include "sweep/SweepSuites.h"

#include <QRandomGenerator>
#include <QTest>
#include <QVector>
#include <limits>
#include <optional>
#include <vector>

namespace {

constexpr int walkSteps = 5000;
constexpr std::size_t walkStates = 24;

using Plans = QVector<SweepPlanId>;

struct WalkState
{
    std::optional<SweepSnapshot> sweep;
    bool busy = false;
    QStringList shown;
};

SweepSnapshot randomSweep(QRandomGenerator* random)
{
    const auto oneOf = [random](double first, double second) { return random->bounded(2) ? first : second; };
    SweepSnapshot sweep;
    sweep.available = random->bounded(4) > 0;
    sweep.revision = random->bounded(3) + 1;
    const Plans plans[] = {{},
                           {SweepPlanId::FrequencyScan},
                           {SweepPlanId::LevelScan},
                           {SweepPlanId::LevelScan, SweepPlanId::FrequencyScan}};
    sweep.supportedPlanIds = plans[random->bounded(4)];
    sweep.settings.enabled = random->bounded(2) == 1;
    sweep.settings.selectedPlanId = SweepPlanId(random->bounded(4));
    sweep.settings.startHz = oneOf(1e9, 9e3);
    sweep.settings.stepDb = oneOf(0.25, std::numeric_limits<double>::quiet_NaN());
    sweep.settings.dwellSeconds = oneOf(0.001, 2);
    return sweep;
}

} // namespace

// Whatever came before, the panel shows the last state.
class SweepWalkSuite final : public QObject
{
    Q_OBJECT

private slots:
    void whatIsShownDependsOnTheLastStateOnly_data();
    void whatIsShownDependsOnTheLastStateOnly();
};

void SweepWalkSuite::whatIsShownDependsOnTheLastStateOnly_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::newRow("seed 1") << 1U;
    QTest::newRow("seed 40000003") << 40000003U;
}

void SweepWalkSuite::whatIsShownDependsOnTheLastStateOnly()
{
    QFETCH(const quint32, seed);
    QRandomGenerator random(seed);
    // Every state with what a new panel shows of it; the first is no state at all.
    std::vector<WalkState> states(walkStates);
    for (std::size_t i = 0; i < states.size(); ++i) {
        WalkState& state = states[i];
        state.busy = random.bounded(4) == 0;
        SweepPanelFixture direct;
        if (i > 0) {
            state.sweep = randomSweep(&random);
            direct.panel.applySweep(*state.sweep);
        }
        direct.panel.setBusy(state.busy);
        state.shown = direct.shown();
    }
    SweepPanelFixture walked;
    for (int step = 0; step < walkSteps; ++step) {
        const WalkState& state = states[random.bounded(quint32(states.size()))];
        if (state.sweep) {
            walked.panel.applySweep(*state.sweep);
        } else {
            walked.panel.clearSweep();
        }
        walked.panel.setBusy(state.busy);
        QVERIFY2(walked.shown() == state.shown, qPrintable(QStringLiteral("step %1").arg(step)));
        QCOMPARE(walked.emitted(), 0);
    }
}

std::unique_ptr<QObject> makeSweepWalkSuite()
{
    return std::make_unique<SweepWalkSuite>();
}

#include "SweepWalkSuite.moc"
