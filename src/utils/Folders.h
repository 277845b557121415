#pragma once

#include <QString>

namespace Utils {

// The absolute path of what lies there seen from the folder of the program, with ".." resolved.
[[nodiscard]] QString besideProgram(const QString& path);

// Makes sure that the folder is there, with all that leads to it, and gives its absolute path without a
// trailing separator. A relative path counts from the folder of the program. When the folder cannot be made,
// the nearest folder above it that exists.
[[nodiscard]] QString mkdirs(const QString& path);

} // namespace Utils
