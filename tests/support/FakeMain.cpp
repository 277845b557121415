#include "support/FakeMain.h"

#include "support/Waiting.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QUuid>
#include <algorithm>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace TestSupport {

FakeMain::FakeMain(QObject* parent)
    : QObject(parent)
    , m_token(QUuid::createUuid().toString(QUuid::Id128))
{
    connect(&m_server, &QLocalServer::newConnection, this, &FakeMain::accept);
    const QString name = QStringLiteral("tarvinel-test-") + QUuid::createUuid().toString(QUuid::Id128);
    if (!m_server.listen(name))
        qCritical("The fake main process cannot listen: %s", qPrintable(m_server.errorString()));
}

FakeMain::~FakeMain() = default;

QStringList FakeMain::helperArguments() const
{
    return {QStringLiteral("--tarvinel-minibar-helper"),
            QStringLiteral("--server"),
            serverName(),
            QStringLiteral("--token"),
            m_token,
            QStringLiteral("--host-pid"),
            QString::number(QCoreApplication::applicationPid())};
}

void FakeMain::accept()
{
    QLocalSocket* socket = m_server.nextPendingConnection();
    if (m_hangUpOnAccept) {
        socket->abort();
        socket->deleteLater();
        return;
    }
    m_socket = socket;
    connect(m_socket, &QLocalSocket::readyRead, this, &FakeMain::read);
    read();
}

void FakeMain::read()
{
    if (!m_reading)
        return;
    m_received += m_socket->readAll();
    for (int end = m_received.indexOf('\n', m_consumed); end >= 0;
         end = m_received.indexOf('\n', m_consumed)) {
        const QByteArray raw = m_received.mid(m_consumed, end - m_consumed);
        m_consumed = end + 1;
        const int space = raw.indexOf(' ');
        m_lines += space < 0 ? WireLine{raw, raw, {}} : WireLine{raw, raw.left(space), raw.mid(space + 1)};
    }
}

bool FakeMain::isConnected() const
{
    return m_socket && m_socket->state() == QLocalSocket::ConnectedState;
}

bool FakeMain::waitForHandshake() const
{
    return waitUntil([this] {
        return m_lines.size() >= 2 && m_lines[0].raw == QByteArray("AUTH ") + m_token.toUtf8() &&
               m_lines[1].raw == "READY";
    });
}

bool FakeMain::waitForDisconnect() const
{
    return waitUntil([this] { return m_socket && m_socket->state() == QLocalSocket::UnconnectedState; });
}

void FakeMain::sendBytes(const QByteArray& bytes)
{
    if (!isConnected())
        return;
    m_socket->write(bytes);
    m_socket->flush();
}

void FakeMain::sendLine(const QByteArray& word, const QByteArray& payload)
{
    sendBytes((payload.isEmpty() ? word : QByteArray(word + ' ' + payload)) + '\n');
}

void FakeMain::sendSnapshot(const QJsonObject& snapshot)
{
    const QJsonObject event{{QStringLiteral("event"), QStringLiteral("STAT:SNAP")},
                            {QStringLiteral("payload"), snapshot}};
    sendLine("EVT", QJsonDocument(event).toJson(QJsonDocument::Compact));
}

void FakeMain::answer(int requestId, bool ok, const QJsonObject& extra)
{
    QJsonObject response{{QStringLiteral("id"), requestId}, {QStringLiteral("ok"), ok}};
    for (auto entry = extra.begin(); entry != extra.end(); ++entry)
        response.insert(entry.key(), entry.value());
    sendLine("RSP", QJsonDocument(response).toJson(QJsonDocument::Compact));
}

qint64 FakeMain::unreadBytes() const
{
    int inSocket = 0;
    const bool known = ioctl(int(m_socket->socketDescriptor()), SIOCOUTQ, &inSocket) == 0;
    return m_socket->bytesToWrite() + (known ? inSocket : 1);
}

bool FakeMain::waitUntilRead() const
{
    return waitUntil([&] { return !isConnected() || unreadBytes() == 0; }) && isConnected();
}

void FakeMain::setReading(bool reading)
{
    constexpr qint64 unlimited = 0;
    constexpr qint64 asGoodAsNothing = 1;
    m_reading = reading;
    m_socket->setReadBufferSize(reading ? unlimited : asGoodAsNothing);
    if (reading)
        read();
}

void FakeMain::stopWriting()
{
    ::shutdown(int(m_socket->socketDescriptor()), SHUT_WR);
}

void FakeMain::hangUp()
{
    if (m_socket)
        m_socket->abort();
}

int FakeMain::count(const QByteArray& word) const
{
    return int(std::count_if(m_lines.cbegin(), m_lines.cend(),
                             [&](const WireLine& line) { return line.word == word; }));
}

bool FakeMain::waitForCount(const QByteArray& word, int total) const
{
    return waitUntil([&] { return count(word) >= total; }) && count(word) == total;
}

QVector<QJsonObject> FakeMain::requests() const
{
    QVector<QJsonObject> result;
    for (const WireLine& line : m_lines)
        if (line.word == "REQ")
            result += QJsonDocument::fromJson(line.payload).object();
    return result;
}

bool FakeMain::waitForRequests(int total) const
{
    return waitForCount("REQ", total);
}

bool FakeMain::exchange(const QByteArray& word, const QByteArray& payload, const QByteArray& acknowledgement)
{
    const int before = count(acknowledgement);
    sendLine(word, payload);
    return waitForCount(acknowledgement, before + 1);
}

bool FakeMain::show(const QPoint& topRight)
{
    const QByteArray anchor = topRight.x() < 0
                                  ? QByteArray()
                                  : QByteArray::number(topRight.x()) + ',' + QByteArray::number(topRight.y());
    return exchange("SHOW_MINIBAR", anchor, "VISIBLE");
}

bool FakeMain::hide()
{
    return exchange("HIDE_MINIBAR", {}, "HIDDEN");
}

QJsonObject txSnapshot(int sequence, bool rf, double centerHz, double levelDbm)
{
    const QJsonObject tx{{QStringLiteral("rf"), rf},
                         {QStringLiteral("centerHz"), centerHz},
                         {QStringLiteral("levelDbm"), levelDbm}};
    return {{QStringLiteral("seq"), sequence}, {QStringLiteral("tx"), tx}};
}

} // namespace TestSupport
