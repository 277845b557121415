#pragma once

#include <QString>

namespace Simulator {

class SignalGenerator;

// The sweep in two lines: "1 GHz to 2 GHz", "step 10 MHz, dwell 1 ms".
[[nodiscard]] QString sweepSummary(const SignalGenerator& instrument);
// The title of the modulation that is on; a word that says so when none is.
[[nodiscard]] QString modulationSummary(const SignalGenerator& instrument);

} // namespace Simulator
