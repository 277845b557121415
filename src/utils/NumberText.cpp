#include "utils/NumberText.h"

#include "utils/Decimal.h"

#include <QtGlobal>
#include <cmath>

namespace Utils {
namespace {

struct UnitName
{
    int exponent; // the unit is 10^exponent of the base unit
    const char* text;
};

// From the largest to the smallest.
constexpr UnitName frequencyUnits[] = {{9, "GHz"}, {6, "MHz"}, {3, "kHz"}, {0, "Hz"}};
constexpr UnitName timeUnits[] = {{0, "s"}, {-3, "ms"}, {-6, "\u00b5s"}, {-9, "ns"}, {-12, "ps"}};

constexpr int frequencyDecimals = 3; // of a hertz: the resolution is 1 mHz
constexpr int maximumDecimals = 15;

QString noNumber()
{
    return QStringLiteral("--");
}

// The largest unit in which the value is at least 1, the smallest one for values below that.
template <std::size_t count>
const UnitName& unitFor(const Decimal& value, const UnitName (&units)[count])
{
    for (const UnitName& unit : units) {
        if (unit.exponent < value.pointPosition) {
            return unit;
        }
    }
    return units[count - 1];
}

QString inUnit(const Decimal& value, const UnitName& unit, int minimumDecimals)
{
    return plainText(shifted(value, -unit.exponent), minimumDecimals);
}

} // namespace

QString normalizeFrequency(double hz, bool trimZeros, bool spaceBeforeUnit)
{
    if (!std::isfinite(hz)) {
        return noNumber();
    }
    // Rounding comes first: it can lift a value over the boundary of a unit.
    const Decimal value = rounded(shortestDecimal(hz), frequencyDecimals);
    const UnitName& unit = unitFor(value, frequencyUnits);
    const QString number = inUnit(value, unit, trimZeros ? 0 : unit.exponent + frequencyDecimals);
    return number + QLatin1String(spaceBeforeUnit ? " " : "") + QString::fromUtf8(unit.text);
}

QString normalizeTimeSpan(double seconds, int decimals)
{
    if (!std::isfinite(seconds)) {
        return noNumber();
    }
    const Decimal exact = shortestDecimal(seconds);
    const int kept = qBound(0, decimals, maximumDecimals) - unitFor(exact, timeUnits).exponent;
    const Decimal value = rounded(exact, kept);
    if (value.isZero()) {
        return QStringLiteral("0s");
    }
    const UnitName& unit = unitFor(value, timeUnits);
    return inUnit(value, unit, 0) + QString::fromUtf8(unit.text);
}

QString toString(double value, int decimals, bool trimZeros)
{
    if (!std::isfinite(value)) {
        return noNumber();
    }
    const int kept = qBound(0, decimals, maximumDecimals);
    return plainText(rounded(shortestDecimal(value), kept), trimZeros ? 0 : kept);
}

} // namespace Utils
