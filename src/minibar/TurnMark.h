#pragma once

#include <QTimer>

// A mark that stays until the event loop has run once more: "this has just closed". It keeps one click from
// doing two things.
class TurnMark final
{
public:
    TurnMark() { m_timer.setSingleShot(true); }

    void set() { m_timer.start(0); }
    [[nodiscard]] bool isSet() const { return m_timer.isActive(); }

private:
    QTimer m_timer;
};
