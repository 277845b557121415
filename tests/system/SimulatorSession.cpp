#include "system/SimulatorSession.h"

#include "support/Processes.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <QJsonDocument>

using namespace TestSupport;

SimulatorSession::SimulatorSession(const PrivateDisplay& display, const Accessibility& accessibility)
    : m_bar(display, accessibility)
{
    m_simulator.setProcessEnvironment(accessibility.environment());
}

bool SimulatorSession::start(const QString& stage, const QStringList& arguments)
{
    m_simulator.start(stage + QStringLiteral("/bin/TarvinelSimulator"),
                      QStringList(QStringLiteral("--print-traffic")) + arguments);
    return m_simulator.waitForStarted(defaultDeadline);
}

qint64 SimulatorSession::helperId() const
{
    return childrenOf(m_simulator.processId()).value(0);
}

void SimulatorSession::readTraffic()
{
    QCoreApplication::processEvents(); // or else what has come may still be in the pipe
    m_traffic += m_simulator.readAllStandardOutput();
}

void SimulatorSession::markTraffic()
{
    readTraffic();
    m_mark = m_traffic.size();
}

bool SimulatorSession::hasLine(const QByteArray& text)
{
    readTraffic();
    const int found = m_traffic.indexOf(text, m_mark);
    return found >= 0 && m_traffic.indexOf('\n', found) > found;
}

bool SimulatorSession::waitForLine(const QByteArray& text)
{
    return waitUntil([&] { return hasLine(text); });
}

QVector<QJsonObject> SimulatorSession::payloads(const QByteArray& beginning)
{
    readTraffic();
    QVector<QJsonObject> found;
    QList<QByteArray> lines = m_traffic.mid(m_mark).split('\n');
    lines.removeLast(); // it is not complete
    for (const QByteArray& line : qAsConst(lines)) {
        const int at = line.indexOf(beginning + ' ');
        if (at >= 0)
            found += QJsonDocument::fromJson(line.mid(at + beginning.size() + 1)).object();
    }
    return found;
}
