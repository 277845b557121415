#pragma once

#include <QString>

// The style sheets of the bar window and of its two popups: fixed templates over two palettes, one for each
// theme. They depend on nothing but the theme; `light` is true for Light, false for Dark.

[[nodiscard]] QString miniBarStyleSheet(bool light);
[[nodiscard]] QString sweepPopupStyleSheet(bool light);
[[nodiscard]] QString modPopupStyleSheet(bool light);
