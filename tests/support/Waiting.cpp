#include "support/Waiting.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace TestSupport {

bool waitUntil(const std::function<bool()>& condition, int deadline)
{
    constexpr int pollInterval = 10; // ms between two looks when no event wakes us earlier
    QElapsedTimer clock;
    clock.start();
    QTimer alarm;
    alarm.start(pollInterval);
    while (!condition()) {
        if (clock.hasExpired(deadline))
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace TestSupport
