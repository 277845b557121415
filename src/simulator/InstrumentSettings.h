#pragma once

#include "simulator/instrument/Sweep.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace Simulator {

class SignalGenerator;

// Settings of the instrument as a scenario writes them; what is not set stays as it is.
struct InstrumentSettings
{
    std::optional<bool> deviceOpen;
    std::optional<bool> rf;
    std::optional<double> centerHz; // hertz
    std::optional<double> levelDbm; // dBm
    std::optional<SweepTurn> sweep;
    std::optional<QString> enabledBusinessId; // the modulation that is on; empty for none

    void applyTo(SignalGenerator& instrument) const;
};

// path: of the object in the scenario. The first fault is told in `error`, as CheckedObject does.
[[nodiscard]] InstrumentSettings readInstrumentSettings(const QJsonObject& object, const QString& path,
                                                        QString& error);

} // namespace Simulator
