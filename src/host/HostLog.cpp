#include "host/HostLog.h"

namespace Host {

Q_LOGGING_CATEGORY(hostLog, "tarvinel.host", QtWarningMsg)
Q_LOGGING_CATEGORY(wireLog, "tarvinel.wire", QtWarningMsg)

} // namespace Host
