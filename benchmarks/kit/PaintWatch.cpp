#include "kit/PaintWatch.h"

#include "kit/Clocks.h"
#include "kit/Rounds.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace {

constexpr double patience = 10'000; // ms

} // namespace

PaintWatch::PaintWatch()
{
    QCoreApplication::instance()->installEventFilter(this);
}

double PaintWatch::timeOf(const std::function<void()>& action, const std::function<QWidget*()>& find)
{
    m_painted = false;
    m_target = nullptr;
    const double cpuBefore = threadCpuMs();
    const Stopwatch clock;
    action();
    m_target = find();
    require(m_target != nullptr, "nothing opened");
    while (!m_painted) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        require(clock.ms() < patience, "never painted");
    }
    const double time = clock.ms();
    m_lastCpu = threadCpuMs() - cpuBefore;
    return time;
}

bool PaintWatch::eventFilter(QObject* watched, QEvent* event)
{
    m_painted = m_painted || (event->type() == QEvent::Paint && m_target && watched == m_target);
    return false;
}
