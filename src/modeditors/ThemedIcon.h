#pragma once

#include "controls/ThemeManager.h"

#include <QIcon>

// The image of a file, of which only the outline counts, in the colour that a role has in the theme in force.
// Nothing is read before the icon is painted. Its name() is the path of the file.
[[nodiscard]] QIcon themedIcon(const QString& path,
                               Controls::ThemeManager::Role role = Controls::ThemeManager::Text);
