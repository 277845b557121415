#pragma once

#include <QString>

namespace Host {

// 128 random bits from the operating system as 32 lower-case hexadecimal digits.
[[nodiscard]] QString randomHex128();

// Whether both texts are equal, in a time that depends on their lengths only.
[[nodiscard]] bool equalInConstantTime(const QString& left, const QString& right);

} // namespace Host
