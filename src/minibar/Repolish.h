#pragma once

#include <QStyle>
#include <QWidget>

// Makes the style look at the widget again: a property that a style sheet selects by has changed. One that it
// has not looked at yet is looked at when it is polished.
inline void repolish(QWidget* widget)
{
    if (!widget->testAttribute(Qt::WA_WState_Polished))
        return;
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}
