#pragma once

#include "host/Acknowledgements.h"
#include "host/HelperLink.h"
#include "host/HelperRunner.h"
#include "host/Response.h"

#include <QJsonObject>
#include <QPoint>
#include <QSet>

#include <memory>
#include <optional>

class HelperListener;

// The main process's end of the mini bar: starts the helper, makes sure that the one who connects is that
// helper, shows and hides the bar, hands the helper's requests to the application and its answers back.
// Nothing blocks. After start() comes either failed() or ready(); after ready() comes closed(). With failed()
// or closed() the process has ended, and start() may be called again.
class HelperHost final : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle,
        Connecting,     // the process was started
        Authenticating, // connected, AUTH is due
        AwaitingReady,  // authenticated, READY is due
        Ready,
        Leaving,     // asked to end, or the link is gone; the process is due to end by itself
        Terminating, // told to end
        Killing      // killed
    };
    Q_ENUM(State)

    enum class Bar { Hidden, Showing, Visible, Hiding };
    Q_ENUM(Bar)

    // Owns the runner.
    explicit HelperHost(std::unique_ptr<HelperRunner> runner, const HelperTimeouts& timeouts = {},
                        QObject* parent = nullptr);
    ~HelperHost() override;

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isReady() const { return m_state == State::Ready; }
    // What the helper was told last, and whether it has acknowledged it.
    [[nodiscard]] Bar bar() const { return m_bar; }
    // Whether the last helper ended because the application wanted it.
    [[nodiscard]] bool wasEndWanted() const { return m_endWanted; }
    // Of the last process, once it has ended by itself.
    [[nodiscard]] std::optional<int> exitCode() const { return m_exitCode; }
    // The number of the snapshot sent last; 0 before the first.
    [[nodiscard]] int lastSequence() const { return m_sequence; }

    // Does nothing while a helper's process is alive. failed() may come before it returns.
    void start();
    // Shows the bar with its top right corner there, or where it last stood. False unless ready.
    bool sendShow(const std::optional<QPoint>& topRight = std::nullopt);
    bool sendHide();
    // Ends the helper: politely first, then by force.
    void sendShutdown();
    // Sends a snapshot as an event, with the next sequence number unless it carries one of its own. While the
    // helper reads slowly only the newest one waits for it.
    bool pushSnapshot(const QJsonObject& snapshot);
    // Answers an open request, once; false for any other id. A payload is numbered like a snapshot.
    bool respond(int id, const Host::Response& response);
    // For tools that play a faulty main process: bytes as they are, and an end without a word.
    bool sendRaw(const QByteArray& bytes);
    void dropLink();

signals:
    void ready();
    void visible();
    void hidden();
    // VISIBLE or HIDDEN did not come in time. It may still come; after a long silence the helper is ended.
    void acknowledgementOverdue();
    void restoreRequested();
    // Answer with respond(), now or later.
    void requestReceived(int id, const QString& command, const QJsonObject& arguments);
    void failed(const QString& reason);
    void closed(const QString& reason);
    void lineTraffic(HelperLink::Direction direction, const QString& text);

private:
    struct Step;
    static const Step s_steps[];

    void adopt(QLocalSocket* socket);
    void dispatch(const MinibarMessage& message, const QString& line);
    void onAuth(const QString& token);
    void onReady();
    void onRequest(const QString& payload);
    void acknowledge(MinibarMessageType type);
    bool command(MinibarMessageType type, const QString& payload, Bar bar);
    void askWhetherAlive();
    [[nodiscard]] QJsonObject numbered(QJsonObject snapshot);

    void enter(State state);
    void onDeadline();
    void end(State how, const QString& reason, bool wanted = false);
    void onFinished(int exitCode, bool crashed);
    void conclude();

    std::unique_ptr<HelperRunner> m_runner;
    HelperTimeouts m_timeouts;
    std::unique_ptr<HelperListener> m_listener;
    HelperLink* m_link = nullptr; // owned as a child
    State m_state = State::Idle;
    Bar m_bar = Bar::Hidden;
    QString m_token;
    QString m_reason; // why the run ends; the first one counts
    bool m_endWanted = false;
    bool m_wasReady = false;
    int m_sequence = 0;
    std::optional<int> m_exitCode;
    Acknowledgements m_acknowledgements;
    QSet<int> m_openRequests;
    QTimer m_deadline;
    QTimer m_question; // runs while the bar is visible and nothing is awaited
};
