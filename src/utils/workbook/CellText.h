#pragma once

#include <QByteArray>
#include <QString>

namespace Workbook {

// The text that a cell's UTF-8 stands for: _xHHHH_ is the character of that code, and a line ends with a line
// feed alone.
[[nodiscard]] QString cellText(const QByteArray& utf8);

} // namespace Workbook
