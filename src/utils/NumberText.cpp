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

constexpr UnitName countUnits[] = {{12, "T"}, {9, "G"}, {6, "M"}, {3, "k"}, {0, ""}};

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

// With at most `decimals` decimals of the unit that fits after rounding; empty for zero, which has no
// magnitude.
template <std::size_t count>
QString normalized(double number, int decimals, const UnitName (&units)[count])
{
    if (!std::isfinite(number)) {
        return noNumber();
    }
    const Decimal exact = shortestDecimal(number);
    const int kept = qBound(0, decimals, maximumDecimals) - unitFor(exact, units).exponent;
    const Decimal value = rounded(exact, kept);
    if (value.isZero()) {
        return {};
    }
    const UnitName& unit = unitFor(value, units);
    return inUnit(value, unit, 0) + QString::fromUtf8(unit.text);
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
    const QString text = normalized(seconds, decimals, timeUnits);
    return text.isEmpty() ? QStringLiteral("0s") : text;
}

QString normalize1K(double count, int decimals)
{
    const QString text = normalized(count, decimals, countUnits);
    return text.isEmpty() ? QStringLiteral("0") : text;
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
