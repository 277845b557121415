// What the window makes of its events and of those that it filters: closing, hovering, dragging, collapsing.
#include "controls/LabelButton.h"
#include "minibar/BarPopups.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>

void RemoteMiniBarWindow::closeEvent(QCloseEvent* event)
{
    if (m_closingAllowed) {
        event->accept();
        return;
    }
    event->ignore();
    emit restoreRequested();
}

void RemoteMiniBarWindow::enterEvent(QEvent* event)
{
    if (m_mode == MiniBarMode::Collapsed)
        setWindowOpacity(fullOpacity);
    QWidget::enterEvent(event);
}

void RemoteMiniBarWindow::leaveEvent(QEvent* event)
{
    if (m_mode == MiniBarMode::Collapsed)
        setWindowOpacity(quietOpacity);
    QWidget::leaveEvent(event);
}

void RemoteMiniBarWindow::moveEvent(QMoveEvent* event)
{
    // Some window managers report a stale place between a show and the first paint.
    if (!event->spontaneous() || m_paintedSinceShow)
        m_reportedPosition = event->pos();
    QWidget::moveEvent(event);
}

void RemoteMiniBarWindow::paintEvent(QPaintEvent* event)
{
    m_paintedSinceShow = true;
    QWidget::paintEvent(event);
}

void RemoteMiniBarWindow::hideEvent(QHideEvent* event)
{
    m_paintedSinceShow = false;
    QWidget::hideEvent(event);
}

bool RemoteMiniBarWindow::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ApplicationDeactivate:
        // What had the keyboard before the bar was hidden may lose it after the bar is back.
        if (watched == qApp && !m_awaitsActivation)
            collapseOnDeactivation();
        return false;
    case QEvent::WindowActivate:
        if (watched == this)
            m_awaitsActivation = false;
        return false;
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Close:
        m_popups->watchVisibility(watched, event->type() == QEvent::Show);
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: // the second press of two in a row
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return watched->isWidgetType() &&
               handlePointer(static_cast<QWidget*>(watched), static_cast<const QMouseEvent*>(event));
    default:
        return false;
    }
}

bool RemoteMiniBarWindow::handlePointer(QWidget* target, const QMouseEvent* event)
{
    if (m_popups->isOpeningClick(*event))
        return true;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return handlePress(target, event);
    case QEvent::MouseMove:
        return !m_popups->owns(target) && continueDrag(target, event);
    default:
        return event->button() == Qt::LeftButton && !m_popups->owns(target) && endDrag();
    }
}

bool RemoteMiniBarWindow::handlePress(const QWidget* target, const QMouseEvent* event)
{
    if (m_popups->isDialogOpen())
        return false;
    if (m_mode == MiniBarMode::Expanded && m_popups->handlePress(target))
        return true;
    const QPoint position = event->globalPos();
    if (target == this || isAncestorOf(target)) {
        // Where the pointer stands on the screen and in the window tells the window's place for certain. An
        // event that the program has made itself may say anything.
        if (event->spontaneous())
            m_reportedPosition = position - target->mapTo(this, event->pos());
        if (event->button() == Qt::LeftButton)
            m_drag.press(position, m_reportedPosition);
        return false;
    }
    if (m_mode == MiniBarMode::Expanded && !m_popups->isAnyOpen() && !m_popups->owns(target) &&
        !m_popups->isMenu(target) && !m_numericEdit.owns(target) &&
        !QRect(m_reportedPosition, size()).contains(position))
        setMode(MiniBarMode::Collapsed);
    return false;
}

bool RemoteMiniBarWindow::continueDrag(QWidget* target, const QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton) ||
        !m_drag.moveTo(event->globalPos(), QApplication::startDragDistance()))
        return false;
    // The button under the press must not stay down: its release will be consumed.
    if (auto* button = qobject_cast<QAbstractButton*>(target))
        button->setDown(false);
    putAt(m_drag.windowTopLeft());
    return true;
}

bool RemoteMiniBarWindow::endDrag()
{
    if (!m_drag.release())
        return false;
    m_savedPosition = clampedToScreen(m_placedPosition);
    place();
    return true;
}

void RemoteMiniBarWindow::collapseOnDeactivation()
{
    if (m_mode != MiniBarMode::Expanded || m_popups->isDialogOpen() || m_popups->handleDeactivation())
        return;
    if (!m_popups->isMenuVisible() && !m_numericEdit.isOpen() && !m_numericEdit.hasJustClosed())
        setMode(MiniBarMode::Collapsed);
}
