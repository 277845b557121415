#pragma once

#include "simulator/modulation/ModulationItem.h"

#include <QString>

namespace Simulator {

// The modulation functions as they are after switching on; each in a file of its own.
[[nodiscard]] std::unique_ptr<ModulationItem> makeDigital();
[[nodiscard]] std::unique_ptr<ModulationItem> makeMultitone();
// folder: where its waveforms lie; empty for none.
[[nodiscard]] std::unique_ptr<ModulationItem> makeQuickWaveform(const QString& folder);
[[nodiscard]] std::unique_ptr<ModulationItem> makeAm();
[[nodiscard]] std::unique_ptr<ModulationItem> makeFm();
[[nodiscard]] std::unique_ptr<ModulationItem> makePm();
[[nodiscard]] std::unique_ptr<ModulationItem> makePulse();
[[nodiscard]] std::unique_ptr<ModulationItem> makeDigitalRamp();
[[nodiscard]] std::unique_ptr<ModulationItem> makeAwgn();
[[nodiscard]] std::unique_ptr<ModulationItem> makePlayback();
[[nodiscard]] std::unique_ptr<ModulationItem> makeStreaming();
[[nodiscard]] std::unique_ptr<ModulationItem> makeDsss();
[[nodiscard]] std::unique_ptr<ModulationItem> makeOfdm();

} // namespace Simulator
