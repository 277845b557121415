#include "controls/PressCatcher.h"

#include <QCoreApplication>
#include <QScreen>
#include <QWidget>
#include <QX11Info>

#include <cstdlib>
#include <memory>
#include <utility>
#include <xcb/xcb.h>

namespace Controls {
namespace {

constexpr xcb_button_t lastClickButton = 3; // those that follow are the wheel's

xcb_window_t createSurface(xcb_connection_t* x, xcb_window_t root)
{
    const xcb_window_t surface = xcb_generate_id(x);
    // In the order of the mask's bits. Window managers leave such a window alone.
    const uint32_t values[] = {1, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE};
    xcb_create_window(x, 0, surface, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    return surface;
}

// The child of the root that holds the window: the window itself, or what its window manager has put around
// it.
xcb_window_t frameOf(xcb_connection_t* x, xcb_window_t root, xcb_window_t window)
{
    while (true) {
        const std::unique_ptr<xcb_query_tree_reply_t, decltype(&std::free)> tree(
            xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr), &std::free);
        if (!tree || tree->parent == root || tree->parent == XCB_WINDOW_NONE)
            return window;
        window = tree->parent;
    }
}

// Puts the surface right behind the window. A window manager may put a frame around a window at any time,
// also between the question and the request that relies on the answer.
void stackBehind(xcb_connection_t* x, xcb_window_t root, xcb_window_t surface, xcb_window_t window)
{
    constexpr int attempts = 3;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const uint32_t values[] = {frameOf(x, root, window), XCB_STACK_MODE_BELOW};
        const auto request = xcb_configure_window_checked(
            x, surface, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values);
        xcb_generic_error_t* const error = xcb_request_check(x, request);
        if (!error)
            return;
        std::free(error);
    }
}

} // namespace

PressCatcher::PressCatcher(std::function<void()> pressed)
    : m_pressed(std::move(pressed))
{}

PressCatcher::~PressCatcher()
{
    if (m_surface != 0 && QX11Info::connection())
        xcb_destroy_window(QX11Info::connection(), m_surface);
}

void PressCatcher::cover(const QScreen* screen, const QWidget* window)
{
    if (!QX11Info::isPlatformX11())
        return;
    xcb_connection_t* const x = QX11Info::connection();
    const auto root = static_cast<xcb_window_t>(QX11Info::appRootWindow());
    if (m_surface == 0) {
        m_surface = createSurface(x, root);
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    // A screen's corner is the same in both kinds of pixels, its size is not.
    const QRect geometry = screen->geometry();
    const QSize size = (QSizeF(geometry.size()) * screen->devicePixelRatio()).toSize();
    const uint32_t values[] = {static_cast<uint32_t>(geometry.x()), static_cast<uint32_t>(geometry.y()),
                               static_cast<uint32_t>(size.width()), static_cast<uint32_t>(size.height())};
    xcb_configure_window(x, m_surface,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    stackBehind(x, root, m_surface, static_cast<xcb_window_t>(window->winId()));
    xcb_map_window(x, m_surface);
    xcb_flush(x);
    m_mapped = true;
    m_uncoverOnRelease = false;
}

void PressCatcher::uncover()
{
    if (m_buttonDown)
        m_uncoverOnRelease = true;
    else
        unmap();
}

void PressCatcher::unmap()
{
    m_uncoverOnRelease = false;
    if (!std::exchange(m_mapped, false) || !QX11Info::connection())
        return;
    xcb_unmap_window(QX11Info::connection(), m_surface);
    xcb_flush(QX11Info::connection());
}

bool PressCatcher::nativeEventFilter(const QByteArray& eventType, void* message, long* /*result*/)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    constexpr uint8_t sentByClient = 0x80;
    const int type = static_cast<const xcb_generic_event_t*>(message)->response_type & ~sentByClient;
    if (type != XCB_BUTTON_PRESS && type != XCB_BUTTON_RELEASE)
        return false;
    const auto* event = static_cast<const xcb_button_press_event_t*>(message); // a release has the same shape
    if (event->event != m_surface || m_surface == 0)
        return false;
    if (event->detail > lastClickButton)
        return true;
    m_buttonDown = type == XCB_BUTTON_PRESS;
    if (m_buttonDown)
        m_pressed();
    else if (m_uncoverOnRelease)
        unmap();
    return true;
}

} // namespace Controls
