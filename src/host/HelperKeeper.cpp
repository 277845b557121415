#include "host/HelperKeeper.h"

#include "host/HelperHost.h"
#include "host/HostLog.h"

HelperKeeper::HelperKeeper(HelperHost& host, const RestartSchedule& schedule, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_schedule(schedule)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &HelperKeeper::start);
    connect(&m_host, &HelperHost::ready, this, &HelperKeeper::onReady);
    connect(&m_host, &HelperHost::failed, this, &HelperKeeper::onEnded);
    connect(&m_host, &HelperHost::closed, this, &HelperKeeper::onEnded);
}

void HelperKeeper::start()
{
    m_pause.stop();
    m_host.start();
    // A process that could not be ended is in the way.
    if (m_host.state() == HelperHost::State::Idle && !isWaiting())
        plan();
}

void HelperKeeper::onReady()
{
    m_pause.stop();
    m_readyFor.start();
}

void HelperKeeper::onEnded()
{
    if (m_readyFor.isValid() && m_readyFor.hasExpired(m_schedule.stable.count()))
        m_next = 0;
    m_readyFor.invalidate();
    if (!m_host.wasEndWanted())
        plan();
}

void HelperKeeper::plan()
{
    if (m_schedule.pauses.empty())
        return;
    const auto pause = m_schedule.pauses[m_next];
    if (m_next + 1 < m_schedule.pauses.size())
        ++m_next;
    qCWarning(Host::hostLog).noquote()
        << QStringLiteral("The mini bar starts again in %1 ms.").arg(pause.count());
    m_pause.start(pause);
}
