#include "simulator/MiniBarSession.h"

#include "host/HelperHost.h"

namespace Simulator {

MiniBarSession::MiniBarSession(HelperHost& host, const RestartSchedule& schedule, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_keeper(host, schedule) // knows of an end before this object does
    , m_status(tr("The mini bar is not running."))
{
    connect(&m_host, &HelperHost::ready, this, [this] {
        setStatus(tr("The mini bar is ready."));
        if (m_barWanted)
            showBar();
    });
    connect(&m_host, &HelperHost::visible, this, [this] { setStatus(tr("The mini bar is shown.")); });
    connect(&m_host, &HelperHost::hidden, this, [this] {
        setStatus(tr("The mini bar is ready."));
        emit mainWindowWanted(true);
    });
    connect(&m_host, &HelperHost::restoreRequested, this, &MiniBarSession::restore);
    connect(&m_host, &HelperHost::acknowledgementOverdue, this, &MiniBarSession::onOverdue);
    connect(&m_host, &HelperHost::failed, this, &MiniBarSession::onEnded);
    connect(&m_host, &HelperHost::closed, this, &MiniBarSession::onEnded);
}

void MiniBarSession::start()
{
    setStatus(tr("The mini bar is starting."));
    m_keeper.start();
}

void MiniBarSession::minimise(const std::optional<QPoint>& anchor)
{
    m_barWanted = true;
    m_anchor = anchor;
    if (m_host.isReady())
        showBar();
    else if (m_host.state() == HelperHost::State::Idle)
        start();
}

void MiniBarSession::showBar()
{
    if (m_host.sendShow(m_anchor))
        emit mainWindowWanted(false);
}

void MiniBarSession::restore()
{
    m_barWanted = false;
    m_host.sendHide();
}

void MiniBarSession::onOverdue()
{
    setStatus(tr("The mini bar does not answer."));
    // A bar that comes to life late after all must not stand beside the main window.
    if (m_barWanted)
        restore();
    emit mainWindowWanted(true);
}

void MiniBarSession::onEnded(const QString& reason)
{
    constexpr double millisecondsPerSecond = 1000;
    m_barWanted = false;
    const double pause = static_cast<double>(m_keeper.pause().count()) / millisecondsPerSecond;
    setStatus(m_keeper.isWaiting() ? tr("%1 The mini bar starts again in %2 s.").arg(reason).arg(pause)
                                   : reason);
    emit mainWindowWanted(true);
}

void MiniBarSession::setStatus(const QString& status)
{
    if (m_status == status)
        return;
    m_status = status;
    emit statusChanged(status);
}

} // namespace Simulator
