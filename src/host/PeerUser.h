#pragma once

class QLocalSocket;

namespace Host {

// Whether the process at the other end of the connected socket runs as the same user as this one. True where
// the system does not tell.
[[nodiscard]] bool isOfThisUser(const QLocalSocket& socket);

} // namespace Host
