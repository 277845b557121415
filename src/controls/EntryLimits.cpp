#include "controls/EntryLimits.h"

#include "controls/QuantityText.h"
#include "utils/Decimal.h"

#include <QLoggingCategory>
#include <algorithm>
#include <cmath>

namespace Controls {
namespace {

Q_LOGGING_CATEGORY(log, "tarvinel.controls", QtWarningMsg)

// A rounded number that keeps this many digits is off by less than one percent.
constexpr int enoughDigits = 3;
// What arithmetic in binary leaves behind the last meant digit.
constexpr double arithmeticNoise = 1e-9;

std::optional<double> number(const std::optional<double>& bound)
{
    return bound && std::isfinite(*bound) ? bound : std::nullopt;
}

} // namespace

EntryLimits::EntryLimits(const BaseUnitAdapter& scale, const NumericEntry& entry)
    : m_scale(scale)
    , m_minimum(number(entry.minimum))
    , m_maximum(number(entry.maximum))
    , m_rounds(entry.integerOnly)
{
    if (m_minimum && m_maximum && *m_minimum > *m_maximum) {
        qCWarning(log, "Ignoring the limits of \"%s\": the minimum %g is above the maximum %g",
                  qUtf8Printable(entry.title), *m_minimum, *m_maximum);
        m_minimum.reset();
        m_maximum.reset();
    }
    if (entry.decimals && *entry.decimals >= 0) {
        m_finestPower = unitAt(scale.units().size() - 1).exponent - *entry.decimals;
    }
    if (m_rounds) {
        m_finestPower = std::max(m_finestPower.value_or(0), 0);
    }
}

QString EntryLimits::text() const
{
    if (m_minimum && m_maximum) {
        return tr("%1 to %2").arg(quantityText(*m_minimum), quantityText(*m_maximum));
    }
    if (m_minimum) {
        return tr("At least %1").arg(quantityText(*m_minimum));
    }
    return m_maximum ? tr("At most %1").arg(quantityText(*m_maximum)) : QString();
}

QString EntryLimits::boundRefusal(double value) const
{
    if (m_minimum && value < *m_minimum) {
        return tr("The minimum is %1.").arg(quantityText(*m_minimum));
    }
    if (m_maximum && value > *m_maximum) {
        return tr("The maximum is %1.").arg(quantityText(*m_maximum));
    }
    return QString();
}

QString EntryLimits::finenessRefusal(double value) const
{
    const Utils::Decimal digits = Utils::shortestDecimal(value);
    const int lowestPower = digits.pointPosition - int(digits.digits.size());
    if (!m_finestPower || m_rounds || digits.isZero() || lowestPower >= *m_finestPower) {
        return QString();
    }
    const Utils::Decimal finest = {QByteArrayLiteral("1"), *m_finestPower + 1};
    return tr("The finest step is %1.").arg(quantityText(Utils::plainText(finest).toDouble()));
}

double EntryLimits::taken(double value) const
{
    return m_rounds ? std::round(value) : value;
}

bool EntryLimits::takesFractions() const
{
    return !m_finestPower || m_rounds || unitAt(0).exponent > *m_finestPower;
}

bool EntryLimits::takesNegatives() const
{
    return !m_minimum || *m_minimum < 0.0;
}

double EntryLimits::clamped(double value) const
{
    const double raised = m_minimum ? std::max(value, *m_minimum) : value;
    return m_maximum ? std::min(raised, *m_maximum) : raised;
}

QString EntryLimits::shownNumber(double value, int unitIndex) const
{
    const Unit unit = unitAt(unitIndex);
    if (!m_finestPower) {
        return formatQuantity(value, unit);
    }
    const Utils::Decimal exact = Utils::shortestDecimal(value);
    const double rounded = Utils::plainText(Utils::rounded(exact, -*m_finestPower)).toDouble();
    const bool keepsEnough = exact.pointPosition - *m_finestPower >= enoughDigits;
    const bool losesNoiseOnly = std::fabs(rounded - value) <= arithmeticNoise * std::fabs(value);
    return formatQuantity(keepsEnough || losesNoiseOnly ? rounded : value, unit);
}

QString EntryLimits::quantityText(double value) const
{
    const Unit unit = unitAt(m_scale.indexOfBestUnit(value));
    const QString number = formatQuantity(value, unit);
    return unit.text.isEmpty() ? number : number + QLatin1Char(' ') + unit.text;
}

// A plain number counts in a nameless unit.
Unit EntryLimits::unitAt(int index) const
{
    const QVector<Unit>& units = m_scale.units();
    return index >= 0 && index < units.size() ? units.at(index) : Unit();
}

} // namespace Controls
