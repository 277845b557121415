#pragma once

#include <QString>

namespace Simulator {

// The sentence that goes with an error code when nothing more special is known; empty for a code that a main
// process does not send.
[[nodiscard]] QString errorText(const QString& code);

} // namespace Simulator
