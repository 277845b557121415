#include "utils/Decimal.h"

#include <QLocale>
#include <QtGlobal>
#include <cmath>

namespace Utils {
namespace {

void dropTrailingZeros(Decimal& value)
{
    while (value.digits.endsWith('0')) {
        value.digits.chop(1);
    }
    if (value.isZero()) {
        value = Decimal();
    }
}

// Adds one to the last digit; a carry out of the first digit makes the number one digit longer.
void countUp(Decimal& value)
{
    int at = value.digits.size() - 1;
    while (at >= 0 && value.digits.at(at) == '9') {
        value.digits[at--] = '0';
    }
    if (at >= 0) {
        value.digits[at] = char(value.digits.at(at) + 1);
    } else {
        value.digits.prepend('1');
        ++value.pointPosition;
    }
}

} // namespace

Decimal shortestDecimal(double value)
{
    Q_ASSERT(std::isfinite(value));
    // "d.ddde+xx", in the C locale whatever the default locale is.
    const QByteArray text = QByteArray::number(std::fabs(value), 'e', QLocale::FloatingPointShortest);
    const int mark = text.indexOf('e');
    Decimal result;
    result.digits = text.left(mark);
    result.digits.replace(".", "");
    result.pointPosition = text.mid(mark + 1).toInt() + 1;
    result.negative = std::signbit(value);
    dropTrailingZeros(result);
    return result;
}

Decimal shifted(Decimal value, int exponent)
{
    if (!value.isZero()) {
        value.pointPosition += exponent;
    }
    return value;
}

Decimal rounded(Decimal value, int decimals)
{
    const int kept = value.pointPosition + decimals;
    if (kept >= value.digits.size()) {
        return value;
    }
    if (kept < 0) {
        return {};
    }
    const bool up = value.digits.at(kept) >= '5';
    value.digits.truncate(kept);
    if (up) {
        countUp(value);
    }
    dropTrailingZeros(value);
    return value;
}

QString plainText(const Decimal& value, int minimumDecimals)
{
    const int point = value.pointPosition;
    QByteArray whole = value.digits.left(qMax(point, 0)).leftJustified(qMax(point, 1), '0');
    QByteArray decimals = QByteArray(qMax(-point, 0), '0') + value.digits.mid(qMax(point, 0));
    decimals = decimals.leftJustified(minimumDecimals, '0');
    if (value.negative) {
        whole.prepend('-');
    }
    return QString::fromLatin1(decimals.isEmpty() ? whole : whole + '.' + decimals);
}

} // namespace Utils
