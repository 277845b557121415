#include "support/PrivateDisplay.h"

#include "support/Waiting.h"
#include "support/WindowManagers.h"
#include "support/XConnection.h"

#include <QFile>

namespace TestSupport {
namespace {

QString modeName(const QSize& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

// Window managers announce themselves before they are ready, and openbox loses a window that comes in
// between: only when one of ours has come and gone is it at work.
bool manages(const XConnection& connection)
{
    const WindowId window = connection.createWindow();
    const bool came = waitUntil([&] {
        connection.map(window);
        return connection.isManaged(window);
    });
    connection.destroy(window);
    return came && waitUntil([&] { return !connection.isManaged(window); });
}

} // namespace

PrivateDisplay::PrivateDisplay(const QString& windowManager, const ScreenSetup& setup)
    : m_windowManager(windowManager)
    , m_setup(setup)
    , m_modes{setup.size}
{}

PrivateDisplay::~PrivateDisplay()
{
    m_compositor.end();
    m_manager.end();
    m_server.end();
}

bool PrivateDisplay::start()
{
    if (!m_home.isValid())
        return fail(QStringLiteral("no temporary folder: ") + m_home.errorString());
    return startServer() && startWindowManager() && (!m_setup.composited || startCompositingManager());
}

bool PrivateDisplay::startServer()
{
    const QString screen =
        QStringLiteral("%1x%2x%3").arg(m_setup.size.width()).arg(m_setup.size.height()).arg(m_setup.depth);
    m_server.setProcessEnvironment(cleanEnvironment(m_home.path()));
    // -noreset: without it the server forgets added screen modes whenever its last client leaves.
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), screen, QStringLiteral("-dpi"), QString::number(m_setup.dpi),
                    QStringLiteral("-noreset"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    QByteArray number;
    const bool told = waitUntil([&] {
        number += m_server.readAllStandardOutput();
        return number.endsWith('\n') || m_server.state() == QProcess::NotRunning;
    });
    if (!told || !number.endsWith('\n'))
        return fail(QStringLiteral("Xvfb did not start: ") +
                    QString::fromLocal8Bit(m_server.readAllStandardError()));
    m_name = QLatin1Char(':') + QString::fromLatin1(number.trimmed());
    return true;
}

bool PrivateDisplay::startWindowManager()
{
    const WindowManager* manager = findWindowManager(m_windowManager);
    if (!manager)
        return fail(QStringLiteral("unknown window manager ") + m_windowManager);
    if (manager->arguments.isEmpty())
        return true;
    QFile configuration(m_home.filePath(QStringLiteral("window-manager.conf")));
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write(manager->configuration) < 0)
        return fail(configuration.errorString());
    configuration.close();
    QStringList arguments = manager->arguments;
    arguments.replaceInStrings(QStringLiteral("%1"), configuration.fileName());
    m_manager.setProcessEnvironment(environment());
    m_manager.start(manager->name, arguments);
    const XConnection connection(m_name);
    if (!connection.isValid())
        return fail(QStringLiteral("no connection to display ") + m_name);
    const auto ended = [this] { return m_manager.state() == QProcess::NotRunning; };
    if (!waitUntil([&] { return connection.hasWindowManager() || ended(); }) || ended() ||
        !manages(connection))
        return fail(manager->name + QStringLiteral(" did not start: ") +
                    QString::fromLocal8Bit(m_manager.readAllStandardError()));
    return true;
}

bool PrivateDisplay::startCompositingManager()
{
    const QString program = QStringLiteral("xcompmgr");
    m_compositor.setProcessEnvironment(environment());
    m_compositor.start(program, QStringList());
    const XConnection connection(m_name);
    const auto ended = [this] { return m_compositor.state() == QProcess::NotRunning; };
    if (!waitUntil([&] { return connection.hasCompositingManager() || ended(); }) || ended())
        return fail(program + QStringLiteral(" did not start: ") +
                    QString::fromLocal8Bit(m_compositor.readAllStandardError()));
    return true;
}

QProcessEnvironment PrivateDisplay::environment() const
{
    QProcessEnvironment environment = cleanEnvironment(m_home.path());
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    return environment;
}

bool PrivateDisplay::resizeScreen(const QSize& size)
{
    const QString output = QStringLiteral("screen"); // the name that Xvfb gives its one output
    const QString mode = modeName(size);
    if (!m_modes.contains(size)) {
        QStringList timings = {QStringLiteral("60")}; // MHz; any value does on a virtual screen
        for (const int extent : {size.width(), size.height()})
            for (const int porch : {0, 10, 20, 100})
                timings += QString::number(extent + porch);
        if (!randr(QStringList{QStringLiteral("--newmode"), mode} + timings) ||
            !randr({QStringLiteral("--addmode"), output, mode}))
            return false;
        m_modes += size;
    }
    return randr({QStringLiteral("--output"), output, QStringLiteral("--mode"), mode});
}

bool PrivateDisplay::randr(const QStringList& arguments) const
{
    ChildProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral("xrandr"), arguments);
    return process.waitForFinished(defaultDeadline) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

bool PrivateDisplay::fail(const QString& reason)
{
    m_error = reason;
    return false;
}

QProcessEnvironment cleanEnvironment(const QString& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString& name : names) {
        const bool tied = name.startsWith(QLatin1String("QT_")) || name.startsWith(QLatin1String("XDG_")) ||
                          name.startsWith(QLatin1String("DBUS_")) || name == QLatin1String("DISPLAY") ||
                          name == QLatin1String("WAYLAND_DISPLAY") || name == QLatin1String("XAUTHORITY") ||
                          name == QLatin1String("SESSION_MANAGER") ||
                          name == QLatin1String("AT_SPI_BUS_ADDRESS");
        if (tied)
            environment.remove(name);
    }
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home); // Qt warns when it has none
    // Without an address libdbus would start a session bus of its own, which nobody ends.
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}

} // namespace TestSupport
