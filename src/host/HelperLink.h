#pragma once

#include "link/LineDecoder.h"
#include "link/MessageType.h"

#include <QByteArray>
#include <QLocalSocket>
#include <QObject>
#include <QString>

// One connection to a helper: bytes to lines, lines to messages, messages to bytes. It knows the words, but
// not what may be said when. Once the link is closed, from either side, it is silent.
class HelperLink final : public QObject
{
    Q_OBJECT

public:
    enum class Direction { FromHelper, ToHelper };
    Q_ENUM(Direction)

    // Takes the connected socket over. Neither traffic nor log ever show the token.
    HelperLink(QLocalSocket* socket, const QString& token, QObject* parent = nullptr);

    // False when the link is closed, the line is longer than a line may be, or the helper does not read.
    bool send(MinibarMessageType type, const QString& payload = QString());
    // Writes the bytes as they are.
    bool sendRaw(const QByteArray& bytes);
    // Closes at once; no signal follows.
    void abort();
    // The text with every token blotted out and cut to a length that suits a log.
    [[nodiscard]] QString forLog(const QString& text) const;

signals:
    // line is the line as received, for a complaint about it.
    void messageReceived(const MinibarMessage& message, const QString& line);
    // The other side broke the line format; the link is closed already.
    void violated(const QString& reason);
    void closedByHelper();
    // A line as it crossed the link, without its line feed, the token masked.
    void lineTraffic(HelperLink::Direction direction, const QString& text);

private:
    void read();
    void report(Direction direction, const QByteArray& line);
    [[nodiscard]] QString masked(const QString& text) const;

    QLocalSocket* m_socket;
    QString m_token;
    LineDecoder m_decoder;
    bool m_open = true;
};
