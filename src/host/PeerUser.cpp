#include "host/PeerUser.h"

#include <QLocalSocket>

#ifdef Q_OS_LINUX
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace Host {

bool isOfThisUser(const QLocalSocket& socket)
{
#ifdef Q_OS_LINUX
    ucred peer = {};
    socklen_t size = sizeof(peer);
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
#else
    Q_UNUSED(socket)
    return true;
#endif
}

} // namespace Host
