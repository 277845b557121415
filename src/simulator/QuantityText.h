#pragma once

#include <QString>

#include <optional>

namespace Simulator {

// The frequency in hertz that somebody typed: "2.4 GHz", "2,4g", "900 k". Without a unit it counts in
// `usualFactor` hertz. Nothing when the text is no frequency.
[[nodiscard]] std::optional<double> parseFrequency(const QString& text, double usualFactor);
// The factor of the unit that a frequency is shown in: 1e9, 1e6, 1e3 or 1.
[[nodiscard]] double shownFactor(double hz);

// The level in dBm that somebody typed, "dBm" behind it or not.
[[nodiscard]] std::optional<double> parseLevel(const QString& text);

} // namespace Simulator
