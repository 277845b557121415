#include "controls/Placement.h"

#include <algorithm>
#include <array>

namespace Controls {
namespace {

constexpr int gap = 8;
constexpr int dropDownGap = 2;

int clampedStart(int start, int length, int from, int available)
{
    return std::max(from, std::min(start, from + available - length));
}

QRect movedInside(const QRect& rect, const QRect& screen)
{
    return {clampedStart(rect.x(), rect.width(), screen.x(), screen.width()),
            clampedStart(rect.y(), rect.height(), screen.y(), screen.height()), rect.width(), rect.height()};
}

// Beside `obstacle`, its edge along that of the anchor.
std::array<QRect, 4> candidates(const QRect& anchor, const QRect& obstacle, const QSize& size)
{
    const int width = size.width();
    const int height = size.height();
    return {QRect(QPoint(obstacle.right() + 1 + gap, anchor.top()), size),
            QRect(QPoint(obstacle.left() - gap - width, anchor.top()), size),
            QRect(QPoint(anchor.left(), obstacle.bottom() + 1 + gap), size),
            QRect(QPoint(anchor.left(), obstacle.top() - gap - height), size)};
}

} // namespace

QPoint placeBeside(const QRect& anchor, const QRect& surroundings, const QSize& size, const QRect& screen)
{
    for (const QRect& obstacle : {surroundings.united(anchor), anchor}) {
        for (const QRect& wanted : candidates(anchor, obstacle, size)) {
            const QRect rect = movedInside(wanted, screen);
            if (screen.contains(rect) && !rect.intersects(obstacle)) {
                return rect.topLeft();
            }
        }
    }
    return movedInside(candidates(anchor, anchor, size).front(), screen).topLeft();
}

QRect placeDropDown(const QRect& anchor, const QSize& size, int minimumHeight, const QRect& screen)
{
    const int below = screen.bottom() - anchor.bottom() - dropDownGap;
    const int above = anchor.top() - dropDownGap - screen.top();
    const bool isBelow = size.height() <= below || (size.height() > above && below >= above);
    const int room = std::max(isBelow ? below : above, minimumHeight);
    const int width = std::min(size.width(), screen.width());
    const int height = std::min({size.height(), room, screen.height()});
    const int top = isBelow ? anchor.bottom() + 1 + dropDownGap : anchor.top() - dropDownGap - height;
    return movedInside({anchor.left(), top, width, height}, screen);
}

} // namespace Controls
