#include "system/tour/Tour.h"

#include "support/Processes.h"
#include "support/Waiting.h"

using namespace TestSupport;

Tour::Tour(const QString& stage, const QDir& folder)
    : m_stage(stage)
    , m_folder(folder)
{}

bool Tour::begin()
{
    if (!m_folder.mkpath(QStringLiteral("."))) {
        m_error = QStringLiteral("cannot make the folder ") + m_folder.path();
        return false;
    }
    if (!m_display.start() || !m_accessibility.start()) {
        m_error = m_display.errorString() + m_accessibility.errorString();
        return false;
    }
    m_bar.emplace(m_display, m_accessibility);
    m_simulator.setProcessEnvironment(m_accessibility.environment());
    m_simulator.start(m_stage + QStringLiteral("/bin/TarvinelSimulator"),
                      {QStringLiteral("--print-traffic")});
    if (!m_simulator.waitForStarted(defaultDeadline)) {
        m_error = m_simulator.errorString();
        return false;
    }
    return true;
}

WindowFacts Tour::mainWindow() const
{
    const auto windows = desktop().mappedWindows(m_simulator.processId());
    return windows.isEmpty() ? WindowFacts() : windows.first();
}

bool Tour::clickInMainWindow(const QString& button) const
{
    const auto node =
        m_accessibility.waitForNode(m_simulator.processId(), QStringLiteral("push button"), button);
    return node && desktop().click(mainWindow().geometry.topLeft() + node->extents.center());
}

qint64 Tour::helperId() const
{
    return childrenOf(m_simulator.processId()).value(0);
}

void Tour::readTraffic()
{
    m_traffic += m_simulator.readAllStandardOutput();
}

void Tour::markTraffic()
{
    readTraffic();
    m_mark = m_traffic.size();
}

bool Tour::hasLine(const QByteArray& text)
{
    readTraffic();
    const int found = m_traffic.indexOf(text, m_mark);
    return found >= 0 && m_traffic.indexOf('\n', found) > found;
}

bool Tour::waitForLine(const QByteArray& text)
{
    return waitUntil([&] { return hasLine(text); });
}

bool Tour::picture(const QString& name) const
{
    const QRect screen(QPoint(0, 0), desktop().x().screenSize());
    return desktop().waitForCalm(screen) &&
           desktop().saveScreen(m_folder.filePath(name + QStringLiteral(".png")));
}
