#include "link/client/MinibarClient.h"

#include "link/AnchorPoint.h"
#include "link/Envelopes.h"
#include "link/Keys.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QTimer>
#include <optional>

using namespace MinibarHelperProtocol;

namespace {

Q_LOGGING_CATEGORY(linkLog, "tarvinel.link", QtWarningMsg)
Q_LOGGING_CATEGORY(wireLog, "tarvinel.wire", QtWarningMsg)

constexpr int requestTimeoutMs = 3000;
// Longest time that lines are handed out before the event loop gets its turn.
constexpr int turnBudgetMs = 4;
// A main process that sends faster than the bar can show waits once this much lies unread in the socket.
constexpr qint64 readAheadBytes = 0x100000;

// What the log may show of a line: never the token.
QString loggedLine(MinibarMessageType type, const QString& payload)
{
    if (type == MinibarMessageType::Invalid)
        return QStringLiteral("(no known word)");
    if (payload.isEmpty())
        return messageWord(type);
    return messageWord(type) + QLatin1Char(' ') +
           (type == MinibarMessageType::Auth ? QStringLiteral("<token>") : payload);
}

} // namespace

MinibarClient::MinibarClient(QObject* parent)
    : QObject(parent)
{
    registerChangeRequests();
    m_socket.setReadBufferSize(readAheadBytes);
    connect(&m_socket, &QLocalSocket::readyRead, this, [this] {
        receive();
        postTurn();
    });
    connect(&m_socket, &QLocalSocket::disconnected, this, [this] {
        m_linkLost = true;
        postTurn();
    });
}

MinibarClient::~MinibarClient()
{
    // The socket closes as it is destroyed, when there is nobody left to be told.
    m_socket.disconnect(this);
}

bool MinibarClient::connectToHost(const QString& serverName, int timeoutMs)
{
    if (m_linkLost)
        closeLink(); // the end of an earlier link that has not been told yet
    m_decoder.clear();
    m_listening = true;
    m_socket.connectToServer(serverName, QIODevice::ReadWrite);
    if (m_socket.waitForConnected(timeoutMs))
        return true;
    qCInfo(linkLog) << "No connection to" << serverName << ":" << m_socket.errorString();
    return false;
}

bool MinibarClient::send(MinibarMessageType type, const QString& payload)
{
    if (m_socket.state() != QLocalSocket::ConnectedState)
        return false;
    const QByteArray line = encodeLine(type, payload);
    if (line.isEmpty() || m_socket.write(line) != line.size())
        return false;
    qCDebug(wireLog).noquote() << "helper>" << loggedLine(type, payload);
    m_socket.flush();
    return true;
}

bool MinibarClient::sendAuth(const QString& token)
{
    return send(MinibarMessageType::Auth, token);
}

bool MinibarClient::sendReady()
{
    return send(MinibarMessageType::Ready);
}

bool MinibarClient::sendRestoreRequest()
{
    return send(MinibarMessageType::RestoreRequest);
}

bool MinibarClient::sendRequest(const QString& command, const QJsonObject& arguments)
{
    const int id = m_requestIds.take();
    if (!send(MinibarMessageType::Req, writeRequest(id, command, arguments))) {
        emit requestError(id, Errors::TRANSPORT_ERROR, tr("Failed to send minibar request."));
        return false;
    }
    startPending(id);
    return true;
}

void MinibarClient::setRfEnabled(bool enabled)
{
    sendRequest(Commands::OUTP_STAT, {{Keys::enabled, enabled}});
}

void MinibarClient::setCenterFrequency(double hz)
{
    sendRequest(Commands::SOUR_FREQ_CENT, {{Keys::hz, hz}});
}

void MinibarClient::setLevel(double dbm)
{
    sendRequest(Commands::SOUR_POW_LEV, {{Keys::dbm, dbm}});
}

void MinibarClient::changeSweep(const SweepChangeRequest& request)
{
    sendRequest(Commands::SOUR_SWEEP_CONF, request.toJson());
}

void MinibarClient::changeModulation(const ModChangeRequest& request)
{
    sendRequest(Commands::SOUR_MOD_CONF, request.toJson());
}

// Takes over what has arrived. The decoder is left alone while it holds a full line's worth that is still to
// be handed out, so that the memory in use is bounded whatever the main process sends.
void MinibarClient::receive()
{
    while (m_socket.bytesAvailable() > 0 && m_decoder.bufferedBytes() <= LineDecoder::maximumLineLength) {
        const int room = static_cast<int>(qMin(m_socket.bytesAvailable(), readAheadBytes));
        const qint64 received =
            m_listening ? m_socket.read(m_decoder.beginWrite(room), room) : m_socket.skip(room);
        if (received <= 0)
            return;
        if (m_listening)
            m_decoder.endWrite(static_cast<int>(received));
    }
}

