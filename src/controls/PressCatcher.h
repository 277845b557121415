#pragma once

#include <QAbstractNativeEventFilter>
#include <QtGlobal>
#include <functional>

class QScreen;
class QWidget;

namespace Controls {

// An unseen surface of the X server that takes the presses meant for whatever lies behind a window: for where
// a window that covers the screen cannot be seen through. Other windows of this program stay in front of it.
class PressCatcher final : public QAbstractNativeEventFilter
{
public:
    // Called for each press of a mouse button on the surface; the wheel is taken in silence.
    explicit PressCatcher(std::function<void()> pressed);
    ~PressCatcher() override;
    Q_DISABLE_COPY(PressCatcher)

    // Lays the surface over the screen, right behind `window`, which is shown. Nothing where there is no X
    // server.
    void cover(const QScreen* screen, const QWidget* window);
    // Takes it away; when a button is down on it, with the release, which nobody else is to get.
    void uncover();

    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

private:
    void unmap();

    std::function<void()> m_pressed;
    quint32 m_surface = 0; // an X window, made with the first use
    bool m_mapped = false;
    bool m_buttonDown = false;
    bool m_uncoverOnRelease = false;
};

} // namespace Controls
