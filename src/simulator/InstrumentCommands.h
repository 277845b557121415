#pragma once

#include "host/Response.h"

#include <QJsonObject>
#include <QString>

namespace Simulator {

class SignalGenerator;

// Carries out one command of the mini bar on the instrument. The answer holds no payload: after every success
// the caller sends the state as it is then.
[[nodiscard]] Host::Response execute(SignalGenerator& instrument, const QString& command,
                                     const QJsonObject& arguments);

} // namespace Simulator
