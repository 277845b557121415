#pragma once

#include <QElapsedTimer>

// How long a turn of this thread's event loop took: the time that passed, less the time in which the thread
// was ready to run and other programs had the processors.
class TurnClock final
{
public:
    TurnClock();
    ~TurnClock();
    Q_DISABLE_COPY(TurnClock)

    void start();
    [[nodiscard]] double milliseconds() const; // since start()

private:
    [[nodiscard]] qint64 waited() const; // nanoseconds, since the thread began

    int m_statistics; // file of the kernel about this thread; -1 where there is none
    qint64 m_waitedBefore = 0;
    QElapsedTimer m_clock;
};
