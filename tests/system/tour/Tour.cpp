#include "system/tour/Tour.h"

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
    m_session.emplace(m_display, m_accessibility);
    if (!m_session->start(m_stage)) {
        m_error = simulator().errorString();
        return false;
    }
    return true;
}

WindowFacts Tour::mainWindow() const
{
    const auto windows = desktop().mappedWindows(m_session->simulator().processId());
    return windows.isEmpty() ? WindowFacts() : windows.first();
}

bool Tour::clickInMainWindow(const QString& button) const
{
    const auto node = m_accessibility.waitForNode(m_session->simulator().processId(),
                                                  QStringLiteral("push button"), button);
    return node && desktop().click(mainWindow().geometry.topLeft() + node->extents.center());
}

bool Tour::picture(const QString& name) const
{
    const QRect screen(QPoint(0, 0), desktop().x().screenSize());
    return desktop().waitForCalm(screen) &&
           desktop().saveScreen(m_folder.filePath(name + QStringLiteral(".png")));
}
