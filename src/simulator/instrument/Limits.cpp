#include "simulator/instrument/Limits.h"

#include "utils/NumberText.h"

#include <QCoreApplication>

#include <algorithm>

namespace Simulator {

namespace {

constexpr int timeDecimals = 3;
constexpr int plainDecimals = 6;
constexpr double degreesOfRadian = 57.29577951308232;

// "2.5ms" with a blank before the unit, as frequencies are said.
QString timeText(double seconds)
{
    QString text = Utils::normalizeTimeSpan(seconds, timeDecimals);
    const auto unit = std::find_if(text.cbegin(), text.cend(), [](QChar c) { return c.isLetter(); });
    return text.insert(static_cast<int>(unit - text.cbegin()), QLatin1Char(' '));
}

QString plainText(double value, const char* unit)
{
    return QString(Utils::toString(value, plainDecimals, true) + QLatin1String(unit));
}

} // namespace

QString quantityText(double value, Unit unit)
{
    switch (unit) {
    case Unit::None:
        return plainText(value, "");
    case Unit::Hertz:
        return Utils::normalizeFrequency(value, true, true);
    case Unit::Seconds:
        return timeText(value);
    case Unit::Percent:
        return plainText(value, " %");
    case Unit::Dbm:
        return plainText(value, " dBm");
    case Unit::Decibel:
        return plainText(value, " dB");
    case Unit::Radians:
        return QString(plainText(value * degreesOfRadian, "") + QChar(0x00b0));
    }
    return {};
}

QString faultOf(double value, const Limits& limits)
{
    if (value >= limits.minimum && value <= limits.maximum)
        return {};
    return QCoreApplication::translate("Simulator", "The %1 must lie between %2 and %3.")
        .arg(QCoreApplication::translate("Simulator", limits.name), quantityText(limits.minimum, limits.unit),
             quantityText(limits.maximum, limits.unit));
}

} // namespace Simulator
