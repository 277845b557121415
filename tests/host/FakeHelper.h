#pragma once

#include "host/HelperHost.h"
#include "host/HelperRunner.h"

#include <QLocalSocket>
#include <QStringList>

// Stands where the helper's process would be: notes what the host does to it, ends when the case says so.
class FakeRunner final : public HelperRunner
{
    Q_OBJECT

public:
    using HelperRunner::HelperRunner;

    void start(const QStringList& arguments) override;
    void terminate() override;
    void kill() override;
    [[nodiscard]] bool isRunning() const override { return m_running; }

    void end(int exitCode, bool crashed = false);
    void fail(const QString& reason);
    // The argument after the option.
    [[nodiscard]] QString option(const QString& name) const;
    [[nodiscard]] QString server() const { return option(QStringLiteral("--server")); }
    [[nodiscard]] QString token() const { return option(QStringLiteral("--token")); }

    QStringList calls; // "start", "terminate", "kill"
    bool obeysTerminate = true;
    bool obeysKill = true;

private:
    QStringList m_arguments;
    bool m_running = false;
};

// The other end of the link, spoken by hand.
class FakeHelper final : public QObject
{
    Q_OBJECT

public:
    explicit FakeHelper(QObject* parent = nullptr);

    void enter(const QString& server);
    // Writes the line and a line feed.
    void say(const QString& line);
    void sayBytes(const QByteArray& bytes);
    // While not reading, what comes stays in the socket until that is full.
    void setReading(bool reading);
    void leave();
    // The next line of the main process, waiting for it; empty when none comes.
    [[nodiscard]] QString hear();
    // The JSON object behind the word of the next line; empty when the word is another one.
    [[nodiscard]] QJsonObject hearObject(const QString& word);
    [[nodiscard]] bool isConnected() const { return m_socket.state() == QLocalSocket::ConnectedState; }

private:
    QLocalSocket m_socket;
};

// A host with its stand-in for the process and a peer that has not entered yet.
struct HostFixture
{
    explicit HostFixture(const HelperTimeouts& timeouts = {});

    // The whole handshake.
    void reachReady();

    FakeRunner* runner; // owned by the host
    HelperHost host;
    FakeHelper helper;
};

// The host tells why a link ended; the case expects that sentence.
void expectEnd(const QString& sentence);
