#include "kit/QuickHand.h"

#include "kit/Rounds.h"
#include "support/Waiting.h"

#include <QSocketNotifier>
#include <cstdlib>
#include <xcb/damage.h>
#include <xcb/xtest.h>

namespace {

constexpr quint8 leftButton = 1;

// The versions that we speak have to be told before anything else is asked.
bool hasExtensions(xcb_connection_t* connection)
{
    auto* const damage = xcb_damage_query_version_reply(
        connection, xcb_damage_query_version(connection, XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION),
        nullptr);
    auto* const test = xcb_test_get_version_reply(
        connection, xcb_test_get_version(connection, XCB_TEST_MAJOR_VERSION, XCB_TEST_MINOR_VERSION),
        nullptr);
    const bool both = damage && test;
    std::free(damage);
    std::free(test);
    return both;
}

} // namespace

QuickHand::QuickHand(const QString& display)
    : m_eye(display)
    , m_connection(xcb_connect(display.toLocal8Bit().constData(), nullptr))
{
    require(m_eye.isValid() && xcb_connection_has_error(m_connection) == 0, "no display");
    require(hasExtensions(m_connection), "the display lacks XTEST or DAMAGE");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    // Drawing into any window counts as drawing into the root.
    xcb_damage_create(m_connection, xcb_generate_id(m_connection), m_root,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(m_connection);
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &QuickHand::takeDamage);
}

QuickHand::~QuickHand()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

void QuickHand::moveTo(const QPoint& position) const
{
    xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root, qint16(position.x()),
                        qint16(position.y()), 0);
    xcb_flush(m_connection);
}

void QuickHand::click(const QPoint& position) const
{
    xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root, qint16(position.x()),
                        qint16(position.y()), 0);
    for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
        xcb_test_fake_input(m_connection, quint8(type), leftButton, XCB_CURRENT_TIME, m_root, 0, 0, 0);
    xcb_flush(m_connection);
}

bool QuickHand::waitForColour(const QPoint& position, const std::function<bool(const QColor&)>& wanted)
{
    return TestSupport::waitUntil([&] { return wanted(colourAt(position)); });
}

// What was drawn does not matter: whoever waits looks again.
void QuickHand::takeDamage()
{
    while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection))
        std::free(event);
}
