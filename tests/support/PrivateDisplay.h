#pragma once

#include "support/ChildProcess.h"

#include <QProcessEnvironment>
#include <QSize>
#include <QTemporaryDir>

namespace TestSupport {

// What the virtual screen is like when the X server starts.
struct ScreenSetup
{
    QSize size = QSize(1280, 800); // pixels; also the largest size that resizeScreen can give
    int depth = 24;                // bits a pixel
    int dpi = 96;                  // dots an inch
    bool composited = false;       // a compositing manager runs, so that windows can be seen through
};

// An X server of our own (Xvfb on a free display number), optionally with a window manager, and an empty home
// folder, so that nothing of the user's desktop reaches a test. All of it ends with the object.
class PrivateDisplay final
{
public:
    // `windowManager` names an entry of windowManagers().
    explicit PrivateDisplay(const QString& windowManager = QStringLiteral("icewm"),
                            const ScreenSetup& setup = {});
    ~PrivateDisplay();
    Q_DISABLE_COPY(PrivateDisplay)

    // Both are up and the window manager has announced itself; errorString() says why not.
    [[nodiscard]] bool start();
    [[nodiscard]] QString errorString() const { return m_error; }

    // As in DISPLAY, for example ":7".
    [[nodiscard]] QString name() const { return m_name; }
    // For programs that are to appear here: a clean environment, the xcb platform and the empty home folder.
    [[nodiscard]] QProcessEnvironment environment() const;

    // Gives the screen another size (RandR), at most the one it started with.
    [[nodiscard]] bool resizeScreen(const QSize& size);

private:
    [[nodiscard]] bool startServer();
    [[nodiscard]] bool startWindowManager();
    [[nodiscard]] bool startCompositingManager();
    [[nodiscard]] bool fail(const QString& reason);
    [[nodiscard]] bool randr(const QStringList& arguments) const;

    QString m_windowManager;
    ScreenSetup m_setup;
    QTemporaryDir m_home;
    ChildProcess m_server;
    ChildProcess m_manager;
    ChildProcess m_compositor;
    QString m_name;
    QString m_error;
    QVector<QSize> m_modes;
};

// The caller's environment without what ties a program to the desktop it was started from: display, session
// bus, Qt's own switches; with `home` as home folder and an English UTF-8 locale.
[[nodiscard]] QProcessEnvironment cleanEnvironment(const QString& home);

} // namespace TestSupport
