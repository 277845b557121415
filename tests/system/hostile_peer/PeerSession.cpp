#include "system/hostile_peer/PeerSession.h"

#include "support/Waiting.h"

#include <QJsonArray>

using namespace TestSupport;

namespace {

constexpr QPoint anchor(900, 100);   // top-right corner of the bar
constexpr QPoint rfButton(-67, 38);  // centre of the RF button, seen from the anchor
constexpr int floodDeadline = 60000; // ms, for a helper that has a flood to work through

} // namespace

PeerSession::PeerSession(bool withDisplay)
{
    if (withDisplay)
        m_display = std::make_unique<PrivateDisplay>();
}

bool PeerSession::begin()
{
    if (m_display) {
        if (!m_display->start()) {
            qCritical("%s", qPrintable(m_display->errorString()));
            return false;
        }
        m_desktop = std::make_unique<Desktop>(*m_display);
        m_helper = std::make_unique<HelperProcess>(m_display->environment());
    } else {
        m_helper = std::make_unique<HelperProcess>();
    }
    return m_helper->start(m_main.helperArguments()) && m_main.waitForHandshake();
}

void PeerSession::sendPieces(const QVector<QByteArray>& pieces)
{
    for (const QByteArray& piece : pieces) {
        m_main.sendBytes(piece);
        if (!m_main.waitUntilRead())
            return; // the helper has gone; the report tells
    }
}

void PeerSession::showBar()
{
    if (!m_main.show(anchor) || m_desktop->waitForWindows(m_helper->processId(), 1).isEmpty())
        fail(QStringLiteral("the bar was not shown"));
}

int PeerSession::clickRf()
{
    const int before = m_main.requests().size();
    if (!m_desktop->click(anchor + rfButton) || !m_main.waitForRequests(before + 1)) {
        fail(QStringLiteral("a click on RF made no request"));
        return 0;
    }
    return m_main.requests().last().value(QStringLiteral("id")).toInt();
}

void PeerSession::waitForLog(const QByteArray& text)
{
    if (!waitUntil([&] { return m_helper->errorOutput().contains(text); }))
        fail(QStringLiteral("never logged: ") + QString::fromUtf8(text));
}

void PeerSession::waitForDisconnect()
{
    if (!m_main.waitForDisconnect())
        fail(QStringLiteral("the helper has not hung up"));
}

QJsonObject PeerSession::finish()
{
    // A helper that works through a flood answers late; one that has hung up never does. No behaviour ends
    // with this sequence of commands, so that its answers are told from earlier ones.
    m_main.sendBytes("SHOW_MINIBAR\nSHOW_MINIBAR\nHIDE_MINIBAR\n");
    const auto answered = [this] {
        const auto& lines = m_main.lines();
        const int count = lines.size();
        return count > 4 && lines[count - 1].raw == "HIDDEN" && lines[count - 2].raw == "VISIBLE" &&
               lines[count - 3].raw == "VISIBLE";
    };
    if (!waitUntil([&] { return !m_main.isConnected() || answered(); }, floodDeadline))
        fail(QStringLiteral("neither answered nor ended"));
    const bool answers = m_main.isConnected() && answered();
    m_main.sendLine("SHUTDOWN");
    const auto exitCode = m_helper->waitForExitCode();

    QJsonArray requests;
    const auto sent = m_main.requests();
    for (const QJsonObject& request : sent)
        requests += request;
    QJsonArray log;
    const auto lines = m_helper->errorOutput().split('\n');
    for (const QByteArray& line : lines)
        if (!line.isEmpty())
            log += QString::fromUtf8(line.left(400));
    return {{QStringLiteral("answers"), answers},
            {QStringLiteral("exitCode"), exitCode ? QJsonValue(*exitCode) : QJsonValue()},
            {QStringLiteral("visible"), m_main.count("VISIBLE") - (answers ? 2 : 0)},
            {QStringLiteral("hidden"), m_main.count("HIDDEN") - (answers ? 1 : 0)},
            {QStringLiteral("requests"), requests},
            {QStringLiteral("log"), log},
            {QStringLiteral("failures"), m_failures}};
}

void PeerSession::fail(const QString& reason)
{
    m_failures += reason;
}
