#include "support/XConnection.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace TestSupport {
namespace {

struct FreeReply
{
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using ReplyPointer = std::unique_ptr<Reply, FreeReply>;

template <typename Reply>
ReplyPointer<Reply> owned(Reply* reply)
{
    return ReplyPointer<Reply>(reply);
}

constexpr double opaque = 0xffffffffU; // _NET_WM_WINDOW_OPACITY of an opaque window

} // namespace

XConnection::XConnection(const QString& display)
    : m_connection(xcb_connect(display.toLatin1().constData(), nullptr))
{
    if (isValid())
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
}

XConnection::~XConnection()
{
    xcb_disconnect(m_connection);
}

bool XConnection::isValid() const
{
    return xcb_connection_has_error(m_connection) == 0;
}

bool XConnection::hasWindowManager() const
{
    return !words(m_root, "_NET_SUPPORTING_WM_CHECK").isEmpty();
}

bool XConnection::hasCompositingManager() const
{
    const auto reply = owned(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, atom("_NET_WM_CM_S0")), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

quint32 XConnection::atom(const char* name) const
{
    const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<quint16>(std::strlen(name)), name);
    const auto reply = owned(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : 0;
}

QString XConnection::atomName(quint32 atom) const
{
    const auto reply =
        owned(xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    if (!reply)
        return {};
    return QString::fromLatin1(xcb_get_atom_name_name(reply.get()),
                               xcb_get_atom_name_name_length(reply.get()));
}

QVector<quint32> XConnection::words(WindowId window, const char* property) const
{
    constexpr quint32 limit = 256;
    const auto cookie =
        xcb_get_property(m_connection, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, limit);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    QVector<quint32> result;
    if (!reply || reply->format != 32)
        return result;
    result.resize(xcb_get_property_value_length(reply.get()) / 4);
    if (!result.isEmpty())
        std::memcpy(result.data(), xcb_get_property_value(reply.get()), size_t(result.size()) * 4);
    return result;
}

QByteArray XConnection::bytes(WindowId window, const char* property) const
{
    constexpr quint32 limit = 1024;
    const auto cookie =
        xcb_get_property(m_connection, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, limit);
    const auto reply = owned(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 8)
        return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

QStringList XConnection::atomNames(WindowId window, const char* property) const
{
    QStringList names;
    const QVector<quint32> atoms = words(window, property);
    for (const quint32 value : atoms)
        names += atomName(value);
    return names;
}

QVector<WindowId> XConnection::children(WindowId window) const
{
    const auto reply =
        owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    QVector<WindowId> result;
    if (!reply)
        return result;
    const xcb_window_t* first = xcb_query_tree_children(reply.get());
    for (int i = 0; i < xcb_query_tree_children_length(reply.get()); ++i)
        result += first[i];
    return result;
}

void XConnection::collect(WindowId window, qint64 processId, QVector<WindowFacts>& found) const
{
    const QVector<quint32> owner = words(window, "_NET_WM_PID");
    if (!owner.isEmpty() && owner.first() == processId) {
        if (const auto known = facts(window))
            found += *known;
        return;
    }
    const QVector<WindowId> below = children(window);
    for (const WindowId child : below)
        collect(child, processId, found);
}

QVector<WindowFacts> XConnection::windowsOfProcess(qint64 processId) const
{
    QVector<WindowFacts> found;
    collect(m_root, processId, found);
    return found;
}

std::optional<WindowFacts> XConnection::facts(WindowId window) const
{
    const auto attributes = owned(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    const auto size =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    const auto origin = owned(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, window, m_root, 0, 0), nullptr));
    if (!attributes || !size || !origin)
        return std::nullopt;
    WindowFacts result;
    result.id = window;
    result.title = QString::fromUtf8(bytes(window, "_NET_WM_NAME"));
    result.geometry = QRect(origin->dst_x, origin->dst_y, size->width, size->height);
    result.mapped = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    result.overrideRedirect = attributes->override_redirect != 0;
    const QVector<quint32> hints = words(window, "WM_HINTS");
    constexpr quint32 inputHint = 1;
    if (hints.size() > 1 && (hints[0] & inputHint) != 0)
        result.acceptsFocus = hints[1] != 0;
    const QVector<quint32> opacity = words(window, "_NET_WM_WINDOW_OPACITY");
    if (!opacity.isEmpty())
        result.opacity = opacity.first() / opaque;
    result.states = atomNames(window, "_NET_WM_STATE");
    result.types = atomNames(window, "_NET_WM_WINDOW_TYPE");
    const QVector<quint32> timeKeeper = words(window, "_NET_WM_USER_TIME_WINDOW");
    const QVector<quint32> userTime = words(timeKeeper.value(0, window), "_NET_WM_USER_TIME");
    if (!userTime.isEmpty())
        result.userTime = userTime.first();
    return result;
}

WindowId XConnection::topLevelAncestor(WindowId window) const
{
    for (WindowId current = window;;) {
        const auto reply =
            owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, current), nullptr));
        if (!reply || reply->parent == m_root || reply->parent == XCB_NONE)
            return current;
        current = reply->parent;
    }
}

