#pragma once

#include <QString>

namespace Utils {

// A count of bytes for people: "1.5 GB". Decimal units (1 kB is 1000 B), as all prefixes of the product are
// and as file managers count; one decimal, dropped when it is zero. The unit (B, kB, MB, GB, TB, PB, EB) is
// chosen by the magnitude after rounding, so that a size just below a boundary never reads "1000 MB". A
// negative count, of which there is none, reads "0 B". Never depends on the locale.
[[nodiscard]] QString humanReadableSize(qint64 bytes);

} // namespace Utils
