#include "modeditors/WaveformProbe.h"

#include "modeditors/WaveformListing.h"

namespace {

constexpr int firstDelay = 0; // ms
constexpr int nextDelay = 1;  // ms

} // namespace

WaveformProbe::WaveformProbe(QObject* parent)
    : QObject(parent)
    , m_timer(this)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &WaveformProbe::proceed);
}

WaveformProbe::~WaveformProbe() = default;

void WaveformProbe::start(const QStringList& paths)
{
    m_queue = paths;
    m_timer.stop();
    if (!m_queue.isEmpty() && !m_paused) {
        m_timer.start(firstDelay);
    }
}

void WaveformProbe::stop()
{
    start({});
}

void WaveformProbe::setPaused(bool paused)
{
    if (paused != m_paused) {
        m_paused = paused;
        start(m_queue);
    }
}

void WaveformProbe::proceed()
{
    const QString path = m_queue.takeFirst();
    if (!m_queue.isEmpty()) {
        m_timer.start(nextDelay);
    }
    emit probed(path, waveformFacts(path));
}
