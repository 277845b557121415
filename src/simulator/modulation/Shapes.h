#pragma once

#include "simulator/modulation/Field.h"

namespace Simulator {

// What the analog modulations share.
[[nodiscard]] Field rateField();
[[nodiscard]] Field shapeField();

} // namespace Simulator
