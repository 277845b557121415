#include "system/FullBacklog.h"

#include <QFile>
#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int mostConnections = 64; // far more than the smallest queue takes

} // namespace

FullBacklog::~FullBacklog()
{
    for (const int socket : qAsConst(m_sockets))
        ::close(socket);
}

bool FullBacklog::start()
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, QFile::encodeName(name()).constData(), sizeof(address.sun_path) - 1);
    const auto* generic = reinterpret_cast<const sockaddr*>(&address);

    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    m_sockets += listener;
    if (::bind(listener, generic, sizeof(address)) != 0 || ::listen(listener, 0) != 0) {
        m_error = QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    for (int i = 0; i < mostConnections; ++i) {
        const int client = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        m_sockets += client;
        if (::connect(client, generic, sizeof(address)) != 0)
            return errno == EAGAIN;
    }
    m_error = QStringLiteral("the queue never filled");
    return false;
}
