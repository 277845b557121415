#include "controls/Marks.h"

#include "controls/ThemeManager.h"

#include <QPainter>
#include <QRegion>
#include <QStyleOption>
#include <QTransform>
#include <algorithm>
#include <initializer_list>

namespace Controls {
namespace {

constexpr double strokeWidth = 1.75; // pixels, as in the icons
constexpr int ringWidth = 2;         // pixels

// The points are fractions of the box.
void paintStroke(QPainter& painter, const QRectF& box, const QColor& color,
                 std::initializer_list<QPointF> points)
{
    QPolygonF line;
    for (const QPointF& point : points) {
        line.append({box.x() + point.x() * box.width(), box.y() + point.y() * box.height()});
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    painter.restore();
}

QRect inDevicePixels(const QPainter& painter, const QRect& rect)
{
    return painter.deviceTransform().mapRect(QRectF(rect)).toRect();
}

int lineInDevicePixels(const QPainter& painter, int width)
{
    return std::max(1, qRound(painter.deviceTransform().m11() * width));
}

// The part of `outer`, in pixels of the device, that is nearer to its edge than `line`. Filled, not drawn:
// where a pen's line begins and how wide it is depends on the scale and on the side.
void fillEdges(QPainter& painter, const QRect& outer, int line, const QColor& color)
{
    const QTransform back = painter.deviceTransform().inverted();
    const QRect inner = outer.adjusted(line, line, -line, -line);
    const QRegion edges = QRegion(outer).subtracted(inner);
    for (const QRect& edge : edges) {
        painter.fillRect(back.mapRect(QRectF(edge)), color);
    }
}

} // namespace

void paintTick(QPainter& painter, const QRect& box, const QColor& color)
{
    paintStroke(painter, box, color, {{0.08, 0.55}, {0.38, 0.85}, {0.92, 0.18}});
}

void paintChevron(QPainter& painter, const QRect& box, const QColor& color)
{
    paintStroke(painter, box, color, {{0.1, 0.35}, {0.5, 0.7}, {0.9, 0.35}});
}

void paintCheckMark(QPainter& painter, const QRect& box, bool checked, bool enabled)
{
    const ThemeManager& theme = ThemeManager::instance();
    const QColor line = theme.color(!enabled  ? ThemeManager::DisabledText
                                    : checked ? ThemeManager::FocusRing
                                              : ThemeManager::SecondaryText);
    constexpr double corner = 1.5; // pixels
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, 1));
    if (enabled) {
        painter.setBrush(theme.color(checked ? ThemeManager::Accent : ThemeManager::Raised));
    }
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter.restore();
    if (checked) {
        const int inset = box.width() / 5;
        paintTick(painter, box.adjusted(inset, inset, -inset, -inset),
                  theme.color(enabled ? ThemeManager::Text : ThemeManager::DisabledText));
    }
}

void paintFrame(QPainter& painter, const QRect& rect, const QColor& color, int width)
{
    fillEdges(painter, inDevicePixels(painter, rect), lineInDevicePixels(painter, width), color);
}

void paintFrameAround(QPainter& painter, const QRect& rect, const QColor& color)
{
    const int line = lineInDevicePixels(painter, 1);
    fillEdges(painter, inDevicePixels(painter, rect).adjusted(-line, -line, line, line), line, color);
}

void paintFocusRing(QPainter& painter, const QRect& rect)
{
    paintFrame(painter, rect, ThemeManager::instance().color(ThemeManager::FocusRing), ringWidth);
}

bool marksFocus(Qt::FocusReason reason, bool markedBefore)
{
    switch (reason) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
        return markedBefore;
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        return true;
    default:
        return false;
    }
}

void paintStyledBackground(QPainter& painter, const QWidget& widget)
{
    QStyleOption option;
    option.initFrom(&widget);
    widget.style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, &widget);
}

} // namespace Controls
