#pragma once

// Makes the fonts (*.ttf) in the folder "../fonts" beside the program's and in all folders below it known to
// the application. What is no font is passed over in silence, and so is a missing folder. A folder that links
// lead to more than once is looked at once, and no more than 1000 folders are.
// Needs the application object.
void loadApplicationFonts();
