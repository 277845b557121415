#include "minibar/PresenceCheck.h"

#include <QWidget>
#include <QWindow>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto patience = 500ms; // by then a window manager has done what it was told
constexpr int mostTries = 3;

} // namespace

PresenceCheck::PresenceCheck(const QWidget& window, std::function<void()> showAgain)
    : m_window(window)
    , m_showAgain(std::move(showAgain))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(patience);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
}

void PresenceCheck::begin()
{
    m_triesLeft = mostTries;
    m_timer.start();
}

void PresenceCheck::look()
{
    const QWindow* const handle = m_window.windowHandle();
    if (!m_window.isVisible() || !handle || handle->isExposed() || m_triesLeft == 0)
        return;
    --m_triesLeft;
    m_showAgain();
    m_timer.start();
}
