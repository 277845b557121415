#include "minibar/BarDrag.h"

void BarDrag::press(QPoint position, QPoint windowTopLeft)
{
    m_pressed = true;
    m_dragging = false;
    m_pressPosition = position;
    m_pressWindowPosition = windowTopLeft;
    m_delta = {};
}

bool BarDrag::moveTo(QPoint position, int startDistance)
{
    const QPoint delta = position - m_pressPosition;
    if (!m_pressed || (!m_dragging && delta.manhattanLength() < startDistance))
        return false;
    m_dragging = true;
    m_delta = delta;
    return true;
}

bool BarDrag::release()
{
    const bool wasDragging = m_dragging;
    m_pressed = false;
    m_dragging = false;
    return wasDragging;
}
