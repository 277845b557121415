#pragma once

#include "controls/ThemeManager.h"

#include <QIcon>

namespace Controls {

// The image of a file, of which only the outline counts, in the colour that a role has in the theme in force;
// of a control that cannot be used, in the colour of its text. Nothing is read before the icon is painted.
// Its name() is the path of the file.
[[nodiscard]] QIcon themedIcon(const QString& path, ThemeManager::Role role = ThemeManager::Text);

} // namespace Controls
