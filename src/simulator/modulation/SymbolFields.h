#pragma once

#include "simulator/modulation/Field.h"

namespace Simulator {

// What the kinds that send symbols share.
[[nodiscard]] Field symbolRateField(double initialHz, int smallestOversample);
[[nodiscard]] Field filterTypeField();
[[nodiscard]] Field filterAlphaField();
[[nodiscard]] Field filterLengthField();
[[nodiscard]] Field sequenceSeedField();

} // namespace Simulator
