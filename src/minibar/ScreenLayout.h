#pragma once

#include "minibar/Placement.h"

class QWidget;

// The screens of this moment, in QGuiApplication's order, with the window's own one marked.
[[nodiscard]] Placement::Screens currentScreens(const QWidget* window);
