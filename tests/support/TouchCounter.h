#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace TestSupport {

// Counts what a widget and all in it, or every widget there is, are told to do again.
class TouchCounter final : public QObject
{
public:
    TouchCounter() { qApp->installEventFilter(this); }
    explicit TouchCounter(QWidget& root)
    {
        root.installEventFilter(this);
        const auto widgets = root.findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            widget->installEventFilter(this);
        }
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Paint:
        case QEvent::UpdateRequest:
        case QEvent::LayoutRequest:
        case QEvent::EnabledChange:
        case QEvent::ToolTipChange:
        case QEvent::Polish:
        case QEvent::StyleChange:
        case QEvent::DynamicPropertyChange:
            ++touches;
            break;
        default:
            break;
        }
        return false;
    }

    int touches = 0;
};

} // namespace TestSupport
