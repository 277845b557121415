#pragma once

#include <QStyle>
#include <QWidget>

// Makes the style look at the widget again: a property that a style sheet selects by has changed.
inline void repolish(QWidget* widget)
{
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}
