#pragma once

#include <QPoint>
#include <QString>

namespace MinibarHelperProtocol {

// Stands for "no anchor given": the bar stays where it was.
inline constexpr QPoint noAnchor(-1, -1);

// The payload of SHOW_MINIBAR, "<x>,<y>" in screen pixels: the top-right corner of the bar. Anything else
// gives noAnchor.
[[nodiscard]] QPoint readAnchorPoint(const QString& payload);
[[nodiscard]] QString writeAnchorPoint(QPoint topRight);

} // namespace MinibarHelperProtocol
