#include "reliability/TurnClock.h"

#include <QByteArray>
#include <QList>
#include <fcntl.h>
#include <unistd.h>

TurnClock::TurnClock()
    : m_statistics(::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC))
{
    start();
}

TurnClock::~TurnClock()
{
    if (m_statistics >= 0)
        ::close(m_statistics);
}

void TurnClock::start()
{
    m_waitedBefore = waited();
    m_clock.start();
}

double TurnClock::milliseconds() const
{
    constexpr double nanosecondsPerMillisecond = 1e6;
    return double(m_clock.nsecsElapsed() - (waited() - m_waitedBefore)) / nanosecondsPerMillisecond;
}

// "running waiting slices"
qint64 TurnClock::waited() const
{
    char text[128] = {};
    if (m_statistics < 0 || ::pread(m_statistics, text, sizeof(text) - 1, 0) <= 0)
        return 0;
    return QByteArray(text).split(' ').value(1).toLongLong();
}
