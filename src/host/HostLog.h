#pragma once

#include <QLoggingCategory>

namespace Host {

// What the host does and why a link ended: "tarvinel.host", warnings only unless switched on.
Q_DECLARE_LOGGING_CATEGORY(hostLog)
// Every line that crosses the link, the token masked: "tarvinel.wire", at debug level.
Q_DECLARE_LOGGING_CATEGORY(wireLog)

} // namespace Host
