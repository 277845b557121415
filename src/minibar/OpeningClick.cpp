#include "minibar/OpeningClick.h"

#include <QApplication>
#include <QEvent>
#include <utility>

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
        m_swallowing =
            m_sinceOpened.isValid() && !m_sinceOpened.hasExpired(QApplication::doubleClickInterval());
        m_sinceOpened.invalidate();
        return m_swallowing;
    case QEvent::MouseButtonRelease:
        return std::exchange(m_swallowing, false);
    default:
        return false;
    }
}
