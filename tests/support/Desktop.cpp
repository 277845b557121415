#include "support/Desktop.h"

#include "support/ChildProcess.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

namespace TestSupport {
namespace {

QStringList moveCommand(const QPoint& position)
{
    return {QStringLiteral("mousemove"), QString::number(position.x()), QString::number(position.y())};
}

QStringList buttonCommand(const QString& verb)
{
    return {verb, QStringLiteral("1")};
}

} // namespace

Desktop::Desktop(const PrivateDisplay& display)
    : m_environment(display.environment())
    , m_x(display.name())
{}

QVector<WindowFacts> Desktop::mappedWindows(qint64 processId) const
{
    QVector<WindowFacts> mapped;
    const QVector<WindowFacts> all = m_x.windowsOfProcess(processId);
    for (const WindowFacts& window : all)
        if (window.mapped)
            mapped += window;
    return mapped;
}

QVector<WindowFacts> Desktop::waitForWindows(qint64 processId, int count) const
{
    QVector<WindowFacts> windows;
    const bool found = waitUntil([&] {
        windows = mappedWindows(processId);
        return windows.size() == count;
    });
    return found ? windows : QVector<WindowFacts>();
}

bool Desktop::waitForGeometry(WindowId window, const QRect& geometry) const
{
    return waitUntil([&] {
        const auto facts = m_x.facts(window);
        return facts && facts->mapped && facts->geometry == geometry;
    });
}

bool Desktop::waitForPixel(const QPoint& position, const QColor& colour) const
{
    return waitUntil([&] { return m_x.pixel(position) == colour; });
}

bool Desktop::waitForCalm(const QRect& area) const
{
    QImage last;
    return waitUntil([&] {
        const QImage now = m_x.grab(area);
        const bool calm = !now.isNull() && now == last;
        last = now;
        return calm;
    });
}

bool Desktop::moveTo(const QPoint& position) const
{
    return xdotool(moveCommand(position)) && waitUntil([&] { return m_x.pointerPosition() == position; });
}

bool Desktop::press(const QPoint& position) const
{
    return moveTo(position) && xdotool(buttonCommand(QStringLiteral("mousedown")));
}

bool Desktop::release() const
{
    return xdotool(buttonCommand(QStringLiteral("mouseup")));
}

bool Desktop::click(const QPoint& position) const
{
    return moveTo(position) && xdotool(buttonCommand(QStringLiteral("click")));
}

bool Desktop::doubleClick(const QPoint& position) const
{
    return moveTo(position) &&
           xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                    QStringLiteral("--delay"), QStringLiteral("20"), QStringLiteral("1")});
}

bool Desktop::drag(const QPoint& from, const QPoint& to, int steps) const
{
    QStringList commands = moveCommand(from) + buttonCommand(QStringLiteral("mousedown"));
    for (int step = 1; step <= steps; ++step)
        commands += moveCommand(from + (to - from) * step / steps);
    return xdotool(commands + buttonCommand(QStringLiteral("mouseup")));
}

bool Desktop::key(const QString& name) const
{
    return xdotool({QStringLiteral("key"), QStringLiteral("--"), name});
}

bool Desktop::type(const QString& text) const
{
    return xdotool(
        {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("1"), QStringLiteral("--"), text});
}

bool Desktop::saveScreen(const QString& path) const
{
    const QImage screen = m_x.grab(QRect(QPoint(0, 0), m_x.screenSize()));
    return !screen.isNull() && screen.save(path, "PNG");
}

bool Desktop::xdotool(const QStringList& arguments) const
{
    ChildProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral("xdotool"), arguments);
    return process.waitForFinished(defaultDeadline) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace TestSupport
