#include "link/client/MinibarClient.h"

#include "link/AnchorPoint.h"
#include "link/Envelopes.h"
#include "link/Keys.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QTimer>
#include <optional>

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#endif

using namespace MinibarHelperProtocol;

namespace {

Q_LOGGING_CATEGORY(linkLog, "tarvinel.link", QtWarningMsg)
Q_LOGGING_CATEGORY(wireLog, "tarvinel.wire", QtWarningMsg)

constexpr int requestTimeoutMs = 3000;
// Longest time that lines are handed out before the event loop gets its turn.
constexpr int turnBudgetMs = 4;
// A main process that sends faster than the bar can show waits once this much lies unread in the socket.
constexpr qint64 readAheadBytes = 0x40000;
// What has not been handed out keeps more from being taken over, unless it is a line without its end.
constexpr int takenAheadBytes = 0x20000;
// Once so much waits for a main process that does not read, nothing more is written.
constexpr qint64 unsentLimit = LineDecoder::maximumLineLength;

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

// The socket's own buffer would keep what has gone through it. Nothing may be waiting in there.
bool writeSecret(QLocalSocket& socket, const QByteArray& line)
{
#ifdef Q_OS_UNIX
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    return ::send(descriptor, line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL) ==
           line.size();
#else
    const bool written = socket.write(line) == line.size();
    socket.flush();
    return written;
#endif
}

} // namespace

MinibarClient::MinibarClient(QObject* parent)
    : QObject(parent)
{
    registerChangeRequests();
    m_socket.setReadBufferSize(readAheadBytes);
    connect(&m_socket, &QLocalSocket::readyRead, this, [this] {
        takeAhead();
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
    if (m_socket.state() != QLocalSocket::ConnectedState || m_socket.bytesToWrite() > unsentLimit)
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
    if (m_socket.state() != QLocalSocket::ConnectedState)
        return false;
    QByteArray line = encodeLine(MinibarMessageType::Auth, token);
    const bool sent = writeSecret(m_socket, line);
    line.fill('*');
    if (sent)
        qCDebug(wireLog).noquote() << "helper>" << loggedLine(MinibarMessageType::Auth, token);
    return sent;
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

// Takes over a piece of what has arrived; false when there is nothing.
bool MinibarClient::receive()
{
    const int room = static_cast<int>(qMin(m_socket.bytesAvailable(), readAheadBytes));
    if (room <= 0)
        return false;
    const qint64 received =
        m_listening ? m_socket.read(m_decoder.beginWrite(room), room) : m_socket.skip(room);
    if (received <= 0)
        return false;
    if (m_listening)
        m_decoder.endWrite(static_cast<int>(received));
    return true;
}

// Before a line is obeyed, because what the socket holds is lost when the answer finds it closed; but not far
// ahead: what the bar cannot show in time is to wait at the main process, which can replace it.
void MinibarClient::takeAhead()
{
    while (m_decoder.bufferedBytes() <= takenAheadBytes && receive()) {
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
        takeAhead();
        LineDecoder::Result result = m_decoder.next(line);
        while (result == LineDecoder::Result::NeedsMore && receive())
            result = m_decoder.next(line);
        switch (result) {
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