// Lines are never handed out from within the socket's own signal: it is not repeated while it is being
// handled, so a receiver that runs an event loop of its own would deafen the link.
void MinibarClient::postTurn()
{
    if (m_turnPosted)
        return;
    m_turnPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_turnPosted = false;
            handOutLines();
        },
        Qt::QueuedConnection);
}

void MinibarClient::handOutLines()
{
    QElapsedTimer turn;
    turn.start();
    QByteArray line;
    do {
        receive();
        switch (m_decoder.next(line)) {
        case LineDecoder::Result::NeedsMore:
            if (m_linkLost)
                closeLink();
            return;
        case LineDecoder::Result::Oversized:
            refuseOversizedLine();
            return;
        case LineDecoder::Result::Line:
            // Before the line is handled: its receiver may run an event loop, which takes up the rest.
            postTurn();
            dispatch(line);
            break;
        }
    } while (!turn.hasExpired(turnBudgetMs));
}

void MinibarClient::refuseOversizedLine()
{
    m_listening = false;
    m_decoder.clear();
    emit protocolError(tr("Main process sent an oversized minibar protocol message."));
    m_socket.disconnectFromServer();
}

void MinibarClient::closeLink()
{
    m_linkLost = false;
    m_decoder.clear();
    const QList<int> ids = m_pending.keys();
    for (const int id : ids) {
        if (removePending(id))
            emit requestError(id, Errors::TRANSPORT_ERROR, tr("Minibar IPC disconnected."));
    }
    emit disconnected();
}

void MinibarClient::dispatch(const QByteArray& line)
{
    const auto event =
        wireLog().isDebugEnabled() ? std::nullopt : plainPayload(line, MinibarMessageType::Evt);
    if (event) {
        handleEvent(*event);
        return;
    }
    const MinibarMessage message = decodeLine(line);
    qCDebug(wireLog).noquote() << "main>" << loggedLine(message.type, message.payload);
    switch (message.type) {
    case MinibarMessageType::ShowMinibar:
        emit showMiniBarRequested(readAnchorPoint(message.payload));
        if (!send(MinibarMessageType::Visible))
            emit protocolError(tr("Failed to acknowledge minibar visibility."));
        break;
    case MinibarMessageType::HideMinibar:
        emit hideMiniBarRequested();
        if (!send(MinibarMessageType::Hidden))
            emit protocolError(tr("Failed to acknowledge minibar hiding."));
        break;
    case MinibarMessageType::Shutdown:
        emit shutdownRequested();
        break;
    case MinibarMessageType::Evt:
        handleEvent(message.payload.toUtf8());
        break;
    case MinibarMessageType::Rsp:
        handleResponse(message.payload);
        break;
    case MinibarMessageType::Invalid:
    case MinibarMessageType::Auth:
    case MinibarMessageType::Ready:
    case MinibarMessageType::Visible:
    case MinibarMessageType::RestoreRequest:
    case MinibarMessageType::Hidden:
    case MinibarMessageType::Req:
        break; // nothing that the main process says
    }
}

void MinibarClient::handleResponse(const QString& payload)
{
    QJsonObject envelope;
    QString error;
    if (!readObject(payload, &envelope, &error)) {
        emit protocolError(tr("Malformed minibar response: %1").arg(error));
        return;
    }
    const Response response = readResponse(envelope);
    const bool wasPending = removePending(response.id);
    if (!response.ok)
        emit requestError(response.id, response.errorCode, response.errorMessage);
    // An older answer that arrives late must not overwrite a newer state.
    if (wasPending && response.id == m_latestRequestId && !response.payload.isEmpty())
        emit snapshotReceived(response.payload);
}

void MinibarClient::handleEvent(const QByteArray& payload)
{
    QJsonObject envelope;
    QString error;
    if (!readObject(payload, &envelope, &error)) {
        emit protocolError(tr("Malformed minibar event: %1").arg(error));
        return;
    }
    const QJsonObject snapshot = readSnapshotEvent(envelope);
    if (!snapshot.isEmpty())
        emit snapshotReceived(snapshot);
}

void MinibarClient::startPending(int id)
{
    auto* timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer); // a coarse one may fire early
    timer->setInterval(requestTimeoutMs);
    connect(timer, &QTimer::timeout, this, [this, id] {
        if (removePending(id))
            emit requestError(id, Errors::TIMEOUT, tr("Minibar request timed out."));
    });
    m_pending.insert(id, timer);
    m_latestRequestId = id;
    timer->start();
    emit requestStarted(id);
}

bool MinibarClient::removePending(int id)
{
    QTimer* timer = m_pending.take(id);
    if (timer == nullptr)
        return false;
    timer->stop();
    timer->deleteLater();
    emit requestFinished(id);
    return true;
}
