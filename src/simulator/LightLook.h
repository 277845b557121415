#pragma once

#include <QPalette>
#include <QString>

namespace Simulator {

// The look of the simulator: the product's light colours, spelt in one table.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QString lightStyleSheet();

} // namespace Simulator
