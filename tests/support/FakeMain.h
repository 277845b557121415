#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QLocalServer>
#include <QPoint>
#include <QVector>

class QLocalSocket;

namespace TestSupport {

// One line that the helper sent.
struct WireLine
{
    QByteArray raw; // without the line feed
    QByteArray word;
    QByteArray payload;
};

// The main process's side of the line protocol, written against the protocol alone and sharing no code with
// the programs: an independent witness. It listens from construction on and records every line.
class FakeMain final : public QObject
{
public:
    explicit FakeMain(QObject* parent = nullptr);
    ~FakeMain() override;

    [[nodiscard]] QString serverName() const { return m_server.serverName(); }
    [[nodiscard]] QString token() const { return m_token; }
    // The command line that makes the helper come here.
    [[nodiscard]] QStringList helperArguments() const;

    // AUTH with our token and READY have arrived.
    [[nodiscard]] bool waitForHandshake() const;
    [[nodiscard]] bool isConnected() const;
    // The helper has closed the socket.
    [[nodiscard]] bool waitForDisconnect() const;

    void sendBytes(const QByteArray& bytes);
    // The word, a space and the payload if there is one, a line feed.
    void sendLine(const QByteArray& word, const QByteArray& payload = QByteArray());
    void sendSnapshot(const QJsonObject& snapshot);
    // An RSP line; `extra` adds or replaces keys.
    void answer(int requestId, bool ok, const QJsonObject& extra = QJsonObject());
    // What the helper has not taken out of the socket yet, in bytes; what lies in the socket itself counts
    // with the system's own wrapping.
    [[nodiscard]] qint64 unreadBytes() const;
    // Everything sent so far has been taken out of the socket by the helper; false if it has hung up instead.
    [[nodiscard]] bool waitUntilRead() const;
    // While not reading, what the helper sends stays in the socket until it is full.
    void setReading(bool reading);
    // Closes the socket from our side, or only our writing half.
    void hangUp();
    void stopWriting();
    // Closes the socket of the next helper right after it has been accepted.
    void hangUpOnAccept() { m_hangUpOnAccept = true; }

    // Everything that has arrived, in order.
    [[nodiscard]] const QVector<WireLine>& lines() const { return m_lines; }
    [[nodiscard]] const QByteArray& received() const { return m_received; }
    [[nodiscard]] int count(const QByteArray& word) const;
    // Waits until the word has arrived `total` times since the start.
    [[nodiscard]] bool waitForCount(const QByteArray& word, int total) const;
    // The requests so far (payloads of REQ lines), in order.
    [[nodiscard]] QVector<QJsonObject> requests() const;
    [[nodiscard]] bool waitForRequests(int total) const;

    // Sends the word and waits for one more of its acknowledgement. What the helper had to say before is here
    // then.
    [[nodiscard]] bool exchange(const QByteArray& word, const QByteArray& payload,
                                const QByteArray& acknowledgement);
    // SHOW_MINIBAR until VISIBLE. A negative x sends no anchor.
    [[nodiscard]] bool show(const QPoint& topRight = QPoint(-1, -1));
    // HIDE_MINIBAR until HIDDEN.
    [[nodiscard]] bool hide();

private:
    void accept();
    void read();

    QLocalServer m_server;
    QLocalSocket* m_socket = nullptr;
    QString m_token;
    QByteArray m_received;
    int m_consumed = 0;
    QVector<WireLine> m_lines;
    bool m_hangUpOnAccept = false;
    bool m_reading = true;
};

// A snapshot with the transmitter's state alone.
[[nodiscard]] QJsonObject txSnapshot(int sequence, bool rf, double centerHz, double levelDbm);

} // namespace TestSupport
