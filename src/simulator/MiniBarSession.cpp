#include "simulator/MiniBarSession.h"

#include "host/HelperHost.h"

namespace Simulator {

MiniBarSession::MiniBarSession(HelperHost& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
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
    const auto end = [this](const QString& reason) {
        m_barWanted = false;
        setStatus(reason);
        emit mainWindowWanted(true);
    };
    connect(&m_host, &HelperHost::failed, this, end);
    connect(&m_host, &HelperHost::closed, this, end);
}

void MiniBarSession::start()
{
    setStatus(tr("The mini bar is starting."));
    m_host.start();
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
    // A bar that comes up late after all must not stand beside the main window.
    if (m_host.bar() == HelperHost::Bar::Showing)
        restore();
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
