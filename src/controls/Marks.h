#pragma once

#include <qnamespace.h>

class QColor;
class QPainter;
class QRect;
class QWidget;

// The kit's painted signs. Strokes with round ends, without an icon file, in any colour and at any scale.
namespace Controls {

// "This one": the check mark of the current item and of a switch's active half.
void paintTick(QPainter& painter, const QRect& box, const QColor& color);

// "Opens a list below."
void paintChevron(QPainter& painter, const QRect& box, const QColor& color);

// A box with a tick or without one, as of a check box. A box that cannot be used is an outline.
void paintCheckMark(QPainter& painter, const QRect& box, bool checked, bool enabled);

// A line along the inside of the edge of `rect`, `width` pixels wide. On every side it covers as many pixels
// of the device, at any scale.
void paintFrame(QPainter& painter, const QRect& rect, const QColor& color, int width = 1);

// Such a line, of one pixel, around `rect`: nothing is left between them.
void paintFrameAround(QPainter& painter, const QRect& rect, const QColor& color);

// Keyboard focus, inside the edge of `rect`.
void paintFocusRing(QPainter& painter, const QRect& rect);

// Whether focus that comes for this reason is to be marked: it is when it comes by a key, and a window that
// becomes active again keeps the mark as it was before.
[[nodiscard]] bool marksFocus(Qt::FocusReason reason, bool markedBefore);

// What the widget's style sheet says for its background and border; nothing without one.
void paintStyledBackground(QPainter& painter, const QWidget& widget);

} // namespace Controls
