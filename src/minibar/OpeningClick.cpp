#include "minibar/OpeningClick.h"

#include <QEvent>
#include <utility>

namespace {

// Shorter than the interval of the desktop: a second click that follows a look at what has opened is meant.
constexpr int secondClickMs = 200;

} // namespace

void OpeningClick::hasOpened()
{
    m_sinceOpened.start();
    m_swallowing = false;
}

bool OpeningClick::takes(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        m_sinceOpened.invalidate();
        m_swallowing = false;
        return false;
    case QEvent::MouseButtonDblClick:
        m_swallowing = m_sinceOpened.isValid() && !m_sinceOpened.hasExpired(secondClickMs);
        m_sinceOpened.invalidate();
        return m_swallowing;
    case QEvent::MouseButtonRelease:
        return std::exchange(m_swallowing, false);
    default:
        return false;
    }
}
