#pragma once

#include "link/SweepSnapshot.h"
#include "simulator/instrument/Limits.h"
#include "simulator/instrument/Refusal.h"

namespace Simulator {

// A sweep setting as people turn it at the instrument; what is not set stays as it is.
struct SweepTurn
{
    struct FrequencyPlan
    {
        double startHz, stopHz, stepHz;
    };
    struct LevelPlan
    {
        double startDbm, stopDbm, stepDb;
    };

    std::optional<bool> available; // can be edited now
    std::optional<QVector<SweepPlanId>> supportedPlanIds;
    std::optional<bool> enabled;
    std::optional<SweepPlanId> selectedPlanId;
    std::optional<FrequencyPlan> frequencyPlan;
    std::optional<LevelPlan> levelPlan;
    std::optional<double> dwellSeconds;
};

// The limits of the seven numbers, in the order of SweepSettings: start, stop and step of the frequency,
// start, stop and step of the level, dwell.
struct SweepLimit
{
    double SweepSettings::*member;
    Limits limits;
};
inline constexpr int sweepLimitCount = 7;
extern const SweepLimit sweepLimits[sweepLimitCount];

// The sentence that refuses these numbers: the first that is out of its range, or a stop that does not lie
// above its start, or a step larger than the span. Empty when all is well.
[[nodiscard]] QString faultOf(const SweepSettings& settings);

// The settings with the turn laid over them.
[[nodiscard]] SweepSettings turned(SweepSettings settings, const SweepTurn& turn);

// The sweep of the instrument. What it is set to is sound at any time, so that its record can be sent.
class Sweep final
{
public:
    [[nodiscard]] const SweepSnapshot& record() const { return m_record; }

    // Sets the sweep as a whole, for somebody who saw it at `expectedRevision`; every change raises the
    // revision. Refused: NOT_SUPPORTED when it cannot be edited now or the plan is not offered, CONFLICT for
    // another revision, INVALID_ARG for numbers with a fault.
    [[nodiscard]] Verdict change(const SweepSettings& wanted, int expectedRevision);

    // Turned by hand, whatever the revision. A plan that is not offered gives way to the first that is,
    // except that a sweep that is not available may stand on Unsupported. Numbers with a fault change
    // nothing.
    void turn(const SweepTurn& turn);

private:
    void take(const SweepSnapshot& record);

    SweepSnapshot m_record = {true, 1, {SweepPlanId::FrequencyScan, SweepPlanId::LevelScan}, SweepSettings()};
};

} // namespace Simulator
