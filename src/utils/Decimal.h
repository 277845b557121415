#pragma once

#include <QByteArray>
#include <QString>

namespace Utils {

// A finite number as decimal digits, so that rounding and shifting by powers of ten are exact.
// The value is 0.<digits> * 10^pointPosition.
struct Decimal
{
    QByteArray digits;     // '0' to '9', neither leading nor trailing zeros; empty for zero
    int pointPosition = 0; // digits before the decimal mark; zero or negative for small values
    bool negative = false; // never set for zero

    [[nodiscard]] bool isZero() const { return digits.isEmpty(); }
};

// The fewest digits that read back as exactly this double. `value` must be finite.
[[nodiscard]] Decimal shortestDecimal(double value);

// value * 10^exponent.
[[nodiscard]] Decimal shifted(Decimal value, int exponent);

// Rounded to this many decimals (may be negative), halves away from zero.
[[nodiscard]] Decimal rounded(Decimal value, int decimals);

// Without exponent, mark ".", no grouping, zeros appended up to `minimumDecimals` decimals.
[[nodiscard]] QString plainText(const Decimal& value, int minimumDecimals = 0);

} // namespace Utils
