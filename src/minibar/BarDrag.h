#pragma once

#include <QPoint>

// A press on the bar that may become a drag. Positions are global.
class BarDrag final
{
public:
    // `windowTopLeft` is where the window really stands at the press.
    void press(QPoint position, QPoint windowTopLeft);
    // True once the pointer has moved at least `startDistance` (Manhattan length) from the press, and from
    // then on.
    [[nodiscard]] bool moveTo(QPoint position, int startDistance);
    // Ends press and drag; true if a drag was under way.
    bool release();

    [[nodiscard]] bool isPressed() const { return m_pressed; }
    [[nodiscard]] bool isDragging() const { return m_dragging; }
    // Where the drag has taken the window.
    [[nodiscard]] QPoint windowTopLeft() const { return m_pressWindowPosition + m_delta; }

private:
    bool m_pressed = false;
    bool m_dragging = false;
    QPoint m_pressPosition;
    QPoint m_pressWindowPosition;
    QPoint m_delta;
};
