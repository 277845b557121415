#include "minibar/Placement.h"

#include <algorithm>

namespace Placement {

namespace {

constexpr QRect noScreenRect(0, 0, 1280, 800);
constexpr int defaultRightGap = 24;
constexpr int defaultTopGap = 96;
constexpr int popupGap = 6;

} // namespace

int Screens::indexAt(QPoint point) const
{
    const auto holds = [point](const Screen& screen) { return screen.geometry.contains(point); };
    const auto it = std::find_if(all.cbegin(), all.cend(), holds);
    return it == all.cend() ? -1 : int(std::distance(all.cbegin(), it));
}

QRect screenRect(const Screens& screens, QPoint point, std::optional<QRect> frame)
{
    const bool byFrame = point == unset && frame.has_value();
    const int candidates[] = {screens.indexAt(byFrame ? frame->center() : point), screens.own,
                              screens.primary};
    for (int index : candidates) {
        if (index >= 0 && index < screens.all.size())
            return screens.all.at(index).available;
    }
    return noScreenRect;
}

QPoint clamped(QPoint topLeft, QSize size, const QRect& screen)
{
    const int right = std::max(screen.left(), screen.right() + 1 - size.width());
    const int bottom = std::max(screen.top(), screen.bottom() + 1 - size.height());
    return {std::max(screen.left(), std::min(right, topLeft.x())),
            std::max(screen.top(), std::min(bottom, topLeft.y()))};
}

QRect fitted(QRect rect, const QRect& screen)
{
    if (rect.left() < screen.left())
        rect.moveLeft(screen.left());
    if (rect.top() < screen.top())
        rect.moveTop(screen.top());
    if (rect.right() > screen.right())
        rect.moveRight(screen.right());
    if (rect.bottom() > screen.bottom())
        rect.moveBottom(screen.bottom());
    return rect;
}

QPoint defaultTopLeft(QSize collapsed, const QRect& screen)
{
    return {screen.right() - defaultRightGap - collapsed.width(), screen.top() + defaultTopGap};
}

QPoint topLeftForAnchor(QPoint topRight, QSize collapsed)
{
    return {topRight.x() - collapsed.width() + 1, topRight.y()};
}

QPoint anchorBelow(const QRect& button, const QRect& bar)
{
    return bar.topLeft() + QPoint(button.x(), button.y() + button.height() + popupGap);
}

QRect popupRect(QPoint anchor, QSize size, const QRect& bar, const Screens& screens)
{
    const QRect rect(QPoint(bar.x() + bar.width() - size.width(), anchor.y()), size);
    return fitted(rect, screenRect(screens, rect.topRight()));
}

} // namespace Placement
