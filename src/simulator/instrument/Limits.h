#pragma once

#include <QString>

namespace Simulator {

enum class Unit { None, Hertz, Seconds, Percent, Dbm, Decibel, Radians };

// The range of one number, both ends in it.
struct Limits
{
    const char* name; // as people say it: "start frequency"
    Unit unit;
    double minimum; // in the base unit
    double maximum;
};

// A value with its unit, for sentences: "2.4 GHz". An angle is said in degrees.
[[nodiscard]] QString quantityText(double value, Unit unit);

// The sentence that refuses the value, naming the range; empty when it lies within. A NaN lies nowhere.
[[nodiscard]] QString faultOf(double value, const Limits& limits);

} // namespace Simulator
