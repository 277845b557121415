#include "system/OtherProgram.h"

#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

using namespace TestSupport;

OtherProgram::OtherProgram(const PrivateDisplay& display)
    : m_desktop(display)
{
    m_process.setProcessEnvironment(display.environment());
}

bool OtherProgram::begin()
{
    m_process.start(QStringLiteral(TYPING_WITNESS), QStringList());
    const auto windows = m_desktop.waitForWindows(m_process.processId(), 1);
    if (windows.isEmpty())
        return false;
    m_window = windows.first().id;
    return waitUntil([this] { return m_desktop.x().activeWindow() == m_window; });
}

QRect OtherProgram::geometry() const
{
    const auto facts = m_desktop.x().facts(m_window);
    return facts ? facts->geometry : QRect();
}

bool OtherProgram::waitForText(const QByteArray& text)
{
    return waitUntil([&] {
        m_said += m_process.readAllStandardOutput();
        const int last = m_said.lastIndexOf("text ");
        return last >= 0 && m_said.mid(last).startsWith("text " + text + '\n');
    });
}
