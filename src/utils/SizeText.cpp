#include "utils/SizeText.h"

#include "utils/Decimal.h"

#include <QtGlobal>

namespace Utils {
namespace {

struct SizeUnit
{
    int exponent; // the unit is 10^exponent bytes
    const char* text;
};

// From the smallest to the largest.
constexpr SizeUnit sizeUnits[] = {{0, "B"},   {3, "kB"},  {6, "MB"}, {9, "GB"},
                                  {12, "TB"}, {15, "PB"}, {18, "EB"}};

constexpr int shownDecimals = 1;

// Exact: a double would not hold every count.
Decimal decimalOf(qint64 bytes)
{
    Decimal value;
    value.digits = QByteArray::number(bytes);
    value.pointPosition = value.digits.size();
    while (value.digits.endsWith('0')) {
        value.digits.chop(1);
    }
    return value.isZero() ? Decimal() : value;
}

} // namespace

QString humanReadableSize(qint64 bytes)
{
    const Decimal exact = decimalOf(qMax(bytes, qint64(0)));
    QString text;
    for (const SizeUnit& unit : sizeUnits) {
        const Decimal shown = rounded(shifted(exact, -unit.exponent), unit.exponent == 0 ? 0 : shownDecimals);
        text = plainText(shown) + QLatin1Char(' ') + QLatin1String(unit.text);
        constexpr int digitsBelowNextUnit = 3;
        if (shown.pointPosition <= digitsBelowNextUnit) {
            break;
        }
    }
    return text;
}

} // namespace Utils
