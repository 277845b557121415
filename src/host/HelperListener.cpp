#include "host/HelperListener.h"

#include "host/HostLog.h"

#include <QLocalSocket>

namespace {

// A clash of random names is all but impossible, and a file of this user's under the same name gives way; a
// few tries cover one that does not.
constexpr int nameTries = 5;

} // namespace

HelperListener::HelperListener(std::function<QString()> makeName, QObject* parent)
    : QObject(parent)
    , m_makeName(std::move(makeName))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &HelperListener::admit);
}

bool HelperListener::listen()
{
    close();
    for (int i = 0; i < nameTries; ++i) {
        if (m_server.listen(m_makeName()))
            return true;
        qCDebug(Host::hostLog) << "A server name could not be had, trying another one:"
                               << m_server.errorString();
    }
    return false;
}

void HelperListener::close()
{
    m_occupied = false;
    m_server.close();
}

void HelperListener::admit()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection()) {
        if (!m_occupied) {
            m_occupied = true;
            emit entered(socket);
            continue;
        }
        qCWarning(Host::hostLog) << "Closed a second connection to the mini bar's server";
        socket->abort();
        socket->deleteLater();
    }
}
