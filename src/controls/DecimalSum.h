#pragma once

namespace Controls {

// a + b, added in decimal digits, so that 0.1 + 0.2 is 0.3: the double nearest to the sum of the shortest
// decimal texts of both. The binary sum where the digits of the two lie more than 18 places apart. Both
// finite.
[[nodiscard]] double decimalSum(double a, double b);

} // namespace Controls
