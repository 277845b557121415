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

// Whether a change by this command is pushed as a snapshot besides the answer: an answer that comes too late,
// or is not the newest request's, shows nothing, and the revision of a sweep or an item must not be missed.
[[nodiscard]] bool isAnnounced(const QString& command);

} // namespace Simulator
