#pragma once

#include "controls/BaseUnitAdapter.h"

#include <charconv>
#include <limits>
#include <string>

// The quantities that the number tests type into.
namespace Quantities {

inline QVector<Controls::Unit> frequency()
{
    return {{QStringLiteral("GHz"), 9},
            {QStringLiteral("MHz"), 6},
            {QStringLiteral("kHz"), 3},
            {QStringLiteral("Hz"), 0}};
}

inline QVector<Controls::Unit> time()
{
    return {{QStringLiteral("s"), 0},
            {QStringLiteral("ms"), -3},
            {QStringLiteral("\u00b5s"), -6},
            {QStringLiteral("ns"), -9},
            {QStringLiteral("ps"), -12}};
}

inline QVector<Controls::Unit> level()
{
    return {{QStringLiteral("dBm"), 0}};
}

inline QVector<Controls::Unit> levelStep()
{
    return {{QStringLiteral("dB"), 0}};
}

inline QVector<Controls::Unit> plain()
{
    return {};
}

// The double nearest to number * 10^exponent, `number` in C notation without exponent: the tests' own
// reading.
inline double nearest(const std::string& number, int exponent)
{
    const std::string text = number + 'e' + std::to_string(exponent);
    double value = std::numeric_limits<double>::quiet_NaN();
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace Quantities
