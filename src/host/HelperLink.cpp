#include "host/HelperLink.h"

#include "host/HostLog.h"

#include <QMetaMethod>

namespace {

constexpr int longestLogText = 80;
// A helper that lets more than two whole lines pile up unread is not reading at all.
constexpr qint64 unreadLimit = 2LL * LineDecoder::maximumLineLength;

const QLatin1String mask("***");

} // namespace

HelperLink::HelperLink(QLocalSocket* socket, const QString& token, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
    , m_token(token)
{
    m_socket->setParent(this);
    connect(m_socket, &QLocalSocket::readyRead, this, &HelperLink::read);
    connect(m_socket, &QLocalSocket::disconnected, this, [this] {
        if (!m_open)
            return;
        m_open = false;
        emit closedByHelper();
    });
}

bool HelperLink::send(MinibarMessageType type, const QString& payload)
{
    const QByteArray line = MinibarHelperProtocol::encodeLine(type, payload);
    if (line.isEmpty())
        return false;
    if (line.size() - 1 > LineDecoder::maximumLineLength) {
        qCWarning(Host::hostLog) << "Not sent, longer than a line may be:"
                                 << MinibarHelperProtocol::messageWord(type);
        return false;
    }
    return sendRaw(line);
}

bool HelperLink::sendRaw(const QByteArray& bytes)
{
    if (!m_open || m_socket->state() != QLocalSocket::ConnectedState)
        return false;
    if (m_socket->bytesToWrite() > unreadLimit) {
        qCWarning(Host::hostLog) << "Not sent: the helper does not read its link";
        return false;
    }
    if (m_socket->write(bytes) != bytes.size())
        return false;
    m_socket->flush();
    report(Direction::ToHelper, bytes.endsWith('\n') ? bytes.chopped(1) : bytes);
    return true;
}

void HelperLink::abort()
{
    m_open = false;
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
