#include "controls/OverlayContainer.h"

#include <QDialog>
#include <QMouseEvent>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QWindow>
#include <QX11Info>
#include <utility>

namespace Controls {
namespace {

bool canShineThrough()
{
    return !QX11Info::isPlatformX11() || QX11Info::isCompositingManagerRunning();
}

} // namespace

OverlayContainer::OverlayContainer(QWidget* host)
    : QObject(host)
    , m_host(host)
    // Queued: the catcher hears of a press before what the user did earlier has been handled.
    , m_catcher(
          [this] { QMetaObject::invokeMethod(this, &OverlayContainer::tellHandler, Qt::QueuedConnection); })
{
    m_host->installEventFilter(this);
}

OverlayContainer::~OverlayContainer() = default;

void OverlayContainer::setBlocksOutsideInput(bool blocks)
{
    m_blocks = blocks;
    updateMask();
}

void OverlayContainer::setOutsideInputHandler(std::function<void()> handler)
{
    m_handler = std::move(handler);
}

void OverlayContainer::setActiveDialog(QDialog* dialog)
{
    if (dialog == m_dialog) {
        return;
    }
    if (m_dialog) {
        m_dialog->removeEventFilter(this);
    }
    m_dialog = dialog;
    if (!m_dialog) {
        m_catcher.uncover();
        return; // the mask stays: the host is about to go, and must not flash up as a whole
    }
    if (m_dialog->parentWidget() != m_host || m_dialog->isWindow()) {
        const QRect geometry(m_dialog->pos(), m_dialog->size()); // a window's geometry is without its frame
        m_dialog->setParent(m_host, Qt::Widget);
        m_dialog->setGeometry(geometry);
    }
    m_dialog->installEventFilter(this);
    updateMask();
}

QDialog* OverlayContainer::activeDialog() const
{
    return qobject_cast<QDialog*>(m_dialog.data());
}

void OverlayContainer::prepareForShow()
{
    updateMask(); // a compositing manager may have come or gone
    updateCatcher();
    if (m_dialog) {
        m_dialog->raise();
    }
}

bool OverlayContainer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_host) {
        return filterHost(event);
    }
    if (watched == m_dialog) {
        watchDialog(event);
    }
    return false;
}

// True for what is consumed. What nobody in the dialog wanted arrives here as well, and goes on.
bool OverlayContainer::filterHost(QEvent* event)
{
    if (!m_blocks) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (!isOutside(static_cast<QMouseEvent*>(event)->globalPos())) {
            return false;
        }
        tellHandler();
        return true;
    case QEvent::TouchBegin: {
        const auto points = static_cast<QTouchEvent*>(event)->touchPoints();
        if (points.isEmpty() || !isOutside(points.first().screenPos().toPoint())) {
            return false;
        }
        tellHandler();
        return true;
    }
    case QEvent::MouseButtonRelease:
        return isOutside(static_cast<QMouseEvent*>(event)->globalPos());
    case QEvent::Wheel:
        return isOutside(static_cast<QWheelEvent*>(event)->globalPosition().toPoint());
    case QEvent::Hide:
        m_catcher.uncover();
        return false;
    default:
        return false;
    }
}

void OverlayContainer::watchDialog(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        updateMask();
        break;
    case QEvent::Show:
        m_dialog->setFocus(Qt::OtherFocusReason);
        break;
    case QEvent::Hide:
        if (m_dialog->isHidden()) {
            m_host->hide();
        }
        break;
    default:
        break;
    }
}

void OverlayContainer::updateMask()
{
    if (!m_dialog) {
        return;
    }
    const bool whole = m_blocks && canShineThrough();
    const QRegion mask = whole ? QRegion() : QRegion(m_dialog->geometry());
    if (mask != m_host->mask()) {
        whole ? m_host->clearMask() : m_host->setMask(mask);
    }
}

void OverlayContainer::updateCatcher()
{
    if (m_blocks && m_dialog && m_host->isVisible() && !canShineThrough()) {
        const QWidget* const owner = m_host->parentWidget() ? m_host->parentWidget()->window() : m_host;
        m_catcher.cover(m_host->windowHandle()->screen(), owner->isVisible() ? owner : m_host);
    } else {
        m_catcher.uncover();
    }
}

bool OverlayContainer::isOutside(const QPoint& globalPosition) const
{
    const bool hasDialog = m_dialog && m_dialog->isVisible();
    return !hasDialog || !m_dialog->geometry().contains(m_host->mapFromGlobal(globalPosition));
}

// The handler may give the container another one.
void OverlayContainer::tellHandler()
{
    const auto handler = m_handler;
    if (handler) {
        handler();
    }
}

} // namespace Controls
