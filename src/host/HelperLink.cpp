#include "host/HelperLink.h"

#include "host/HostLog.h"

#include <QMetaMethod>

#include <utility>

namespace {

constexpr int longestLogText = 80;

const QLatin1String mask("***");

} // namespace

HelperLink::HelperLink(QLocalSocket* socket, const QString& token, std::chrono::milliseconds patience,
                       QObject* parent)
    : QObject(parent)
    , m_socket(socket)
    , m_token(token)
{
    m_socket->setParent(this);
    m_unread.setSingleShot(true);
    m_unread.setInterval(patience);
    connect(&m_unread, &QTimer::timeout, this, &HelperLink::breakUnread);
    connect(m_socket, &QLocalSocket::bytesWritten, this, &HelperLink::onWritten);
    connect(m_socket, &QLocalSocket::readyRead, this, &HelperLink::read);
    connect(m_socket, &QLocalSocket::disconnected, this, [this] {
        if (!m_open)
            return;
        m_open = false;
        m_unread.stop();
        emit closedByHelper();
    });
}

QByteArray HelperLink::lineOf(MinibarMessageType type, const QString& payload)
{
    QByteArray line = MinibarHelperProtocol::encodeLine(type, payload);
    if (line.size() - 1 <= LineDecoder::maximumLineLength)
        return line;
    qCWarning(Host::hostLog) << "Not sent, longer than a line may be:"
                             << MinibarHelperProtocol::messageWord(type);
    return {};
}

bool HelperLink::send(MinibarMessageType type, const QString& payload)
{
    const QByteArray line = lineOf(type, payload);
    return !line.isEmpty() && sendRaw(line);
}

bool HelperLink::sendNewest(MinibarMessageType type, const QString& payload)
{
    if (!m_open || m_socket->bytesToWrite() <= congestion)
        return send(type, payload);
    const QByteArray line = lineOf(type, payload);
    if (line.isEmpty())
        return false;
    m_waiting = line;
    return true;
}

bool HelperLink::sendRaw(const QByteArray& bytes)
{
    if (!m_open || m_socket->state() != QLocalSocket::ConnectedState)
        return false;
    if (m_socket->bytesToWrite() > unreadLimit) {
        breakUnread();
        return false;
    }
    if (m_socket->write(bytes) != bytes.size())
        return false;
    m_socket->flush();
    if (m_socket->bytesToWrite() > 0 && !m_unread.isActive())
        m_unread.start();
    report(Direction::ToHelper, bytes.endsWith('\n') ? bytes.chopped(1) : bytes);
    return true;
}

void HelperLink::onWritten()
{
    if (!m_open)
        return;
    if (m_socket->bytesToWrite() > 0)
        m_unread.start();
    else
        m_unread.stop();
    if (!m_waiting.isEmpty() && m_socket->bytesToWrite() <= congestion)
        sendRaw(std::exchange(m_waiting, QByteArray()));
}

// Told from the event loop: whoever wanted to send is not to lose the link under its hands.
void HelperLink::breakUnread()
{
    abort();
    QMetaObject::invokeMethod(
        this, [this] { emit violated(tr("The helper does not read its link.")); }, Qt::QueuedConnection);
}

void HelperLink::abort()
{
    m_open = false;
    m_unread.stop();
    m_waiting.clear();
    m_socket->abort();
}

QString HelperLink::forLog(const QString& text) const
{
    const QString safe = masked(text);
    return safe.size() > longestLogText ? QString(safe.left(longestLogText) + QChar(0x2026)) : safe;
}

void HelperLink::read()
{
    m_decoder.append(m_socket->readAll());
    QByteArray line;
    while (m_open) {
        const LineDecoder::Result result = m_decoder.next(line);
        if (result == LineDecoder::Result::NeedsMore)
            return;
        if (result == LineDecoder::Result::Oversized) {
            abort();
            emit violated(tr("The helper sent a line that is too long."));
            return;
        }
        report(Direction::FromHelper, line);
        emit messageReceived(MinibarHelperProtocol::decodeLine(line), QString::fromUtf8(line));
    }
}

void HelperLink::report(Direction direction, const QByteArray& line)
{
    static const QMetaMethod trafficSignal = QMetaMethod::fromSignal(&HelperLink::lineTraffic);
    const bool logged = Host::wireLog().isDebugEnabled();
    if (!logged && !isSignalConnected(trafficSignal))
        return;
    const QString text = masked(QString::fromUtf8(line));
    qCDebug(Host::wireLog).noquote() << (direction == Direction::FromHelper ? "helper:" : "main:") << text;
    emit lineTraffic(direction, text);
}

QString HelperLink::masked(const QString& text) const
{
    // A wrong token is a secret too: it may be the right one of another run.
    const QString authWord = MinibarHelperProtocol::messageWord(MinibarMessageType::Auth);
    const QString trimmed = text.trimmed();
    if (trimmed.startsWith(authWord + QLatin1Char(' ')))
        return authWord + QLatin1Char(' ') + mask;
    QString result = text;
    return result.replace(m_token, mask);
}
