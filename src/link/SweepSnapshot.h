#pragma once

#include <QJsonObject>
#include <QString>
#include <QVector>

enum class SweepPlanId {
    None = 0,
    FrequencyScan = 1, // "fscan"
    LevelScan = 2,     // "lscan"
    Unsupported = 3    // "unsupported": a plan of the instrument that the bar cannot show
};

// What of the sweep can be edited.
struct SweepSettings
{
    bool enabled = false;
    SweepPlanId selectedPlanId = SweepPlanId::FrequencyScan;
    double startHz = 1e9;
    double stopHz = 2e9;
    double stepHz = 1e7;
    double startDbm = -20;
    double stopDbm = -19;
    double stepDb = 1;
    double dwellSeconds = 0.001;
};

// The "sweep" object of a snapshot.
struct SweepSnapshot
{
    bool available = false;
    int revision = 0;
    QVector<SweepPlanId> supportedPlanIds; // FrequencyScan and LevelScan, each at most once
    SweepSettings settings;
};

// The numbers compare as numbers do: a NaN differs from itself.
[[nodiscard]] bool operator==(const SweepSettings& left, const SweepSettings& right);
[[nodiscard]] bool operator==(const SweepSnapshot& left, const SweepSnapshot& right);
[[nodiscard]] inline bool operator!=(const SweepSettings& left, const SweepSettings& right)
{
    return !(left == right);
}
[[nodiscard]] inline bool operator!=(const SweepSnapshot& left, const SweepSnapshot& right)
{
    return !(left == right);
}

namespace MinibarHelperProtocol {

// The word of a plan; empty for None.
[[nodiscard]] QString planWord(SweepPlanId plan);
// The plan of a word, compared exactly; None for any other word.
[[nodiscard]] SweepPlanId planOfWord(const QString& word);

// The settings as they stand in a sweep request and in a snapshot.
[[nodiscard]] QJsonObject writeSweepSettings(const SweepSettings& settings);

// Both stop at the first fault: they give false, tell the fault in `error` when that is given, and leave
// `target` as it was.
[[nodiscard]] bool parseSweepSettings(const QJsonObject& object, SweepSettings* target,
                                      QString* error = nullptr);
[[nodiscard]] bool parseSweepSnapshot(const QJsonObject& object, SweepSnapshot* target,
                                      QString* error = nullptr);

} // namespace MinibarHelperProtocol
