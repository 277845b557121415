#pragma once

#include <QLatin1String>

namespace MinibarHelperProtocol {

// A word known at compile time; Qt's own constructor measures the text in a way that not every compiler can
// do then.
template <int size>
[[nodiscard]] constexpr QLatin1String latinWord(const char (&text)[size])
{
    return QLatin1String(text, size - 1);
}

} // namespace MinibarHelperProtocol
