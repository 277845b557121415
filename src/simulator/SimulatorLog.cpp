#include "simulator/SimulatorLog.h"

namespace Simulator {

Q_LOGGING_CATEGORY(simulatorLog, "tarvinel.simulator", QtWarningMsg)

} // namespace Simulator
