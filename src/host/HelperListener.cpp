#include "host/HelperListener.h"

#include "host/HostLog.h"
#include "host/PeerUser.h"

#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>

namespace {

// A clash of random names is all but impossible; a few tries cover somebody who plants them.
constexpr int nameTries = 5;

QString pathOf(const QString& name)
{
    return QDir::isAbsolutePath(name) ? name : QDir(QDir::tempPath()).filePath(name);
}

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
        if (listenUnder(m_makeName()))
            return true;
        qCWarning(Host::hostLog).noquote() << "Another name for the mini bar's server is tried:" << m_error;
    }
    return false;
}

bool HelperListener::listenUnder(const QString& name)
{
    // Listening would put its socket in the place of whatever lies there.
    const QFileInfo file(pathOf(name));
    if (file.isSymLink() || file.exists()) {
        m_error = tr("'%1' is taken.").arg(file.filePath());
        return false;
    }
    if (m_server.listen(name))
        return true;
    m_error = m_server.errorString();
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
        const bool ofThisUser = Host::isOfThisUser(*socket);
        if (ofThisUser && !m_occupied) {
            m_occupied = true;
            emit entered(socket);
            continue;
        }
        qCWarning(Host::hostLog, "%s",
                  ofThisUser ? "Closed a second connection to the mini bar's server"
                             : "Closed a connection of another user to the mini bar's server");
        socket->abort();
        socket->deleteLater();
    }
}
