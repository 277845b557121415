#pragma once

#include <QString>

// What the user reads for a modulation or filter type of the editor state, translated; a value without a name
// of its own is translated as it stands. May be called from any thread.
[[nodiscard]] QString modulationDisplayName(const QString& value);
