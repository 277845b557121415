#pragma once

#include <QPoint>
#include <QRect>

namespace Controls {

// The top-left at which a window of this size stands beside `anchor`, wholly inside `screen`. It stands off
// `surroundings`, the window part the anchor belongs to, where there is room (right, left, below, above),
// else off the anchor alone in the same order, else as near as the screen allows. On a screen that is too
// small its top-left corner stays visible. All in one coordinate system.
[[nodiscard]] QPoint placeBeside(const QRect& anchor, const QRect& surroundings, const QSize& size,
                                 const QRect& screen);

// The place of a drop-down list of this size: below `anchor`, else above it, wholly inside `screen` and off
// the anchor. Where it fits on neither side it is made lower, down to `minimumHeight`, on the side with more
// room. All in one coordinate system.
[[nodiscard]] QRect placeDropDown(const QRect& anchor, const QSize& size, int minimumHeight,
                                  const QRect& screen);

} // namespace Controls
