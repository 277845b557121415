#include "system/BarSession.h"

using namespace TestSupport;

BarSession::BarSession(const PrivateDisplay& display, const Accessibility& accessibility,
                       const QString& program)
    : BarView(display, accessibility)
    , m_helper(accessibility.environment(), program)
{}

bool BarSession::connect()
{
    return m_helper.start(m_main.helperArguments()) && m_main.waitForHandshake();
}

bool BarSession::begin(const QPoint& anchor)
{
    if (!connect() || !m_main.show(anchor) || !attach(m_helper.processId()))
        return false;
    return anchor.x() < 0 || waitUntil([&] { return geometry().topRight() == anchor; });
}
