#pragma once

#include <QStringList>

class QWidget;

// Looks at a shown window, or at a dialog within one, as a user would, and lists what is wrong with its
// layout, one line a fault: its sort, the widget by its object names, what exactly.
//
// - cut: a text that is shortened or runs out of its widget, and no tool tip that holds all of it
// - text over text: two texts of one widget, one over the other
// - no text: a label or a button with a text that it does not show
// - overlap: two widgets side by side that cover each other
// - outside: a widget that is not wholly within its parent, or a window not wholly on its screen; what can be
//   scrolled into view is not outside
// - nameless: a button without words, without an accessible name and without a tool tip
[[nodiscard]] QStringList layoutFaults(QWidget* shown);
