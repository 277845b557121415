#pragma once

#include <QString>

// The theme choice that the bar shares with the main application, and the style sheet files that belong to
// it. `light` is true for the Light theme, false for Dark.

// "APP/Theme" of the settings file, read afresh at each call: Dark exactly for "Dark" in any letter case,
// Light for anything else, a missing key or a missing file.
[[nodiscard]] bool readThemeSetting();

// The theme's style sheet file, followed by the branding's if there is one; empty when the theme's file
// cannot be read.
[[nodiscard]] QString loadApplicationStyleSheet(bool light);

// The branding's style sheet file; empty for the official branding and when the file does not exist.
[[nodiscard]] QString brandingStyleSheetPath(bool light);
