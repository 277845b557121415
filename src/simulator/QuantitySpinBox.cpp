#include "simulator/QuantitySpinBox.h"

namespace Simulator {

namespace {

constexpr int shownDecimals = 3; // of the base unit: 1 mHz, 0.001 dB

} // namespace

QuantitySpinBox::QuantitySpinBox(const Quantity& quantity, QWidget* parent)
    : QDoubleSpinBox(parent)
    , m_quantity(quantity)
{
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setKeyboardTracking(false);
    setDecimals(shownDecimals);
    setRange(quantity.minimum, quantity.maximum);
    setSingleStep(quantity.step);
}

QString QuantitySpinBox::textFromValue(double value) const
{
    return m_quantity.format(value);
}

double QuantitySpinBox::valueFromText(const QString& text) const
{
    return m_quantity.parse(text, value()).value_or(value());
}

QValidator::State QuantitySpinBox::validate(QString& text, int& /*position*/) const
{
    const std::optional<double> typed = m_quantity.parse(text, value());
    return typed && *typed >= minimum() && *typed <= maximum() ? QValidator::Acceptable
                                                               : QValidator::Intermediate;
}

void QuantitySpinBox::fixup(QString& text) const
{
    text = textFromValue(value());
}

} // namespace Simulator
