#include "controls/DecimalSum.h"

#include "utils/Decimal.h"

#include <algorithm>
#include <optional>

namespace Controls {
namespace {

// The digits of a number as an integer that counts 10^power; nothing when they do not fit.
std::optional<qint64> counted(const Utils::Decimal& number, int power)
{
    const int zeros = number.pointPosition - int(number.digits.size()) - power;
    constexpr int safeDigits = 18;
    if (number.isZero()) {
        return 0;
    }
    if (number.digits.size() + zeros > safeDigits) {
        return std::nullopt;
    }
    const qint64 magnitude = QByteArray(number.digits + QByteArray(zeros, '0')).toLongLong();
    return number.negative ? -magnitude : magnitude;
}

} // namespace

double decimalSum(double a, double b)
{
    const Utils::Decimal left = Utils::shortestDecimal(a);
    const Utils::Decimal right = Utils::shortestDecimal(b);
    const int power = std::min(left.pointPosition - int(left.digits.size()),
                               right.pointPosition - int(right.digits.size()));
    const auto leftCount = counted(left, power);
    const auto rightCount = counted(right, power);
    if (!leftCount || !rightCount) {
        return a + b;
    }
    const QByteArray sum = QByteArray::number(*leftCount + *rightCount) + 'e' + QByteArray::number(power);
    return sum.toDouble();
}

} // namespace Controls
