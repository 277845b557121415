#pragma once

#include <QElapsedTimer>

class QEvent;

// Who double-clicks a button means the button: the second half of the click that has opened something is not
// for what lies under the pointer since.
class OpeningClick final
{
public:
    // A click has just opened something.
    void hasOpened();
    // It has closed again.
    void hasClosed() { m_sinceOpened.invalidate(); }
    // To be told of mouse events in their order. True for those that are to go no further.
    [[nodiscard]] bool takes(const QEvent& event);

private:
    QElapsedTimer m_sinceOpened; // invalid when the next press is an ordinary one
    bool m_swallowing = false;
};