bool XConnection::isAbove(WindowId upper, WindowId lower) const
{
    const QVector<WindowId> order = children(m_root);
    return order.indexOf(topLevelAncestor(upper)) > order.indexOf(topLevelAncestor(lower));
}

WindowId XConnection::activeWindow() const
{
    return words(m_root, "_NET_ACTIVE_WINDOW").value(0);
}

QPoint XConnection::pointerPosition() const
{
    const auto reply =
        owned(xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    return reply ? QPoint(reply->root_x, reply->root_y) : QPoint(-1, -1);
}

QSize XConnection::screenSize() const
{
    const auto reply =
        owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_root), nullptr));
    return reply ? QSize(reply->width, reply->height) : QSize();
}

QRect XConnection::workArea() const
{
    const QVector<quint32> area = words(m_root, "_NET_WORKAREA");
    if (area.size() < 4)
        return QRect(QPoint(0, 0), screenSize());
    return QRect(int(area[0]), int(area[1]), int(area[2]), int(area[3]));
}

QImage XConnection::grab(const QRect& area) const
{
    const auto cookie = xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, qint16(area.x()),
                                      qint16(area.y()), quint16(area.width()), quint16(area.height()), ~0U);
    const auto reply = owned(xcb_get_image_reply(m_connection, cookie, nullptr));
    constexpr int bytesPerPixel = 4; // of the 24 bit deep screens that are used here
    if (!reply || xcb_get_image_data_length(reply.get()) != area.width() * area.height() * bytesPerPixel)
        return {};
    return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(), QImage::Format_RGB32).copy();
}

QColor XConnection::pixel(const QPoint& position) const
{
    const QImage image = grab(QRect(position, QSize(1, 1)));
    return image.isNull() ? QColor() : image.pixelColor(0, 0);
}

void XConnection::sendToRoot(WindowId window, const char* message, quint32 first, quint32 second) const
{
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    event.data.data32[0] = first;
    event.data.data32[1] = second;
    constexpr quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_send_event(m_connection, 0, m_root, mask, reinterpret_cast<const char*>(&event));
    xcb_flush(m_connection);
}

WindowId XConnection::createWindow() const
{
    const WindowId window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_flush(m_connection);
    return window;
}

void XConnection::map(WindowId window) const
{
    xcb_map_window(m_connection, window);
    xcb_flush(m_connection);
}

void XConnection::unmap(WindowId window) const
{
    xcb_unmap_window(m_connection, window);
    xcb_flush(m_connection);
}

void XConnection::destroy(WindowId window) const
{
    xcb_destroy_window(m_connection, window);
    xcb_flush(m_connection);
}

bool XConnection::isManaged(WindowId window) const
{
    return words(m_root, "_NET_CLIENT_LIST").contains(window);
}

void XConnection::setRootText(const char* property, const QByteArray& text) const
{
    constexpr quint8 bitsPerElement = 8;
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_root, atom(property), XCB_ATOM_STRING,
                        bitsPerElement, quint32(text.size()), text.constData());
    (void)atom(property); // a round trip: the server has it now
}

void XConnection::tellToClose(WindowId window) const
{
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}

void XConnection::requestClose(WindowId window) const
{
    constexpr quint32 sourcePager = 2;
    sendToRoot(window, "_NET_CLOSE_WINDOW", XCB_CURRENT_TIME, sourcePager);
}

} // namespace TestSupport
