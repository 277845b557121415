#pragma once

#include <QPalette>
#include <QString>

namespace Simulator {

// The look of the simulator: the product's light colours, spelt in one table.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QString lightStyleSheet();

// Makes the fonts that are laid beside the program known, so that the look does not depend on the machine's.
void loadFontsBesideProgram();

} // namespace Simulator
