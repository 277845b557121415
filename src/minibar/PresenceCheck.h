#pragma once

#include <QTimer>

#include <functional>

class QWidget;

// A window manager that is told at nearly the same time to take a window away and to bring it back may do
// only the first; the program then believes in a window that nobody sees. After each show this looks whether
// the window has come, and if not has it shown again, a few times at most. The window must outlive it.
class PresenceCheck final
{
public:
    PresenceCheck(const QWidget& window, std::function<void()> showAgain);
    Q_DISABLE_COPY(PresenceCheck)

    void begin();
    void stop() { m_timer.stop(); }

private:
    void look();

    const QWidget& m_window;
    std::function<void()> m_showAgain;
    QTimer m_timer;
    int m_triesLeft = 0;
};
