#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>
#include <optional>

// Where the bar and what belongs to it stand on the screens: pure functions of rectangles, in the coordinates
// of the virtual desktop (device-independent pixels).
namespace Placement {

// "No position": an anchor or a saved position that has not been given.
constexpr QPoint unset(-1, -1);

// The screens as the window sees them.
struct Screens
{
    struct Screen
    {
        QRect geometry;  // the whole screen
        QRect available; // without panels and docks
    };

    QVector<Screen> all;
    int own = -1;     // the window's own screen, -1 if it has none
    int primary = -1; // -1 if there is none

    // The screen whose geometry holds the point, -1 if none does.
    [[nodiscard]] int indexAt(QPoint point) const;
};

// The available rectangle of the screen at `point`. For an unset point with `frame` given (the frame of the
// visible window), the screen at the frame's centre; failing those the own, then the primary screen; without
// any screen (0, 0, 1280, 800).
[[nodiscard]] QRect screenRect(const Screens& screens, QPoint point,
                               std::optional<QRect> frame = std::nullopt);

// `topLeft` moved so that a rectangle of `size` there lies within `screen`; the top and left edges win.
[[nodiscard]] QPoint clamped(QPoint topLeft, QSize size, const QRect& screen);

// `rect` moved, not shrunk: right of the left edge, below the top, left of the right edge, above the bottom,
// in that order.
[[nodiscard]] QRect fitted(QRect rect, const QRect& screen);

// The collapsed bar's place when nobody has chosen one.
[[nodiscard]] QPoint defaultTopLeft(QSize collapsed, const QRect& screen);

// The top-left of a bar of this width whose last column stands at topRight.x.
[[nodiscard]] QPoint topLeftForAnchor(QPoint topRight, QSize collapsed);

// The point from which what belongs to a button of the bar opens: 6 px below the button's bottom-left corner.
// `button` in the bar's coordinates, `bar` the bar's frame.
[[nodiscard]] QPoint anchorBelow(const QRect& button, const QRect& bar);

// A window of `size` with its top edge at the anchor and its right edge on that of the bar, fitted into the
// screen at its top-right corner.
[[nodiscard]] QRect popupRect(QPoint anchor, QSize size, const QRect& bar, const Screens& screens);

} // namespace Placement
