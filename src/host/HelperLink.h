#pragma once

#include "link/LineDecoder.h"
#include "link/MessageType.h"

#include <QByteArray>
#include <QLocalSocket>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

// One connection to a helper: bytes to lines, lines to messages, messages to bytes. It knows the words, but
// not what may be said when. Once the link is closed, from either side, it is silent.
class HelperLink final : public QObject
{
    Q_OBJECT

public:
    enum class Direction { FromHelper, ToHelper };
    Q_ENUM(Direction)

    // What waits unread by the helper at most, in bytes, besides the line that is written last: two of the
    // longest lines. A helper that lets more pile up, or reads nothing for `patience`, breaks the link.
    static constexpr qint64 unreadLimit = 2LL * LineDecoder::maximumLineLength;
    // Beyond this a new state does not queue behind older ones.
    static constexpr qint64 congestion = 0x10000;

    // Takes the connected socket over. Neither traffic nor log ever show the token.
    HelperLink(QLocalSocket* socket, const QString& token, std::chrono::milliseconds patience,
               QObject* parent = nullptr);

    // False when the link is closed, or breaks now, or the line is longer than a line may be.
    bool send(MinibarMessageType type, const QString& payload = QString());
    // As send(), but while the helper reads slowly the line waits, and the next one takes its place.
    bool sendNewest(MinibarMessageType type, const QString& payload);
    // Writes the bytes as they are.
    bool sendRaw(const QByteArray& bytes);
    // Closes at once; no signal follows.
    void abort();
    // The text with every token blotted out and cut to a length that suits a log.
    [[nodiscard]] QString forLog(const QString& text) const;

signals:
    // line is the line as received, for a complaint about it.
    void messageReceived(const MinibarMessage& message, const QString& line);
    // The other side broke the line format or does not read; the link is closed already.
    void violated(const QString& reason);
    void closedByHelper();
    // A line as it crossed the link, without its line feed, the token masked.
    void lineTraffic(HelperLink::Direction direction, const QString& text);

private:
    void read();
    void onWritten();
    void breakUnread();
    [[nodiscard]] static QByteArray lineOf(MinibarMessageType type, const QString& payload);
    void report(Direction direction, const QByteArray& line);
    [[nodiscard]] QString masked(const QString& text) const;

    QLocalSocket* m_socket;
    QString m_token;
    LineDecoder m_decoder;
    QByteArray m_waiting; // the newest line of sendNewest(), while the helper reads slowly
    QTimer m_unread;      // runs while bytes wait for the helper; begins anew with each that it takes
    bool m_open = true;
};
