#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

#include <functional>

// The door of the host: a local server that only this user may enter, under a name nobody can guess.
// One connection is let in; every further one, and any of another user, is closed at once and logged.
class HelperListener final : public QObject
{
    Q_OBJECT

public:
    // makeName gives a fresh server name at each call.
    explicit HelperListener(std::function<QString()> makeName, QObject* parent = nullptr);

    // Opens the door under the first free name; false with errorString() when there is none to be had. What
    // lies under a name already, a symbolic link included, is left alone and logged.
    [[nodiscard]] bool listen();
    [[nodiscard]] QString serverName() const { return m_server.serverName(); }
    [[nodiscard]] QString errorString() const { return m_error; }
    // From now on nobody finds the server; a connection that was let in stays.
    void close();

signals:
    // The receiver takes the socket over by giving it a parent.
    void entered(QLocalSocket* socket);

private:
    [[nodiscard]] bool listenUnder(const QString& name);
    void admit();

    std::function<QString()> m_makeName;
    QLocalServer m_server;
    QString m_error;
    bool m_occupied = false;
};
