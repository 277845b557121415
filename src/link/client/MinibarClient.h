#pragma once

#include "link/ChangeRequests.h"
#include "link/LineDecoder.h"
#include "link/MessageType.h"
#include "link/client/RequestIds.h"

#include <QHash>
#include <QJsonObject>
#include <QLocalSocket>
#include <QObject>
#include <QPoint>
#include <QString>

class QTimer;

// The helper's end of the link: sends the handshake and the user's requests, and turns what the main process
// sends into signals. A lost link is not taken up again.
class MinibarClient final : public QObject
{
    Q_OBJECT

public:
    explicit MinibarClient(QObject* parent = nullptr);
    ~MinibarClient() override;

    // Waits for the connection, `timeoutMs` milliseconds at most.
    [[nodiscard]] bool connectToHost(const QString& serverName, int timeoutMs);

    // These give false when the line could not be handed to the socket as a whole, or when more than the
    // longest line waits there already for a main process that does not read.
    bool send(MinibarMessageType type, const QString& payload = QString());
    bool sendAuth(const QString& token); // before anything else; leaves no copy of the token behind
    bool sendReady();
    bool sendRestoreRequest();
    // The request is pending until its response, 3000 ms without one, or the end of the link. One that cannot
    // be sent is told by requestError() at once.
    bool sendRequest(const QString& command, const QJsonObject& arguments);

public slots:
    void setRfEnabled(bool enabled);
    void setCenterFrequency(double hz);
    void setLevel(double dbm);
    void changeSweep(const MinibarHelperProtocol::SweepChangeRequest& request);
    void changeModulation(const MinibarHelperProtocol::ModChangeRequest& request);

signals:
    // The top-right corner in screen pixels; (-1, -1) when none was given.
    void showMiniBarRequested(QPoint topRight);
    void hideMiniBarRequested();
    void shutdownRequested();
    // A confirmed state: an event, or the newest request's response.
    void snapshotReceived(QJsonObject snapshot);
    void requestStarted(int requestId);
    void requestFinished(int requestId);
    void requestError(int requestId, QString code, QString message);
    void protocolError(QString message);
    void disconnected();

private:
    bool receive();
    void takeAhead();
    void postTurn();
    void handOutLines();
    void refuseOversizedLine();
    void closeLink();
    void dispatch(const QByteArray& line);
    void handleResponse(const QString& payload);
    void handleEvent(const QByteArray& payload);
    void startPending(int id);
    bool removePending(int id);

    QLocalSocket m_socket;
    QHash<int, QTimer*> m_pending;
    LineDecoder m_decoder;
    RequestIds m_requestIds;
    int m_latestRequestId = 0;
    bool m_listening = false;  // what arrives is of interest
    bool m_linkLost = false;   // the socket has closed, closeLink() has not run yet
    bool m_turnPosted = false; // handOutLines() will be called from the event loop
};
