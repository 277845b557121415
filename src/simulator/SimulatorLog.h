#pragma once

#include <QLoggingCategory>

namespace Simulator {

// "tarvinel.simulator", warnings only unless switched on.
Q_DECLARE_LOGGING_CATEGORY(simulatorLog)

} // namespace Simulator
