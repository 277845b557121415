#pragma once

#include "support/XConnection.h"

#include <QColor>
#include <QObject>
#include <QPoint>
#include <functional>
#include <memory>

class QSocketNotifier;
struct xcb_connection_t;

// A user on a display whose hand and eye cost no time of their own: pointer and button go to the X server in
// one request each (XTEST), and the server says when anything on the screen has been drawn (DAMAGE).
class QuickHand final : public QObject
{
public:
    // As in DISPLAY. Ends the program when the display lacks an extension.
    explicit QuickHand(const QString& display);
    ~QuickHand() override;

    // Presses and releases the left button there; returns when the requests have been handed to the server.
    void click(const QPoint& position) const;
    void moveTo(const QPoint& position) const;

    [[nodiscard]] QColor colourAt(const QPoint& position) const { return m_eye.pixel(position); }
    // Handles events until the pixel has what `wanted` asks for; it is looked at after every drawing.
    [[nodiscard]] bool waitForColour(const QPoint& position,
                                     const std::function<bool(const QColor&)>& wanted);

    [[nodiscard]] const TestSupport::XConnection& eye() const { return m_eye; }

private:
    void takeDamage();

    TestSupport::XConnection m_eye;
    xcb_connection_t* m_connection = nullptr;
    quint32 m_root = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
