#pragma once

// Tells the kit the theme and styles everything that is not the bar itself. `light` is true for the Light
// theme, false for Dark. Without a style sheet file the application keeps the sheet that it has.
void applyTheme(bool light);
