#pragma once

#include "support/XConnection.h"

#include <QPoint>
#include <QProcessEnvironment>

namespace TestSupport {

class PrivateDisplay;

// The user in front of a display: moves the pointer, clicks, drags and types through the X server (XTEST),
// and looks at windows and pixels. Positions are screen pixels.
class Desktop final
{
public:
    // The display must have been started.
    explicit Desktop(const PrivateDisplay& display);

    [[nodiscard]] const XConnection& x() const { return m_x; }

    // What the process shows now, bottom to top.
    [[nodiscard]] QVector<WindowFacts> mappedWindows(qint64 processId) const;
    // Waits until the process shows exactly `count` windows; bottom to top. Empty when it never does.
    [[nodiscard]] QVector<WindowFacts> waitForWindows(qint64 processId, int count) const;
    // Waits until the window stands exactly there.
    [[nodiscard]] bool waitForGeometry(WindowId window, const QRect& geometry) const;
    [[nodiscard]] bool waitForPixel(const QPoint& position, const QColor& colour) const;
    // Waits until two looks in a row at the area agree, so that a picture shows no half-drawn state.
    [[nodiscard]] bool waitForCalm(const QRect& area) const;

    [[nodiscard]] bool moveTo(const QPoint& position) const;
    [[nodiscard]] bool press(const QPoint& position) const;
    [[nodiscard]] bool release() const;
    [[nodiscard]] bool click(const QPoint& position) const;
    [[nodiscard]] bool doubleClick(const QPoint& position) const;
    // Presses at `from`, moves in `steps` to `to`, releases there.
    [[nodiscard]] bool drag(const QPoint& from, const QPoint& to, int steps = 8) const;
    // Key names as xdotool knows them: "Return", "Escape", "alt+F4".
    [[nodiscard]] bool key(const QString& name) const;
    [[nodiscard]] bool type(const QString& text) const;

    // The whole screen as PNG.
    [[nodiscard]] bool saveScreen(const QString& path) const;

private:
    [[nodiscard]] bool xdotool(const QStringList& arguments) const;

    QProcessEnvironment m_environment;
    XConnection m_x;
};

} // namespace TestSupport
