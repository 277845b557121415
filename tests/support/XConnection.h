#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>
#include <optional>

struct xcb_connection_t;

namespace TestSupport {

using WindowId = quint32;

// What the X server knows of one window.
struct WindowFacts
{
    WindowId id = 0;
    QString title;
    QRect geometry;      // in screen pixels, without the window manager's frame
    bool mapped = false; // it and all its ancestors
    bool overrideRedirect = false;
    bool acceptsFocus = true;        // WM_HINTS input
    double opacity = 1.0;            // _NET_WM_WINDOW_OPACITY
    QStringList states;              // atoms of _NET_WM_STATE
    QStringList types;               // atoms of _NET_WM_WINDOW_TYPE
    std::optional<quint32> userTime; // _NET_WM_USER_TIME; 0 asks not to be focused when shown
};

// Reads a display: windows, properties, pixels. Survives the end of the X server (everything reads as empty).
class XConnection final
{
public:
    explicit XConnection(const QString& display);
    ~XConnection();
    Q_DISABLE_COPY(XConnection)

    [[nodiscard]] bool isValid() const;
    // A window manager has announced itself (_NET_SUPPORTING_WM_CHECK).
    [[nodiscard]] bool hasWindowManager() const;

    // A compositing manager has announced itself (_NET_WM_CM_S0).
    [[nodiscard]] bool hasCompositingManager() const;

    // Client windows of the process, mapped or not, bottom to top.
    [[nodiscard]] QVector<WindowFacts> windowsOfProcess(qint64 processId) const;
    // Empty when there is no such window.
    [[nodiscard]] std::optional<WindowFacts> facts(WindowId window) const;
    // Whether `upper` stands above `lower` on the screen.
    [[nodiscard]] bool isAbove(WindowId upper, WindowId lower) const;

    // _NET_ACTIVE_WINDOW of the root; 0 if none.
    [[nodiscard]] WindowId activeWindow() const;
    [[nodiscard]] QPoint pointerPosition() const;
    [[nodiscard]] QSize screenSize() const;
    // The area without panels (_NET_WORKAREA); the whole screen if nobody says.
    [[nodiscard]] QRect workArea() const;

    // What the screen shows. Null when the area is not wholly on the screen.
    [[nodiscard]] QImage grab(const QRect& area) const;
    [[nodiscard]] QColor pixel(const QPoint& position) const;

    // Asks the window manager to close the window, as its menu or Alt+F4 would.
    void requestClose(WindowId window) const;
    // What a window manager says to a window that is to close; there need not be one.
    void tellToClose(WindowId window) const;
    // A tiny window of our own, to see what becomes of it. map() asks for it to be shown.
    [[nodiscard]] WindowId createWindow() const;
    void map(WindowId window) const;
    // Takes away any window. A window manager takes that for its program's wish.
    void unmap(WindowId window) const;
    void destroy(WindowId window) const;
    // Whether the window manager lists it among its windows (_NET_CLIENT_LIST).
    [[nodiscard]] bool isManaged(WindowId window) const;
    // Sets a text property of the root window.
    void setRootText(const char* property, const QByteArray& text) const;

private:
    [[nodiscard]] quint32 atom(const char* name) const;
    [[nodiscard]] QString atomName(quint32 atom) const;
    [[nodiscard]] QVector<quint32> words(WindowId window, const char* property) const;
    [[nodiscard]] QByteArray bytes(WindowId window, const char* property) const;
    [[nodiscard]] QStringList atomNames(WindowId window, const char* property) const;
    [[nodiscard]] QVector<WindowId> children(WindowId window) const;
    [[nodiscard]] WindowId topLevelAncestor(WindowId window) const;
    void collect(WindowId window, qint64 processId, QVector<WindowFacts>& found) const;
    void sendToRoot(WindowId window, const char* message, quint32 first, quint32 second) const;

    xcb_connection_t* m_connection = nullptr;
    WindowId m_root = 0;
};

} // namespace TestSupport
