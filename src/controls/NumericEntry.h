#pragma once

#include <QString>
#include <optional>

namespace Controls {

// What a numeric keyboard edits and within which limits; numbers in the adapter's base unit.
struct NumericEntry
{
    QString title;
    double value = 0.0;            // NaN or infinite: nothing stands in the entry at first
    std::optional<double> step;    // above 0: the step keys and the arrow keys add and subtract it
    std::optional<double> minimum; // inclusive
    std::optional<double> maximum; // inclusive
    std::optional<int> decimals;   // of the value in the smallest unit; a finer entry is refused
    bool integerOnly = false;      // in the base unit: a fraction is rounded, halves away from zero
    QString unitText;              // the unit to open in; empty or unknown: the one that fits the magnitude
};

} // namespace Controls
