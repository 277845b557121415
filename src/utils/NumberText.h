#pragma once

#include <QString>

// Number texts. None of them depends on the locale: the decimal mark is always ".", digits are never
// grouped, and NaN and infinities give "--". Halves are rounded away from zero on the shortest decimal text
// of the double, so that 2.0005 with three decimals reads 2.001.
namespace Utils {

// A frequency in hertz with its unit: "2.4GHz". The unit (GHz, MHz, kHz, Hz) is chosen by the magnitude
// after rounding to 1 mHz, so that a value just below a boundary never reads "1000MHz".
// trimZeros drops the zeros after the last significant decimal; otherwise every decimal down to 1 mHz stands.
[[nodiscard]] QString normalizeFrequency(double hz, bool trimZeros, bool spaceBeforeUnit);

// A time span in seconds with its unit (s, ms, µs, ns, ps) and at most `decimals` decimals of that unit,
// zeros trimmed: "2.5ms". The unit is chosen by the magnitude after rounding; zero gives "0s".
[[nodiscard]] QString normalizeTimeSpan(double seconds, int decimals);

// A count with at most `decimals` decimals of its magnitude, zeros trimmed: "1.23M". The magnitude (none, k,
// M, G, T) is chosen after rounding, in steps of a thousand.
[[nodiscard]] QString normalize1K(double count, int decimals);

// A plain number with `decimals` decimals (0 to 15), zeros trimmed on demand; never "-0".
[[nodiscard]] QString toString(double value, int decimals, bool trimZeros);

} // namespace Utils
